// schema_samples DECLARATION: schemas, and texts that the library writes for random bags, as one JSON text:
//
//   [{"namespace": "...", "short": false, "packed": false, "schema": {...}, "texts": ["{...}", ...]}, ...]
//
// Once for the first namespace of the declaration, and once for one with a value, a list and a map of every type.
#include <iostream>

#include <nlohmann/json.hpp>

#include "tests/vocabulary/RandomBags.h"
#include "tools/vocabulary/JsonSchema.h"

namespace {

using namespace qvpres;
using Json = nlohmann::ordered_json;

constexpr int kBags = 150;

// Names that JSON texts do not hold as they should, as Lint says of them.
bool CanBeWritten(const ParameterDeclaration& parameter) {
    return parameter.name.view().find(u'"') == std::u16string_view::npos;
}

Vocabulary EveryKindOfEveryType() {
    NamespaceDeclaration nameSpace;
    nameSpace.name = L"every-kind";
    nameSpace.firstId = 1;
    nameSpace.lastId = 1000;
    for (const ValueType& type : GetValueTypes()) {
        for (const DeclaredKind kind : {DeclaredKind::Value, DeclaredKind::List, DeclaredKind::Map}) {
            ParameterDeclaration parameter;
            parameter.id = static_cast<int>(nameSpace.parameters.size()) + 1;
            parameter.name = TString(ToText(kind)) + u'-' + TString::number(parameter.id);
            parameter.shortName = L"s" + TString::number(parameter.id);
            parameter.kind = kind;
            parameter.type = &type;
            nameSpace.parameters.push_back(std::move(parameter));
        }
    }
    Vocabulary vocabulary;
    vocabulary.AddNamespace(std::move(nameSpace));
    return vocabulary;
}

Json SamplesOf(const Vocabulary& vocabulary, const SchemaOptions& options) {
    const NamespaceDeclaration& nameSpace = vocabulary.GetNamespaces().front();
    const ToolSession session(options.shortNames, options.packedLists);
    ToolRegistry registry;
    vocabulary.Register(registry);
    const JSONSerializer serializer(nameSpace.name);

    const auto accepts = [&](const ParameterDeclaration& parameter) {
        return CanBeWritten(parameter) && !(options.shortNames && parameter.shortName.empty());
    };
    randombags::Maker maker(vocabulary, nameSpace, options.shortNames, accepts, 1);
    Json texts = Json::array();
    for (int i = 0; i < kBags; ++i) {
        const auto form = i % 2 == 0 ? JSONSerializer::Compact : JSONSerializer::Pretty;
        texts.push_back(serializer.ToString(maker.Make(), form).ToUtf8());
    }
    return {{"namespace", nameSpace.name.ToUtf8()},
            {"short", options.shortNames},
            {"packed", options.packedLists},
            {"schema", Json::parse(ToJsonSchema(vocabulary, nameSpace.name, options))},
            {"texts", std::move(texts)}};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: schema_samples DECLARATION\n";
        return 2;
    }
    try {
        const Vocabulary vocabulary = Vocabulary::FromFile(argv[1]);
        Json samples = Json::array();
        for (const bool shortNames : {false, true}) {
            for (const bool packedLists : {false, true}) {
                samples.push_back(SamplesOf(vocabulary, {shortNames, packedLists}));
                samples.push_back(SamplesOf(EveryKindOfEveryType(), {shortNames, packedLists}));
            }
        }
        std::cout << samples.dump() << "\n";
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
}

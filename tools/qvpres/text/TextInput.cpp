#include "tools/qvpres/text/TextInput.h"

#include "tools/qvpres/Failure.h"
#include "tools/qvpres/Input.h"
#include "tools/qvpres/check/SyntaxHint.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

std::unique_ptr<ParameterText> MakeParameterText(TString text, const std::string& name,
                                                 const LoadedVocabulary& vocabulary, const TString& nameSpace,
                                                 const std::string& names) {
    std::unique_ptr<ParameterText> result;
    try {
        result = std::make_unique<ParameterText>(text, vocabulary, nameSpace, names);
    } catch (const JSONParseException& failure) {
        const TextLocation& place = failure.GetLocation();
        throw Failure(name + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) +
                      ": not valid JSON: " + SyntaxHint(text, place.offset));
    }
    if (result->KindOf(0) != JSONKind::Object) {
        throw Failure(name + ": the text of a bag is an object, this one is " +
                      std::string(KindName(result->KindOf(0))));
    }
    return result;
}

std::unique_ptr<ParameterText> ReadParameterText(const std::string& file, const LoadedVocabulary& vocabulary,
                                                 const CommonOptions& options) {
    return MakeParameterText(TString::FromUtf8(ReadInput(file)), InputName(file), vocabulary, vocabulary.GetNamespace(),
                             options.names);
}

}  // namespace qvpres

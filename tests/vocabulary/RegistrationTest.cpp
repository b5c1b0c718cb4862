// A registry that a vocabulary filled, and a vocabulary that a registry was made into.
#include <gtest/gtest.h>

#include "vocabulary/HostSerializers.h"
#include "vocabulary/VocabularyTestSupport.h"

using namespace qvpres;

namespace {

constexpr const char* kStructures = R"(
    {"id": 1001, "name": "title", "short": "ti", "type": "text"},
    {"id": 1002, "name": "style", "short": "st", "kind": "bag"},
    {"id": 1003, "name": "day", "short": "da", "kind": "structure"},
    {"id": 1004, "name": "range", "short": "ra", "kind": "structure", "form": "list"},
    {"id": 1005, "name": "days", "short": "ds", "kind": "structure-list"},
    {"id": 1006, "name": "rows", "short": "ro", "kind": "structure-list", "form": "list"},
    {"id": 1007, "name": "by-key", "short": "bk", "kind": "structure-map"})";

void ExpectRoundTrip(const std::string& json) {
    const RefCntPtr<IParameters> bag = ReadBag(json);
    EXPECT_EQ(json, CompactText(bag));
}

}  // namespace

TEST(VocabularyRegistration, BagsAndStructuresOfEveryFormComeBack) {
    ToolRegistry registry;
    ViewOf(kStructures).Register(registry);
    ExpectRoundTrip(R"({"style":{"title": "a","style":{"title": "b"}}})");
    ExpectRoundTrip(R"({"day":{"title": "a"}})");
    ExpectRoundTrip(R"({"range":["a","b"]})");
    ExpectRoundTrip(R"({"days":[{"title": "a"},{}]})");
    ExpectRoundTrip(R"({"rows":[["a"],[],["b","c"]]})");
    ExpectRoundTrip(R"({"byKey":{"k":{"title": "a"},"l":null}})");

    const RefCntPtr<IParameters> bag = ReadBag(R"({"day": {"title": "a"}})");
    const auto& day = GetParameterValue<BagStructureSerializer::Bag>(*bag, 1003);
    EXPECT_EQ(TString(L"a"), GetParameterValue<TString>(*day, 1001));
}

TEST(VocabularyRegistration, NamespacesRangesAndFallbacksAreRegistered) {
    ToolRegistry registry;
    VocabularyOf(R"({"namespaces": [
        {"name": "near", "firstId": 1, "lastId": 9, "fallback": "far", "parameters": []},
        {"name": "far", "firstId": 11, "lastId": 19, "fallback": "qvcore", "parameters": [
            {"id": 11, "name": "size", "type": "int"}]}]})")
        .Register(registry);
    EXPECT_EQ(11, registry.GetID(L"near", L"size", true));
    EXPECT_EQ(static_cast<int>(CoreParameterID::IntRLE), registry.GetID(L"near", L"int-rle", true));
    const auto infos = registry.DescribeNamespaces();
    ASSERT_EQ(3U, infos.size());
    EXPECT_EQ(TString(L"far"), infos[0].name);
    EXPECT_EQ(11, infos[0].firstId);
    EXPECT_EQ(19, infos[0].lastId);
    EXPECT_EQ(TString(L"qvcore"), infos[2].name);
}

TEST(VocabularyRegistration, ACoreNamespaceThatIsThereIsLeftAlone) {
    ToolRegistry registry;
    RegisterCoreNamespaceParameters(registry, L"qvcore");
    ViewOf("").Register(registry);
    EXPECT_TRUE(registry.HasNamespace(L"view"));
}

TEST(VocabularyRegistration, ANamespaceThatIsThereIsAnError) {
    ToolRegistry registry;
    ViewOf("").Register(registry);
    EXPECT_THROW(ViewOf("").Register(registry), ParameterNamespaceAlreadyExistsException);
}

TEST(VocabularyRegistration, AMissingShortNameIsMissing) {
    ToolRegistry registry;
    ViewOf(R"({"id": 1001, "name": "title", "type": "text"})").Register(registry);
    EXPECT_EQ(TString(L"title"), registry.GetName(1001, true));
    EXPECT_THROW(registry.GetName(1001, false), ParameterNotFoundException);
}

TEST(VocabularyRegistration, UnserializableIdentifiersAreMarked) {
    ToolRegistry registry;
    VocabularyOf(R"({"namespaces": [{"name": "view", "firstId": 1000, "lastId": 1999, "parameters": [
        {"id": 1001, "name": "a", "type": "int", "unserializable": true},
        {"id": 1002, "name": "b", "type": "int", "unserializable": false}]}], "unserializable": [5000]})")
        .Register(registry);
    EXPECT_TRUE(registry.IsUnserializable(1001));
    EXPECT_FALSE(registry.IsUnserializable(1002));
    EXPECT_TRUE(registry.IsUnserializable(5000));
}

TEST(VocabularyRegistration, TheRegistryOutlivesTheVocabulary) {
    ToolRegistry registry;
    { ViewOf(kStructures).Register(registry); }
    EXPECT_EQ(1001, registry.GetID(L"view", L"title", true));  // filled now
}

TEST(VocabularyFromRegistry, SaysWhatWasDeclaredButForCommentsOfPeople) {
    std::string text = ReadText(VOCABULARY_TEST_DATA "/every-type.json");
    const Vocabulary declared = VocabularyOf(text);
    ToolRegistry registry;
    declared.Register(registry);
    const Vocabulary exported = Vocabulary::FromRegistry(registry);
    ASSERT_EQ(declared.GetNamespaces().size(), exported.GetNamespaces().size());
    for (const NamespaceDeclaration& nameSpace : declared.GetNamespaces()) {
        const NamespaceDeclaration& other = *exported.FindNamespace(nameSpace.name);
        EXPECT_EQ(nameSpace.firstId, other.firstId);
        EXPECT_EQ(nameSpace.lastId, other.lastId);
        EXPECT_EQ(nameSpace.fallback, other.fallback);
        ASSERT_EQ(nameSpace.parameters.size(), other.parameters.size());
        for (std::size_t i = 0; i < nameSpace.parameters.size(); ++i) {
            const ParameterDeclaration& before = nameSpace.parameters[i];
            const ParameterDeclaration& after = other.parameters[i];
            SCOPED_TRACE(before.name.ToUtf8());
            EXPECT_EQ(before.id, after.id);
            EXPECT_EQ(before.name, after.name);
            EXPECT_EQ(before.shortName, after.shortName);
            EXPECT_EQ(before.kind, after.kind);
            EXPECT_EQ(before.type, after.type);
            EXPECT_EQ(before.listForm, after.listForm);
            EXPECT_EQ(before.unserializable, after.unserializable);
            EXPECT_FALSE(exported.IsApproximate(after.id));
        }
    }
    EXPECT_EQ((std::vector<int>{std::numeric_limits<int>::min(), 7}), exported.GetUnserializable());
}

TEST(VocabularyFromRegistry, TypesOfAHostsOwnBecomeWhatTheyLookLike) {
    class Rounded final : public ParameterTypeSerializer<double> {};
    class Negated final : public ParameterTypeSerializer<bool> {};
    ToolRegistry registry;
    registry.RegisterNamespace(
        L"view",
        [](AbstractParamAdder& adder) {
            adder.AddSimple(1, L"season", new ParameterTypeSerializer<Season>);
            adder.AddSimple(2, L"rounded", new Rounded);
            adder.AddList(3, L"negated", new Negated);
            adder.AddStructure(4, L"counted", new CountingSerializer);
            adder.AddStructure(5, L"bare", nullptr);
            adder.AddStructure(6, L"plain", new BagStructureSerializer);
            adder.AddSimple(7, L"weight", new ParameterTypeSerializer<FontWeight>);
        },
        1, 9, false);
    const Vocabulary vocabulary = Vocabulary::FromRegistry(registry);
    EXPECT_EQ(FindValueType(u"text"), ParameterOf(vocabulary, 1).type);
    EXPECT_EQ(FindValueType(u"double"), ParameterOf(vocabulary, 2).type);
    EXPECT_EQ(FindValueType(u"bool"), ParameterOf(vocabulary, 3).type);
    EXPECT_EQ(DeclaredKind::List, ParameterOf(vocabulary, 3).kind);
    EXPECT_EQ(DeclaredKind::Structure, ParameterOf(vocabulary, 4).kind);
    for (const int id : {1, 2, 3, 4, 5}) {
        EXPECT_TRUE(vocabulary.IsApproximate(id)) << id;
    }
    EXPECT_FALSE(vocabulary.IsApproximate(6));
    EXPECT_FALSE(vocabulary.IsApproximate(7));
}

TEST(VocabularyFromRegistry, TheCoreNamespaceUnderAnotherNameIsOneLikeOthers) {
    ToolRegistry registry;
    RegisterCoreNamespaceParameters(registry, L"mine");
    const Vocabulary vocabulary = Vocabulary::FromRegistry(registry);
    ASSERT_EQ(1U, vocabulary.GetNamespaces().size());
    EXPECT_EQ(FindValueType(u"parameter-id"), vocabulary.GetNamespaces()[0].FindName(L"param-type")->type);
}

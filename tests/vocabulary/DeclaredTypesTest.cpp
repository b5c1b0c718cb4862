// Values of every type, written and read through a vocabulary that was declared.
#include <set>

#include <gtest/gtest.h>

#include "vocabulary/TypeSamples.h"
#include "vocabulary/VocabularyTestSupport.h"

using namespace qvpres;

namespace {

// A value, a list and a map of a type.
std::string DeclarationOf(const std::u16string& type) {
    const std::string name = TString(type).ToUtf8();
    return ViewText(R"({"id": 1001, "name": "a-value", "short": "v", "type": ")" + name +
                    R"("}, {"id": 1002, "name": "a-list", "short": "l", "kind": "list", "type": ")" + name +
                    R"("}, {"id": 1003, "name": "a-map", "short": "m", "kind": "map", "type": ")" + name + R"("})");
}

}  // namespace

TEST(DeclaredTypes, ThereAreTwentyScalarTypesAndTwentyTwoEnumerationsAndASampleOfEach) {
    std::set<std::u16string> sampled;
    for (const TypeSample& sample : AllTypeSamples()) {
        sampled.insert(sample.type);
    }
    std::set<std::u16string> all;
    int enumerations = 0;
    for (const ValueType& type : GetValueTypes()) {
        EXPECT_TRUE(all.insert(std::u16string(type.name)).second);
        enumerations += type.form == TextForm::Enumeration ? 1 : 0;
    }
    EXPECT_EQ(42U, all.size());
    EXPECT_EQ(22, enumerations);
    EXPECT_EQ(all, sampled);
}

TEST(DeclaredTypes, EveryEnumerationOfTheLibraryIsOne) {
    int count = 0;
    for (const auto& header : std::filesystem::directory_iterator(PROJECT_FOLDER "/public/qvpreslayer/enumerations")) {
        const std::string name = header.path().stem().string();
        const ValueType* type = FindValueType(TString::FromUtf8(name));
        ASSERT_NE(nullptr, type) << name;
        EXPECT_EQ(TextForm::Enumeration, type->form);
        EXPECT_EQ(name, type->cppType);
        ++count;
    }
    EXPECT_EQ(22, count);
}

TEST(DeclaredTypes, ValuesListsAndMapsOfEveryTypeAreWritten) {
    for (const TypeSample& sample : AllTypeSamples()) {
        SCOPED_TRACE(TString(sample.type).ToUtf8());
        ToolRegistry registry;
        VocabularyOf(DeclarationOf(sample.type)).Register(registry);
        const RefCntPtr<IParameters> bag = MakeRefCnt<ToolBag>();
        sample.setValue(*bag, 1001);
        sample.setList(*bag, 1002);
        sample.setMap(*bag, 1003);
        // In lists typed values stand without their letters.
        const bool typed = TString(sample.type) == L"data-value";
        const std::string items = typed ? "42,43" : sample.first + "," + sample.second;
        EXPECT_EQ("{\"aValue\": " + sample.first + ",\"aList\":[" + items + "],\"aMap\":{\"k\":" + sample.first +
                      ",\"l\":" + sample.second + "}}",
                  CompactText(bag));
    }
}

TEST(DeclaredTypes, ValuesListsAndMapsOfEveryTypeComeBackUnderBothNames) {
    for (const bool shortNames : {false, true}) {
        for (const TypeSample& sample : AllTypeSamples()) {
            if (!sample.comesBack) {
                continue;
            }
            SCOPED_TRACE(TString(sample.type).ToUtf8());
            const ToolSession session(shortNames);
            ToolRegistry registry;
            VocabularyOf(DeclarationOf(sample.type)).Register(registry);
            const RefCntPtr<IParameters> bag = MakeRefCnt<ToolBag>();
            sample.setValue(*bag, 1001);
            sample.setMap(*bag, 1003);
            if (sample.listComesBack) {
                sample.setList(*bag, 1002);
            }
            const RefCntPtr<IParameters> copy = ReadBag(CompactText(bag));
            EXPECT_TRUE(sample.hasValue(*copy, 1001));
            EXPECT_TRUE(!sample.listComesBack || sample.hasList(*copy, 1002));
            EXPECT_TRUE(sample.hasMap(*copy, 1003));
        }
    }
}

TEST(DeclaredTypes, APasswordLeavesAsItsMaskAndComesBackAsThat) {
    ToolRegistry registry;
    VocabularyOf(DeclarationOf(u"password")).Register(registry);
    const RefCntPtr<IParameters> copy = ReadBag(R"({"aValue": "********"})");
    EXPECT_EQ(TString(L"********"), GetParameterValue<PasswordString>(*copy, 1001).Reveal());
}

TEST(DeclaredTypes, EnumerationsTellTheirNamesAndTheirDefault) {
    const ValueType& whisker = *FindValueType(u"WhiskerEnd");
    EXPECT_EQ((std::vector<std::u16string_view>{u"none", u"small", u"large"}), whisker.names);
    EXPECT_EQ(u"large", whisker.defaultName);
    EXPECT_TRUE(FindValueType(u"text")->names.empty());
    EXPECT_EQ(nullptr, FindValueType(u"whiskerEnd"));
}

TEST(DeclaredTypes, TypesAreKnownByTheirSerializersExactly) {
    class Derived final : public ParameterTypeSerializer<int> {};
    const auto find = [](IParameterSerializer* serializer) {
        return FindValueTypeOf(*RefCntPtr<IParameterSerializer>(serializer));
    };
    for (const ValueType& type : GetValueTypes()) {
        EXPECT_EQ(&type, FindValueTypeOf(*type.makeSerializer())) << TString(type.name).ToUtf8();
    }
    EXPECT_EQ(nullptr, find(new Derived));
}

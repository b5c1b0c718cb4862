#include <qvpreslayer/ParametersRegistry.h>

#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

enum : int { kText = 1, kNumber = 2, kBool = 3, kList = 4, kBag = 5, kStructure = 6, kMap = 8, kBroken = 9 };
constexpr int kUnregistered = 20;
constexpr int kUncovered = 100;

// A serializer that fails with anything but an exception of this library.
class BrokenSerializer final : public TStringSerializer {
public:
    RefCntPtr<IParameter> FromString(const TString& text) const override {
        if (text == L"number") {
            throw 5;
        }
        if (text == L"range") {
            throw std::out_of_range("no such entry");
        }
        if (text == L"nothing") {
            return {};
        }
        ThrowLogicException("broken", 1, "BrokenSerializer");
    }
};

class RegistryValueText : public testing::Test {
protected:
    RegistryValueText() {
        registry.Add(L"view", 1, kUnregistered, [](AbstractParamAdder& adder) {
            adder.AddSimple(kText, L"title", L"ti", TextSerializer());
            adder.AddSimple(kNumber, L"max-count", L"mc", IntSerializer());
            adder.AddSimple(kBool, L"is-on", L"on", BoolSerializer());
            adder.AddList(kList, L"int-list", L"il", IntSerializer());
            adder.AddBag(kBag, L"sub-bag", L"sb");
            adder.AddStructure(kStructure, L"record", L"rc", new BagStructureSerializer);
            adder.AddMap(kMap, L"my-map", L"mm", IntSerializer());
            adder.AddSimple(kBroken, L"broken", L"br", new BrokenSerializer);
        });
    }

    // Parses text as the value of a name of "view" into bag.
    void Parse(const TString& name, const TString& text) { registry.FromString(L"view", bag, name, text, true); }

    TestRegistry registry;
    const RefCntPtr<TestBag> bag = MakeBag();
};

}  // namespace

TEST_F(RegistryValueText, AValueHasTheTextOfItsSerializer) {
    EXPECT_EQ(L"Sales", registry.GetValueString(Text(L"Sales"), kText));
    EXPECT_EQ(L"-5", registry.GetValueString(Val(-5), kNumber));
    EXPECT_EQ(L"true", registry.GetValueString(Val(true), kBool));
}

TEST_F(RegistryValueText, WithoutASerializerThereIsNoText) {
    for (const int id : {int{kBag}, int{kStructure}, kUnregistered, kUncovered}) {
        EXPECT_EQ(id, NotFoundId([&] { registry.GetValueString(Text(L"x"), id); }));
    }
}

TEST_F(RegistryValueText, AValueOfAnotherTypeIsAMismatchWithoutIdentifier) {
    EXPECT_EQ(0, MismatchId([&] { registry.GetValueString(Text(L"5"), kNumber); }));
    EXPECT_EQ(0, MissingId([&] { registry.GetValueString(nullptr, kNumber); }));
}

TEST_F(RegistryValueText, ListsAndMapsHaveNoTextOfTheirOwn) {
    EXPECT_EQ(0, MismatchId([&] { registry.GetValueString(Val(std::vector<int>{1}), kList); }));
    EXPECT_EQ(0, MismatchId([&] { registry.GetValueString(Val(std::map<TString, int>()), kMap); }));
    EXPECT_EQ(L"7", registry.GetValueString(Val(7), kList)) << "an element has";
}

TEST_F(RegistryValueText, ATextBecomesAValueInTheBag) {
    Parse(L"title", L"Sales");
    Parse(L"max-count", L"12");
    Parse(L"is-on", L"true");
    EXPECT_EQ(L"Sales", GetParameterValue<TString>(*bag, kText));
    EXPECT_EQ(12, GetParameterValue<int>(*bag, kNumber));
    EXPECT_TRUE(GetParameterValue<bool>(*bag, kBool));
}

TEST_F(RegistryValueText, ParsingReplacesTheValue) {
    bag->SetParameter(kNumber, Val(1));
    Parse(L"max-count", L"2");
    EXPECT_EQ(2, GetParameterValue<int>(*bag, kNumber));
}

TEST_F(RegistryValueText, NamesAreSoughtAsGetIDDoes) {
    const TestSession session(true);
    registry.FromString(L"view", bag, L"mc", L"3", false);
    EXPECT_EQ(3, GetParameterValue<int>(*bag, kNumber));
    EXPECT_EQ("max-count", NotFoundName([&] { registry.FromString(L"view", bag, L"max-count", L"3", false); }));
    registry.FromString(L"view", bag, L"max-count", L"4", true);
    EXPECT_EQ(4, GetParameterValue<int>(*bag, kNumber));
}

TEST_F(RegistryValueText, UnknownNamesKeepTheirOwnFailure) {
    EXPECT_EQ("nothing", NotFoundName([&] { Parse(L"nothing", L"1"); }));
    EXPECT_EQ("nowhere", UnknownNamespace([&] { registry.FromString(L"nowhere", bag, L"title", L"1", true); }));
}

TEST_F(RegistryValueText, ARefusedTextIsAParseFailureOfTheIdentifier) {
    bag->SetParameter(kNumber, Val(1));
    const auto error = Thrown<ParameterParseException>([&] { Parse(L"max-count", L"twelve"); });
    ASSERT_TRUE(error);
    EXPECT_EQ(kNumber, error->GetID());
    EXPECT_STREQ("Error parsing command parameter value string", error->what());
    EXPECT_EQ(1, GetParameterValue<int>(*bag, kNumber));
    EXPECT_EQ(kBool, ParseId([&] { Parse(L"is-on", L"True"); }));
    EXPECT_FALSE(bag->HasParameter(kBool));
}

TEST_F(RegistryValueText, ANameWithoutSerializerIsAParseFailure) {
    EXPECT_EQ(kBag, ParseId([&] { Parse(L"sub-bag", L"x"); }));
    EXPECT_EQ(kStructure, ParseId([&] { Parse(L"record", L"x"); }));
    EXPECT_FALSE(bag->HasParameter(kBag));
}

TEST_F(RegistryValueText, EveryFailureOfASerializerIsAParseFailure) {
    for (const wchar_t* text : {L"number", L"range", L"logic"}) {
        EXPECT_EQ(kBroken, ParseId([&] { Parse(L"broken", text); })) << text;
    }
    EXPECT_FALSE(bag->HasParameter(kBroken));
}

TEST_F(RegistryValueText, AFailureToStoreIsAParseFailure) {
    EXPECT_EQ(kText, ParseId([&] { registry.FromString(L"view", nullptr, L"title", L"x", true); }));
}

TEST_F(RegistryValueText, TheKindIsNotLookedAt) {
    Parse(L"int-list", L"7");
    EXPECT_EQ(7, GetParameterValue<int>(*bag, kList)) << "one element, stored as a single value";
    Parse(L"my-map", L"8");
    EXPECT_EQ(8, GetParameterValue<int>(*bag, kMap));
}

TEST_F(RegistryValueText, ASerializerThatMakesNoValueRemovesTheEntry) {
    bag->SetParameter(kBroken, Text(L"x"));
    Parse(L"broken", L"nothing");
    EXPECT_FALSE(bag->HasParameter(kBroken));
}

#include <qvpreslayer/ParameterAccess.h>

#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

// A host's own kind of integer value.
class NamedNumber final : public ValParameter<int> {
public:
    explicit NamedNumber(int value) : ValParameter<int>(value) {}
};

}  // namespace

TEST(ParameterAccess, AnswersTheValueItself) {
    const RefCntPtr<ValParameter<TString>> value(new ValParameter<TString>(L"text"));
    EXPECT_EQ(L"text", GetParameterValue<TString>(value.Get()));
    EXPECT_EQ(&value->GetValue(), &GetParameterValue<TString>(value.Get()));
}

TEST(ParameterAccess, ANullPointerIsMissingWithoutIdentifier) {
    EXPECT_EQ(0, MissingId([] { GetParameterValue<int>(nullptr); }));
    EXPECT_EQ(0, MissingId([] { GetParameterValue<CoreParameterID>(nullptr); }));
}

TEST(ParameterAccess, AnotherTypeIsAMismatchWithoutIdentifier) {
    const auto value = Val(5);
    EXPECT_EQ(0, MismatchId([&] { GetParameterValue<unsigned int>(value.Get()); }));
    EXPECT_EQ(0, MismatchId([&] { GetParameterValue<Int64>(value.Get()); }));
    EXPECT_EQ(0, MismatchId([&] { GetParameterValue<std::vector<int>>(value.Get()); }));
    EXPECT_EQ(0, MismatchId([&] { GetParameterValue<CoreParameterID>(value.Get()); }));
}

TEST(ParameterAccess, TakesClassesThatHostsDerive) {
    const RefCntPtr<IParameter> value(new NamedNumber(5));
    EXPECT_EQ(5, GetParameterValue<int>(value.Get()));
    EXPECT_EQ(5, GetParameterValue<int>(*MakeBag({{1, value}}), 1));
}

TEST(ParameterAccess, ReachesIntoABag) {
    const auto bag = MakeBag({{1, Val(std::vector<int>{1, 2})}});
    EXPECT_EQ((std::vector<int>{1, 2}), GetParameterValue<std::vector<int>>(*bag, 1));
}

TEST(ParameterAccess, NamesTheIdentifierInABag) {
    const auto bag = MakeBag({{1, Val(5)}});
    EXPECT_EQ(7, MissingId([&] { GetParameterValue<int>(*bag, 7); }));
    EXPECT_EQ(1, MismatchId([&] { GetParameterValue<TString>(*bag, 1); }));
}

TEST(ParameterAccess, StoresAValueOfItsType) {
    const auto bag = MakeBag({{1, Text(L"old")}});
    SetParameterValue(*bag, 1, 5);
    SetParameterValue<TString>(*bag, 2, L"text");
    SetParameterValue(*bag, 3, std::map<TString, double>{{L"k", 0.5}});
    EXPECT_EQ(5, GetParameterValue<int>(*bag, 1));
    EXPECT_EQ(L"text", GetParameterValue<TString>(*bag, 2));
    EXPECT_EQ(0.5, (GetParameterValue<std::map<TString, double>>(*bag, 3).at(L"k")));
}

// Lists of reals in which elements stand again and again, which the short way of reading takes at once.
#include <qvpreslayer/qvpreslayer.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/TestHost.h"

namespace {

template <class T>
class RepeatedReals : public testing::Test {
protected:
    RepeatedReals() {
        m_registry.Add(L"view", 1, 9, [](AbstractParamAdder& adder) {
            adder.AddList(1, L"list", L"l", new ParameterTypeSerializer<T>);
        });
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
    }

    static void Repeat(std::wstring& list, std::vector<T>& values, const wchar_t* text, T value, int times) {
        for (; times > 0; --times) {
            list += (list.empty() ? L"" : L",") + std::wstring(text);
            values.push_back(value);
        }
    }

    void ExpectValues(const std::wstring& list, const std::vector<T>& values) {
        const auto bag = JSONSerializer(L"view").ToParameters(L"{\"list\":[" + list + L"]}");
        EXPECT_EQ(values, GetParameterValue<std::vector<T>>(*bag, 1)) << TString(list).ToUtf8();
    }

    TestRegistry m_registry;
};

using RealTypes = testing::Types<float, double>;
TYPED_TEST_SUITE(RepeatedReals, RealTypes);

// Up to the closing bracket, from one element to several blocks of them, of texts of each length.
TYPED_TEST(RepeatedReals, ToTheEnd) {
    for (const auto& [text, value] : {std::pair(L"2", 2.0),
                                      {L"-0.5", -0.5},
                                      {L"12.25", 12.25},
                                      {L"-123456.75", -123456.75},
                                      {L"1024.00000000000000", 1024.0},
                                      {L"-2048.000000000000000", -2048.0}}) {
        for (int times = 1; times <= 150; ++times) {
            std::wstring list;
            std::vector<TypeParam> values;
            this->Repeat(list, values, text, static_cast<TypeParam>(value), times);
            this->ExpectValues(list, values);
        }
    }
}

// Others follow: texts that begin alike, longer and shorter, other spellings, integers, exponents.
TYPED_TEST(RepeatedReals, BeforeOthers) {
    for (const auto& [text, value] : {std::pair(L"1.375", 1.375),
                                      {L"1.125", 1.125},
                                      {L"1.875", 1.875},
                                      {L"11.375", 11.375},
                                      {L"1.3750", 1.375},
                                      {L"1375e-3", 1.375},
                                      {L"1", 1.0},
                                      {L"-1.375", -1.375},
                                      {L" 1.375 ", 1.375}}) {
        for (int times = 1; times <= 40; ++times) {
            std::wstring list;
            std::vector<TypeParam> values;
            this->Repeat(list, values, L"1.375", TypeParam(1.375), times);
            this->Repeat(list, values, text, static_cast<TypeParam>(value), 1 + times % 7);
            this->Repeat(list, values, L"1.375", TypeParam(1.375), 30);
            this->Repeat(list, values, L"250.125", TypeParam(250.125), 30);
            for (int i = 0; i < 20; ++i) {  // so that the list does not end in the middle of repeated ones
                this->Repeat(list, values, i % 2 == 0 ? L"0.125" : L"0.375",
                             i % 2 == 0 ? TypeParam(0.125) : TypeParam(0.375), 1);
            }
            this->ExpectValues(list, values);
        }
    }
}

// What is no list is none behind repeated elements either.
TYPED_TEST(RepeatedReals, BeforeMistakes) {
    for (const wchar_t* end : {L"", L",", L",]", L",1.375", L",1.375.", L" 1.375]", L",x]", L"}", L",1.375}"}) {
        std::wstring list;
        std::vector<TypeParam> values;
        this->Repeat(list, values, L"1.375", TypeParam(1.375), 100);
        EXPECT_THROW(JSONSerializer(L"view").ToParameters(L"{\"list\":[" + list + end), JSONParseException)
            << TString(end).ToUtf8();
    }
}

}  // namespace

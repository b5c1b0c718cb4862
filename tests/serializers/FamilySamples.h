// Values of every type of the serializer family with their texts, for the tests that hold for all of them alike.
#pragma once

#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

struct NumberSample {
    static constexpr ParameterTypeCategory kKind = PTC_Number;
    static constexpr bool kExpandsRuns = true;
    static constexpr bool kReadsAnything = false;
    static TString BadText() { return L"x"; }
};

struct TextSample {
    static constexpr ParameterTypeCategory kKind = PTC_Text;
    static constexpr bool kExpandsRuns = false;
    static constexpr bool kReadsAnything = false;
    static TString BadText() { return L"["; }
};

// Values() and their Texts(), none of them twice in a row, so that no list of them has a run.
template <class T>
struct Sample;

template <>
struct Sample<int> : NumberSample {
    static std::vector<int> Values() { return {0, -5, 2147483647}; }
    static std::vector<TString> Texts() { return {L"0", L"-5", L"2147483647"}; }
};
template <>
struct Sample<unsigned int> : NumberSample {
    static std::vector<unsigned int> Values() { return {0U, 5U, 4294967295U}; }
    static std::vector<TString> Texts() { return {L"0", L"5", L"4294967295"}; }
};
template <>
struct Sample<Int64> : NumberSample {
    static std::vector<Int64> Values() { return {0, -5000000000, 9223372036854775807}; }
    static std::vector<TString> Texts() { return {L"0", L"-5000000000", L"9223372036854775807"}; }
};
template <>
struct Sample<UInt64> : NumberSample {
    static std::vector<UInt64> Values() { return {0U, 5U, 18446744073709551615U}; }
    static std::vector<TString> Texts() { return {L"0", L"5", L"18446744073709551615"}; }
};
template <>
struct Sample<float> : NumberSample {
    static std::vector<float> Values() { return {0.0F, -2.5F, 16777216.0F}; }
    static std::vector<TString> Texts() { return {L"0", L"-2.5", L"16777216"}; }
};
template <>
struct Sample<double> : NumberSample {
    static std::vector<double> Values() { return {0.1, -2.5, 1e20}; }
    static std::vector<TString> Texts() { return {L"0.1", L"-2.5", L"100000000000000000000"}; }
};

template <>
struct Sample<bool> : TextSample {
    static constexpr ParameterTypeCategory kKind = PTC_Bool;
    static std::vector<bool> Values() { return {true, false, true}; }
    static std::vector<TString> Texts() { return {L"true", L"false", L"true"}; }
};

template <>
struct Sample<FieldName> : TextSample {
    static std::vector<FieldName> Values() {
        return {FieldName::ParseGlobal(L"[a]"), FieldName::ParseGlobal(L"[b].[c]")};
    }
    static std::vector<TString> Texts() { return {L"[a]", L"[b].[c]"}; }
};
template <>
struct Sample<QualifiedName> : TextSample {
    static std::vector<QualifiedName> Values() {
        return {QualifiedName::ParseGlobal(L"[a]"), QualifiedName::ParseGlobal(L"[b].[c]")};
    }
    static std::vector<TString> Texts() { return {L"[a]", L"[b].[c]"}; }
};
template <>
struct Sample<PasswordString> : TextSample {
    static constexpr bool kReadsAnything = true;
    static std::vector<PasswordString> Values() { return {PasswordString(L"x"), PasswordString(L"yy")}; }
    static std::vector<TString> Texts() { return {L"********", L"********"}; }
};
template <>
struct Sample<TUUID> : TextSample {
    static std::vector<TUUID> Values() { return {TUUID(), TUUID(L"00112233-4455-6677-8899-aabbccddeeff")}; }
    static std::vector<TString> Texts() {
        return {L"00000000-0000-0000-0000-000000000000", L"00112233-4455-6677-8899-aabbccddeeff"};
    }
};
template <>
struct Sample<TString> : TextSample {
    static constexpr bool kReadsAnything = true;
    static std::vector<TString> Values() { return {L"a", L"", L"b c"}; }
    static std::vector<TString> Texts() { return Values(); }
};

template <class D>
struct DurationSample : TextSample {
    static std::vector<D> Values() { return {D(0), D(-90), D(2147483647)}; }
    static std::vector<TString> Texts() { return {L"0", L"-90", L"2147483647"}; }
};
template <>
struct Sample<HoursDuration> : DurationSample<HoursDuration> {};
template <>
struct Sample<MinutesDuration> : DurationSample<MinutesDuration> {};
template <>
struct Sample<SecondsDuration> : DurationSample<SecondsDuration> {};
template <>
struct Sample<MillisecondsDuration> : DurationSample<MillisecondsDuration> {};
template <>
struct Sample<MicrosecondsDuration> : DurationSample<MicrosecondsDuration> {};
template <>
struct Sample<NanosecondsDuration> : DurationSample<NanosecondsDuration> {};

// The texts that read as Sample<T>::Values(): what is written, but for passwords, which are never written.
template <class T>
std::vector<TString> TextsToRead() {
    if constexpr (std::is_same_v<T, PasswordString>) {
        return {L"x", L"yy"};
    } else {
        return Sample<T>::Texts();
    }
}

// Sample<T>::Values(), and texts, under the keys "k0", "k1" and so on.
template <class V>
std::map<TString, typename V::value_type> Keyed(const V& values) {
    std::map<TString, typename V::value_type> keyed;
    int number = 0;
    for (const typename V::value_type& value : values) {
        keyed[TString(L"k") + TString::number(number)] = value;
        ++number;
    }
    return keyed;
}

using FamilyTypes = testing::Types<int, unsigned int, Int64, UInt64, float, double, bool, FieldName, QualifiedName,
                                   PasswordString, TUUID, TString, HoursDuration, MinutesDuration, SecondsDuration,
                                   MillisecondsDuration, MicrosecondsDuration, NanosecondsDuration>;

// Bags of single values: one wide bag, bags in bags, many small bags.
#include <random>

#include "BenchHost.h"
#include "Workload.h"

namespace compare {

namespace {

using Random = std::mt19937_64;

constexpr int kWideFirst = 10000;
constexpr int kNestedFirst = 11000;
constexpr int kSmallFirst = 12000;

int Below(Random& random, unsigned int limit) { return static_cast<int>(random() % limit); }

// 300 names of three words, letters only.
std::wstring MakeName(int number) {
    static const wchar_t* const first[] = {L"axis",    L"mark",   L"label", L"header", L"legend",
                                           L"tooltip", L"border", L"title", L"pane",   L"grid"};
    static const wchar_t* const second[] = {L"text", L"color", L"line", L"shape", L"font", L"field"};
    static const wchar_t* const third[] = {L"size", L"offset", L"mode", L"state", L"order"};
    return std::wstring(first[number % 10]) + L"-" + second[number / 10 % 6] + L"-" + third[number / 60];
}

// Two letters, and a third where those are used up: "na", "nb", ..
std::wstring MakeShortName(int number) {
    const auto letter = [](int value) { return static_cast<wchar_t>(L'a' + value % 26); };
    return std::wstring{L'n', letter(number), letter(number / 26)};
}

TUUID MakeUUID(Random& random) {
    static constexpr char16_t kDigits[] = u"0123456789abcdef";
    std::u16string text = u"00000000-0000-4000-8000-000000000000";
    for (char16_t& unit : text) {
        unit = unit == u'0' ? kDigits[random() % 16] : unit;
    }
    return TUUID(TString(text));
}

TString MakePhrase(Random& random) {
    static const wchar_t* const words[] = {L"Sales by region",        L"Average of profit", L"Daily weather in Seattle",
                                           L"Arrival delay, minutes", L"bottom right",      L"Quarter"};
    return words[random() % 6] + (L" " + TString::number(Below(random, 1000)));
}

Field MakeWideField(int number) {
    const std::wstring name = MakeName(number);
    const std::wstring brief = MakeShortName(number);
    const int id = kWideFirst + number;
    switch (number % 6) {
        case 0:
            return MakeValue<int>(id, name.c_str(), brief.c_str());
        case 1:
            return MakeValue<double>(id, name.c_str(), brief.c_str());
        case 2:
            return MakeValue<TString>(id, name.c_str(), brief.c_str());
        case 3:
            return MakeValue<bool>(id, name.c_str(), brief.c_str());
        case 4:
            return MakeValue<TUUID>(id, name.c_str(), brief.c_str());
        default:
            return MakeValue<SecondsDuration>(id, name.c_str(), brief.c_str());
    }
}

void SetWideValue(IParameters& bag, int number, Random& random) {
    const int id = kWideFirst + number;
    switch (number % 6) {
        case 0:
            return SetParameterValue<int>(bag, id, static_cast<int>(random()));
        case 1:
            return SetParameterValue<double>(bag, id, Below(random, 100000) / 97.0);
        case 2:
            return SetParameterValue<TString>(bag, id, MakePhrase(random));
        case 3:
            return SetParameterValue<bool>(bag, id, random() % 2 == 0);
        case 4:
            return SetParameterValue<TUUID>(bag, id, MakeUUID(random));
        default:
            return SetParameterValue<SecondsDuration>(bag, id, SecondsDuration(Below(random, 1000000)));
    }
}

// Eight scalars, and four bags where depth is left.
RefCntPtr<const IParameters> MakeNestedBag(int depth, Random& random) {
    const auto bag = MakeRefCnt<BenchBag>();
    SetParameterValue<TString>(*bag, kNestedFirst, MakePhrase(random));
    SetParameterValue<int>(*bag, kNestedFirst + 1, Below(random, 100000));
    SetParameterValue<double>(*bag, kNestedFirst + 2, Below(random, 10000) / 8.0);
    SetParameterValue<bool>(*bag, kNestedFirst + 3, random() % 2 == 0);
    SetParameterValue<StyleElement>(*bag, kNestedFirst + 4, static_cast<StyleElement>(Below(random, 38)));
    SetParameterValue<int>(*bag, kNestedFirst + 5, Below(random, 2000) - 1000);
    SetParameterValue<TString>(*bag, kNestedFirst + 6, MakePhrase(random));
    SetParameterValue<double>(*bag, kNestedFirst + 7, Below(random, 1000) / 10.0);
    for (int child = 0; depth > 1 && child < 4; ++child) {
        SetParameterValue<RefCntPtr<const IParameters>>(*bag, kNestedFirst + 8 + child,
                                                        MakeNestedBag(depth - 1, random));
    }
    return bag;
}

}  // namespace

Workload MakeWideBag(ParametersRegistry& registry, Scale /*scale*/) {
    constexpr int kParameters = 300;
    Workload workload{"W1", "a bag of 300 mixed scalars", {}, {}, {}, 0};
    Random random(1);
    const auto bag = MakeRefCnt<BenchBag>();
    for (int i = 0; i < kParameters; ++i) {
        workload.fields.push_back(MakeWideField(i));
        SetWideValue(*bag, i, random);
    }
    workload.bags.push_back(bag);
    Complete(workload, registry, kWideFirst);
    return workload;
}

Workload MakeNestedBags(ParametersRegistry& registry, Scale scale) {
    Workload workload{"W3", "bags in bags, 6 deep, 4 in each", {}, {}, {}, 0};
    workload.fields = {
        MakeValue<TString>(kNestedFirst, L"caption-text", L"ct"),
        MakeValue<int>(kNestedFirst + 1, L"sort-order", L"so"),
        MakeValue<double>(kNestedFirst + 2, L"line-width", L"lw"),
        MakeValue<bool>(kNestedFirst + 3, L"is-visible", L"iv"),
        MakeValue<StyleElement>(kNestedFirst + 4, L"style-element", L"se"),
        MakeValue<int>(kNestedFirst + 5, L"left-offset", L"lo"),
        MakeValue<TString>(kNestedFirst + 6, L"tooltip", L"tt"),
        MakeValue<double>(kNestedFirst + 7, L"font-size", L"fs"),
        MakeBag(kNestedFirst + 8, L"upper-pane", L"up"),
        MakeBag(kNestedFirst + 9, L"lower-pane", L"lp"),
        MakeBag(kNestedFirst + 10, L"left-pane", L"le"),
        MakeBag(kNestedFirst + 11, L"right-pane", L"rp"),
    };
    Random random(3);
    workload.bags.push_back(MakeNestedBag(scale == Scale::Tiny ? 4 : 6, random));
    Complete(workload, registry, kNestedFirst);
    return workload;
}

Workload MakeSmallBags(ParametersRegistry& registry, Scale scale) {
    Workload workload{"W6", "100,000 bags of 6, a text each", {}, {}, {}, 0};
    workload.fields = {
        MakeValue<int>(kSmallFirst, L"row-number", L"rn"),
        MakeValue<TString>(kSmallFirst + 1, L"caption", L"ca"),
        MakeValue<double>(kSmallFirst + 2, L"position-x", L"px"),
        MakeValue<double>(kSmallFirst + 3, L"position-y", L"py"),
        MakeValue<bool>(kSmallFirst + 4, L"selected", L"se"),
        MakeValue<StyleSwatch>(kSmallFirst + 5, L"swatch", L"sw"),
    };
    Random random(6);
    const std::size_t count = GetCount(scale, 100000, 200);
    for (std::size_t i = 0; i < count; ++i) {
        const auto bag = MakeRefCnt<BenchBag>();
        SetParameterValue<int>(*bag, kSmallFirst, static_cast<int>(i));
        SetParameterValue<TString>(*bag, kSmallFirst + 1, MakePhrase(random));
        SetParameterValue<double>(*bag, kSmallFirst + 2, Below(random, 192000) / 100.0);
        SetParameterValue<double>(*bag, kSmallFirst + 3, Below(random, 108000) / 100.0);
        SetParameterValue<bool>(*bag, kSmallFirst + 4, random() % 8 == 0);
        SetParameterValue<StyleSwatch>(*bag, kSmallFirst + 5, GetEnumValues<StyleSwatch>()[random() % 2].value);
        workload.bags.push_back(bag);
    }
    Complete(workload, registry, kSmallFirst);
    return workload;
}

}  // namespace compare

// Packing and unpacking of numeric lists, of every element type but typed values (TypedRunsFuzz). Promised:
//
//   - a list is packed as the slow model packs it, run by run, and comes back element by element as from its plain
//     texts;
//   - run records at any places, in any order, expand as the slow model expands them; steps wrap, never overflow;
//   - records of any texts at any positions are expanded, passed over or refused as their rules say, and never beyond
//     the limit.
//
// The last byte chooses the type, the one before it what is done.
#include <algorithm>
#include <optional>

#include "fuzz/support/RandomBag.h"
#include "fuzz/support/ScalarModels.h"
#include "structure/RunModel.h"
#include "support/ListHost.h"

using namespace fuzz;

namespace {

using Records = std::vector<RunRecord>;

constexpr std::size_t kExpansionBytes = std::size_t{64} * 1024;

template <class T>
using StepOf = typename std::conditional_t<std::is_integral_v<T>, std::make_signed<T>, std::type_identity<T>>::type;

template <class T>
std::vector<T> Expanded(const std::vector<TString>& texts, const Records& records) {
    const auto list = ParameterTypeSerializer<T>().FromStringList(texts, records);
    return GetParameterValue<std::vector<T>>(list.Get());
}

template <class T>
std::vector<PackedItem> Written(const std::vector<T>& values, ListForm form) {
    ListHost<T> host;
    PackedItemsVisitor visitor;
    host.Send(values, form, visitor);
    return visitor.Items();
}

template <class T>
void RequireSame(const std::vector<T>& expected, const std::vector<T>& got, const char* what) {
    const auto isSame = [](T left, T right) { return left == right || (left != left && right != right); };
    Require(std::equal(expected.begin(), expected.end(), got.begin(), got.end(), isSame), what);
}

template <class T>
void CheckPacking(Bytes& bytes) {
    const std::vector<T> values = RandomList<T>(bytes);
    const std::vector<PackedItem> items = Written(values, ListForm::Packed);
    Require(run_model::Pack(values) == items, "a list is packed as the model packs it");
    RequireSame(Expanded<T>(PlainTexts(Written(values, ListForm::Plain)), {}),
                Expanded<T>(PlainTexts(items), NestedLists(items)), "a packed list comes back");
}

// Reals have no model in RunModel.h: each value is the one before it and the step.
template <class T>
requires std::is_floating_point_v<T> std::vector<T> ExpandedByModel(std::vector<T> values, Records records) {
    std::sort(records.begin(), records.end());
    for (std::size_t k = records.size(); k-- > 0;) {
        const auto& [position, texts] = records[k];
        if (texts.size() == 2 || texts.size() == 3) {
            T next = *scalar_model::Model<T>::Read(texts[0]);
            const T step = texts.size() == 3 ? *scalar_model::Model<T>::Read(texts[2]) : T(0);
            std::vector<T> run(*scalar_model::Model<unsigned int>::Read(texts[1]));
            std::generate(run.begin(), run.end(), [&] { return step == 0 ? next : std::exchange(next, next + step); });
            values.insert(values.begin() + (position - static_cast<std::ptrdiff_t>(k)), run.begin(), run.end());
        }
    }
    return values;
}

template <class T>
requires std::is_integral_v<T> std::vector<T> ExpandedByModel(std::vector<T> values, Records records) {
    return run_model::Expand(std::move(values), std::move(records));
}

template <class T>
TString TextOf(T value) {
    return scalar_model::Model<T>::Write(value);
}

template <class T>
void CheckExpanding(Bytes& bytes) {
    std::vector<T> values;
    std::vector<TString> texts;
    Records records;
    for (std::size_t i = 0, size = bytes.Below(20); i < size; ++i) {
        const TString text = TextOf(Random<T>::Of(bytes));
        if (bytes.Coin()) {
            texts.push_back(text);
            values.push_back(*scalar_model::Model<T>::Read(text));
            continue;
        }
        std::vector<TString> record = {text, TextOf(static_cast<unsigned>(bytes.Below(7))),
                                       TextOf(Random<StepOf<T>>::Of(bytes)), L"x"};
        record.resize(bytes.Below(5));  // two and three are runs
        records.insert(records.begin() + static_cast<std::ptrdiff_t>(bytes.Below(records.size() + 1)),
                       {static_cast<int>(i), std::move(record)});
    }
    RequireSame(ExpandedByModel(values, records), Expanded<T>(texts, records), "runs expand as the model expands them");
}

// How many elements a list has, or nothing when its records are refused.
template <class T>
std::optional<std::size_t> SizeByModel(std::size_t plain, Records records) {
    std::stable_sort(records.begin(), records.end(), [](auto& left, auto& right) { return left.first < right.first; });
    std::size_t size = plain;
    std::size_t left = kExpansionBytes;
    auto most = static_cast<std::ptrdiff_t>(plain);
    for (std::size_t k = records.size(); k-- > 0;) {
        const auto& [position, texts] = records[k];
        if (texts.size() != 2 && texts.size() != 3) {
            continue;
        }
        const auto length = scalar_model::Model<unsigned int>::Read(texts[1]);
        const bool isRun = scalar_model::Model<T>::Read(texts[0]) && length &&
                           (texts.size() == 2 || scalar_model::Model<StepOf<T>>::Read(texts[2]));
        const std::ptrdiff_t index = std::ptrdiff_t{position} - static_cast<std::ptrdiff_t>(k);
        if (!isRun || index < 0 || index > most || std::size_t{*length} * sizeof(T) > left) {
            return std::nullopt;
        }
        most = index;
        left -= *length * sizeof(T);
        size += *length;
    }
    return size;
}

// Small numbers, lengths about the limit, and any text.
template <class T>
TString RecordText(Bytes& bytes) {
    switch (bytes.Below(4)) {
        case 0:
            return bytes.Text(12);
        case 1:
            return TextOf(kExpansionBytes / sizeof(T) + 1 - bytes.Below(4));
        default:
            return TextOf(bytes.Raw<std::uint16_t>());
    }
}

template <class T>
void CheckAnyRecords(Bytes& bytes) {
    std::vector<TString> texts(bytes.Below(5), L"1");
    Records records(bytes.Below(6));
    for (RunRecord& record : records) {
        record.first = bytes.Coin() ? static_cast<int>(bytes.Below(12)) : bytes.Raw<int>();
        record.second.resize(bytes.Below(5));
        for (TString& text : record.second) {
            text = RecordText<T>(bytes);
        }
    }
    const std::optional<std::size_t> expected = SizeByModel<T>(texts.size(), records);
    try {
        const std::size_t size = Expanded<T>(texts, records).size();
        Require(expected == size, "records that keep the rules are expanded, and no others");
    } catch (const ParameterParseException& failure) {
        Require(!expected && failure.GetID() == 0, "records are refused only where they break a rule");
    } catch (const LogicException& failure) {
        Require(!expected && std::string_view(failure.what()) == "index <= values.size()", "a position outside");
    }
}

template <class T>
void CheckOne(Bytes& bytes) {
    switch (bytes.LastByte() % 3) {
        case 0:
            return CheckPacking<T>(bytes);
        case 1:
            return CheckExpanding<T>(bytes);
        default:
            return CheckAnyRecords<T>(bytes);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PresLayerLimits::SetExpansionBytes(kExpansionBytes);
    Bytes bytes(data, size);
    constexpr void (*kChecks[])(Bytes&) = {&CheckOne<int>,    &CheckOne<unsigned int>, &CheckOne<Int64>,
                                           &CheckOne<UInt64>, &CheckOne<float>,        &CheckOne<double>};
    kChecks[bytes.LastByte() % std::size(kChecks)](bytes);
    return 0;
}

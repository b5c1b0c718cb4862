#include "PenguinValues.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <map>
#include <optional>

#include <qvpreslayer/qvpreslayer.h>

#include "WeatherVocabulary.h"

namespace weather {

namespace {

using namespace std::chrono_literals;

constexpr std::uint8_t kBeakPrecision = 3;  // digits in all
constexpr std::uint8_t kBeakScale = 1;      // digits behind the point

// A null has a type like any other value.
DataValue Integer(const std::optional<int>& value) {
    return value ? DataValue(*value) : DataValue::Null(DataType::Integer);
}

DataValue Millimetres(const std::optional<double>& value) {
    return value ? DataValue(*value, kBeakPrecision, kBeakScale) : DataValue::Null(DataType::Real);
}

// Texts carry the collation that they are to be sorted by, null or not.
DataValue Text(const std::optional<TString>& value) {
    const Collation collation(L"root");
    return value ? DataValue(IndirectString::Lookup(collation, *value)) : DataValue::Null(DataType::CString, collation);
}

DataValue RowValue(const Penguin& /*penguin*/, int row) { return row; }
DataValue FlipperValue(const Penguin& penguin, int /*row*/) { return Integer(penguin.flipperLength); }
DataValue BeakLengthValue(const Penguin& penguin, int /*row*/) { return Millimetres(penguin.beakLength); }
DataValue SpeciesValue(const Penguin& penguin, int /*row*/) { return Text(penguin.species); }
DataValue SexValue(const Penguin& penguin, int /*row*/) { return Text(penguin.sex); }

DataValue IsMaleValue(const Penguin& penguin, int /*row*/) {
    const bool known = penguin.sex == TString(L"MALE") || penguin.sex == TString(L"FEMALE");
    return known ? DataValue(*penguin.sex == TString(L"MALE")) : DataValue::Null(DataType::Boolean);
}

// The file has no dates. Say that one penguin a day is looked at again, those that were not measured excepted.
DataValue ReviewDateValue(const Penguin& penguin, int row) {
    const Date day(std::chrono::sys_days(2024y / 1 / 1) + std::chrono::days(row));
    return penguin.flipperLength ? DataValue(day) : DataValue::Null(DataType::Date);
}

// Each review starts a second and a half later than the one before.
DataValue ReviewTimeValue(const Penguin& penguin, int row) {
    const DataValue day = ReviewDateValue(penguin, row);
    return day.IsSpecial() ? DataValue::Null(DataType::DateTime)
                           : DataValue(DateTime(day.GetDate(), 8h + row * 1500ms));
}

// Length and depth. A null tuple would not come back from its text, but nulls in a tuple do.
DataValue BeakValue(const Penguin& penguin, int /*row*/) {
    return RefCntPtr<Tuple>(new Tuple({Millimetres(penguin.beakLength), Millimetres(penguin.beakDepth)}));
}

// Nobody has said yet of what type a remark is.
DataValue RemarkValue(const Penguin& /*penguin*/, int /*row*/) { return DataValue(); }

constexpr struct {
    int id;
    const wchar_t* key;  // in maps; without dashes, which would not come back
    DataValue (*make)(const Penguin& penguin, int row);
} kColumns[] = {
    {ViewID::kRow, L"row", RowValue},
    {ViewID::kFlipperLength, L"flipper", FlipperValue},
    {ViewID::kBeakLength, L"length", BeakLengthValue},
    {ViewID::kSpecies, L"species", SpeciesValue},
    {ViewID::kSex, L"sex", SexValue},
    {ViewID::kIsMale, L"male", IsMaleValue},
    {ViewID::kReviewDate, L"date", ReviewDateValue},
    {ViewID::kReviewTime, L"time", ReviewTimeValue},
    {ViewID::kBeak, L"beak", BeakValue},
    {ViewID::kRemark, L"remark", RemarkValue},
};

BagStructureSerializer::Bag MakeTable(const std::vector<Penguin>& penguins) {
    const RefCntPtr<IParameters> table = ParametersRegistry::Get().CreateParameters();
    for (const auto& column : kColumns) {
        std::vector<DataValue> values;
        for (const Penguin& penguin : penguins) {
            values.push_back(column.make(penguin, static_cast<int>(values.size())));
        }
        SetParameterValue(*table, column.id, std::move(values));
    }
    return table;
}

std::map<TString, DataValue> MakeMap(const std::vector<Penguin>& penguins, std::size_t row) {
    std::map<TString, DataValue> values;
    for (const auto& column : kColumns) {
        values.emplace(column.key, column.make(penguins[row], static_cast<int>(row)));
    }
    return values;
}

// The row of the first penguin that was not measured; the last one when all were.
std::size_t UnmeasuredRow(const std::vector<Penguin>& penguins) {
    const auto found = std::find_if(penguins.begin(), penguins.end() - 1,
                                    [](const Penguin& penguin) { return !penguin.flipperLength; });
    return static_cast<std::size_t>(found - penguins.begin());
}

// An absent measure is less than any other.
template <class T>
std::optional<T> Greatest(const std::vector<Penguin>& penguins, std::optional<T> Penguin::*measure) {
    std::optional<T> greatest;
    for (const Penguin& penguin : penguins) {
        greatest = std::max(greatest, penguin.*measure);
    }
    return greatest;
}

}  // namespace

std::vector<int> PenguinColumnIDs() {
    std::vector<int> ids;
    for (const auto& column : kColumns) {
        ids.push_back(column.id);
    }
    return ids;
}

void AddPenguinValues(IParameters& bag, const std::vector<Penguin>& penguins) {
    SetParameterValue(bag, ViewID::kHeaviestPenguin, Integer(Greatest(penguins, &Penguin::bodyMass)));
    SetParameterValue(bag, ViewID::kLongestBeak, Millimetres(Greatest(penguins, &Penguin::beakLength)));
    SetParameterValue(bag, ViewID::kNextReview, DataValue::Null(DataType::Date));
    SetParameterValue(bag, ViewID::kFirstPenguin, MakeMap(penguins, 0));
    SetParameterValue(bag, ViewID::kUnmeasuredPenguin, MakeMap(penguins, UnmeasuredRow(penguins)));
    SetParameterValue(bag, ViewID::kPenguinTable, MakeTable(penguins));  // not written, see the vocabulary
}

}  // namespace weather

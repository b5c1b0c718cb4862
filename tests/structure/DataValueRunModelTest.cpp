#include "structure/DataValueRunModel.h"

#include <vector>

#include <gtest/gtest.h>

#include "support/Dice.h"
#include "support/ListHost.h"
#include "support/Rounds.h"
#include "support/TypedValues.h"

using typed_run_model::Cell;
using typed_run_model::Record;

namespace {

using Cells = std::vector<Cell>;
using Values = std::vector<DataValue>;
using run_model::Wide;

constexpr int kLists = 12000;  // for each test, in an ordinary run

Cell IntegerCell(std::int64_t value) { return {Cell::Integer, value, 0, ""}; }

// Numbers whose shortest texts are known.
const Cells kReals = {{Cell::Real, 0, 0.0, "0"},        {Cell::Real, 0, -0.0, "-0"},   {Cell::Real, 0, 1.0, "1"},
                      {Cell::Real, 0, 0.1, "0.1"},      {Cell::Real, 0, -2.5, "-2.5"}, {Cell::Real, 0, 1e300, "1e+300"},
                      {Cell::Real, 0, 5e-324, "5e-324"}};

DataValue ValueOf(const Cell& cell, DataType column) {
    switch (cell.kind) {
        case Cell::Integer:
            return cell.integer;
        case Cell::Real:
            return cell.real;
        default:
            return DataValue::Null(column);
    }
}

Values ValuesOf(const Cells& cells, DataType column) {
    Values values;
    for (const Cell& cell : cells) {
        values.push_back(ValueOf(cell, column));
    }
    return values;
}

// Progressions from everywhere with steps of all sizes, repeated values, and nulls between them.
Cells RandomIntegers(Dice& dice, const std::vector<std::int64_t>& steps) {
    constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    const std::vector<std::int64_t> starts = {0, 1, 2, 5, -3, kMin, kMin + 1, kMax, kMax - 1, 1000000000000000000};
    const std::size_t size = dice.Below(dice.Below(25) == 0 ? 400 : 30);
    Cells cells;
    while (cells.size() < size) {
        if (dice.Below(6) == 0) {
            cells.insert(cells.end(), 1 + dice.Below(2), Cell{});
            continue;
        }
        const bool goesOn = dice.Below(2) == 0 && !cells.empty() && cells.back().kind == Cell::Integer;
        Wide next{goesOn ? cells.back().integer : dice.Of(starts)};
        const Wide step{dice.Of(steps)};
        for (std::size_t i = 1 + dice.Below(6); i > 0 && next >= Wide{kMin} && next <= Wide{kMax}; --i, next += step) {
            cells.push_back(IntegerCell(static_cast<std::int64_t>(next)));
        }
    }
    return cells;
}

const std::vector<std::int64_t> kAllSteps = {0,
                                             0,
                                             1,
                                             -1,
                                             2,
                                             -7,
                                             3000000000,
                                             999999999999999997,
                                             999999999999999998,
                                             999999999999999999,
                                             1000000000000000000,
                                             -999999999999999998,
                                             -999999999999999999};
const std::vector<std::int64_t> kShortSteps = {0, 0, 1, -1, 2, -2, 3, -7, 2147483647, -2147483647};

Cells RandomReals(Dice& dice) {
    const std::size_t size = dice.Below(dice.Below(25) == 0 ? 400 : 30);
    const std::size_t letters = 2 + dice.Below(kReals.size() - 1);
    Cells cells;
    while (cells.size() < size) {
        const Cell cell = dice.Below(5) == 0 ? Cell{} : kReals[dice.Below(letters)];
        cells.insert(cells.end(), 1 + dice.Below(5), cell);
    }
    return cells;
}

std::vector<PackedItem> PackedByTheLibrary(ListHost<DataValue>& host, const Values& values) {
    PackedItemsVisitor visitor;
    host.Send(values, ListForm::Packed, visitor);
    return visitor.Items();
}

Values ReadByTheLibrary(const std::vector<TString>& texts, const std::vector<RunRecord>& records) {
    const auto list = ParameterTypeSerializer<DataValue>().FromStringList(texts, records);
    return GetParameterValue<Values>(list.Get());
}

// What was written bare, with its letters.
TString Lettered(const TString& text, DataType column) {
    if (column == DataType::Integer) {
        return TString(L"i:") + text;
    }
    return TString(text == L"null" ? L"r:" : L"r:::") + text;
}

void ExpectReadsBack(ListHost<DataValue>& host, const Cells& cells, DataType column) {
    const Values values = ValuesOf(cells, column);
    const std::vector<PackedItem> items = PackedByTheLibrary(host, values);
    std::vector<TString> texts = PlainTexts(items);
    for (TString& text : texts) {
        text = Lettered(text, column);
    }
    std::vector<RunRecord> records = NestedLists(items);
    for (RunRecord& record : records) {
        if (!record.second.empty()) {
            record.second[0] = Lettered(record.second[0], column);
        }
    }
    ASSERT_EQ(values, ReadByTheLibrary(texts, records));
}

// A run of two or three items, or something of another size, with the texts for it.
Record RandomRecord(Dice& dice, int position) {
    struct Step {
        const wchar_t* text;
        Cell magnitude;
        bool descending;
    };
    static const std::vector<Step> kSteps = {
        {L"1", IntegerCell(1), false},
        {L"-1", IntegerCell(1), true},
        {L"0", IntegerCell(0), false},
        {L"2147483647", IntegerCell(2147483647), false},
        {L"-2147483648", IntegerCell(2147483648), true},
        {L"0.5", {Cell::Real, 0, 0.5, ""}, false},
        {L"-0.1", {Cell::Real, 0, 0.1, ""}, true},
        {L"3.", {Cell::Real, 0, 3.0, ""}, false},
    };
    static const std::vector<std::int64_t> kFirst = {0, 5, -7, std::numeric_limits<std::int64_t>::max(),
                                                     std::numeric_limits<std::int64_t>::min()};
    Record record;
    record.position = position;
    record.first = dice.Below(2) == 0 ? IntegerCell(dice.Of(kFirst)) : kReals[dice.Below(5)];
    record.length = static_cast<unsigned int>(dice.Below(7));
    const Step& step = dice.Of(kSteps);
    record.step = step.magnitude;
    record.descending = step.descending;
    record.texts = {
        TString(record.first.kind == Cell::Integer ? L"i:" : L"r:::") + TString::FromUtf8(record.first.Text()),
        TString::number(record.length), step.text, L"x"};
    record.texts.resize(dice.Below(5));
    return record;
}

}  // namespace

TEST(DataValueRunModel, LibraryPacksIntegersAsTheModel) {
    Dice dice(Seed(21));
    ListHost<DataValue> host;
    int listsWithRuns = 0;
    for (int i = 0; i < Rounds(kLists); ++i) {
        const Cells cells = RandomIntegers(dice, kAllSteps);
        const bool isColumn = !cells.empty();
        const std::vector<PackedItem> expected = typed_run_model::PackIntegers(cells);
        listsWithRuns += isColumn && expected.back().nested ? 1 : 0;
        ASSERT_EQ(expected, PackedByTheLibrary(host, ValuesOf(cells, DataType::Integer))) << "list " << i;
    }
    EXPECT_GT(listsWithRuns, Rounds(kLists) / 4);  // else the lists test nothing
    EXPECT_LT(listsWithRuns, Rounds(kLists));
}

TEST(DataValueRunModel, LibraryPacksRealsAsTheModel) {
    Dice dice(Seed(22));
    ListHost<DataValue> host;
    int listsWithRuns = 0;
    for (int i = 0; i < Rounds(kLists); ++i) {
        const Cells cells = RandomReals(dice);
        const std::vector<PackedItem> expected = typed_run_model::PackReals(cells);
        listsWithRuns += !expected.empty() && expected.back().nested ? 1 : 0;
        ASSERT_EQ(expected, PackedByTheLibrary(host, ValuesOf(cells, DataType::Real))) << "list " << i;
    }
    EXPECT_GT(listsWithRuns, Rounds(kLists) / 4);
    EXPECT_LT(listsWithRuns, Rounds(kLists));
}

// With letters put before the bare texts, packed lists read back; steps of 32 bits are as far as that goes.
TEST(DataValueRunModel, PackedListsReadBackWithLetters) {
    Dice dice(Seed(23));
    ListHost<DataValue> host;
    for (int i = 0; i < Rounds(kLists); ++i) {
        SCOPED_TRACE(i);
        ExpectReadsBack(host, RandomIntegers(dice, kShortSteps), DataType::Integer);
        ExpectReadsBack(host, RandomReals(dice), DataType::Real);
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(DataValueRunModel, LibraryExpandsAsTheModel) {
    Dice dice(Seed(24));
    for (int i = 0; i < Rounds(kLists); ++i) {
        Cells cells;
        std::vector<TString> texts;
        std::vector<Record> records;
        const std::size_t size = dice.Below(20);
        for (std::size_t position = 0; position < size; ++position) {
            if (dice.Below(2) == 0) {
                cells.push_back(IntegerCell(static_cast<std::int64_t>(position)));
                texts.push_back(TString(L"i:") + TString::number(static_cast<int>(position)));
            } else {
                records.push_back(RandomRecord(dice, static_cast<int>(position)));
            }
        }
        for (std::size_t j = records.size(); j > 1; --j) {
            std::swap(records[j - 1], records[dice.Below(j)]);
        }
        std::vector<RunRecord> runs;
        for (const Record& record : records) {
            runs.emplace_back(record.position, record.texts);
        }
        ASSERT_EQ(ValuesOf(typed_run_model::Expand(cells, records), DataType::Integer), ReadByTheLibrary(texts, runs))
            << "list " << i;
    }
}

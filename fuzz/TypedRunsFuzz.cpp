// Packing and unpacking of lists of typed values. Promised:
//
//   - columns of integers and of reals, nulls among them, are packed as the slow model packs them;
//   - run records at any places expand as the slow model expands them: integer steps wrap, a step with a point makes
//     reals.
//
// The last byte tells which of the two.
#include <string>
#include <vector>

#include "fuzz/support/RandomBag.h"
#include "structure/DataValueRunModel.h"
#include "support/ListHost.h"

using namespace fuzz;
using typed_run_model::Cell;

namespace {

using Serializer = ParameterTypeSerializer<DataValue>;

DataValue ValueOf(const Cell& cell, DataType column) {
    return cell.kind == Cell::Integer ? DataValue(cell.integer)
           : cell.kind == Cell::Real  ? DataValue(cell.real)
                                      : DataValue::Null(column);
}

Cell RealCell(double value) {
    const TString text = ContextualDataValueSerializerCore::ToString(value);  // TypedTextFuzz looks at those
    return value - value == 0 ? Cell{Cell::Real, 0, value, text.ToUtf8()} : Cell{};
}

// A column of integers or of reals, with nulls.
void CheckTypedPacking(Bytes& bytes) {
    const DataType column = bytes.Coin() ? DataType::Real : DataType::Integer;
    std::vector<Cell> cells;
    for (std::size_t pieces = bytes.Below(6); pieces > 0; --pieces) {
        cells.resize(cells.size() + bytes.Below(3) / 2);
        if (column == DataType::Real) {
            cells.insert(cells.end(), 1 + bytes.Below(6), RealCell(Random<double>::Of(bytes)));
            continue;
        }
        for (const Int64 value : RandomList<Int64>(bytes)) {
            cells.push_back({Cell::Integer, value, 0, ""});
        }
    }
    std::vector<DataValue> values;
    for (const Cell& cell : cells) {
        values.push_back(ValueOf(cell, column));
    }
    const std::vector<PackedItem> expected =
        column == DataType::Real ? typed_run_model::PackReals(cells) : typed_run_model::PackIntegers(cells);
    ListHost<DataValue> host;
    PackedItemsVisitor visitor;
    host.Send(values, ListForm::Packed, visitor);
    Require(expected == visitor.Items(), "a column is packed as the model packs it");
}

// Letters, bounded lengths, and steps of both kinds.
void CheckTypedExpanding(Bytes& bytes) {
    std::vector<Cell> cells;
    std::vector<TString> texts;
    std::vector<typed_run_model::Record> records;
    std::vector<RunRecord> runs;
    for (std::size_t i = 0, size = bytes.Below(20); i < size; ++i) {
        const Cell first = bytes.Coin() ? Cell{Cell::Integer, Random<Int64>::Of(bytes), 0, ""}
                                        : Cell{Cell::Real, 0, bytes.Raw<std::int16_t>() / 4.0, ""};
        const TString text = Serializer::TypeToString(ValueOf(first, DataType::Unknown));
        if (bytes.Coin()) {
            cells.push_back(first);
            texts.push_back(text);
            continue;
        }
        typed_run_model::Record record{
            static_cast<int>(i), first, static_cast<unsigned>(bytes.Below(7)), {}, false, {}};
        const int step = Random<int>::Of(bytes);
        const bool isReal = bytes.Coin();
        record.step = isReal ? Cell{Cell::Real, 0, step * 0.5, ""} : Cell{Cell::Integer, step, 0, ""};
        const TString stepText = isReal ? TString::FromUtf8(std::to_string(step * 0.5)) : TString::number(step);
        record.texts = {text, TString::number(record.length), stepText, L"x"};
        record.texts.resize(bytes.Below(5));
        runs.emplace_back(record.position, record.texts);
        records.push_back(std::move(record));
    }
    std::vector<DataValue> expected;
    for (const Cell& cell : typed_run_model::Expand(cells, records)) {
        expected.push_back(ValueOf(cell, DataType::Real));
    }
    const RefCntPtr<IParameter> list = Serializer().FromStringList(texts, runs);
    Require(expected == GetParameterValue<std::vector<DataValue>>(list.Get()),
            "typed runs expand as the model expands them");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    if (bytes.LastByte() % 2 == 0) {
        CheckTypedPacking(bytes);
    } else {
        CheckTypedExpanding(bytes);
    }
    return 0;
}

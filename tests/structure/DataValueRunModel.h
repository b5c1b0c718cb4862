// Packing and expanding of typed values, the slow way: the rules word for word. Tests compare the library with it on
// lists that nobody can write down.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "structure/RunModel.h"

namespace typed_run_model {

using run_model::Wide;

// An integer, a real with its text, or the null of a column.
struct Cell {
    enum Kind { Integer, Real, Null };
    Kind kind = Null;
    std::int64_t integer = 0;
    double real = 0;
    std::string realText;

    std::string Text() const {
        switch (kind) {
            case Integer:
                return run_model::TextOf(Wide{integer});
            case Real:
                return realText;
            default:
                return "null";
        }
    }
};

// The halves of neighbours differ by less than half of 10 to the power of 18.
inline bool IsStepUsable(std::int64_t previous, std::int64_t current) {
    const Wide difference = Wide{previous / 2} - Wide{current / 2};
    return (difference < 0 ? -difference : difference) < Wide{500000000000000000};
}

// A column of integers: runs of equal steps; nulls stand alone.
inline std::vector<PackedItem> PackIntegers(const std::vector<Cell>& cells) {
    run_model::Output out("int-rle");
    run_model::SteppedRun run;
    std::int64_t last = 0;  // of the open run, if there is one
    for (const Cell& cell : cells) {
        if (cell.kind == Cell::Null) {
            run_model::Emit(run, out);
            run = {};
            out.Plain("null");
            continue;
        }
        const Wide current{cell.integer};
        if (run.length == 0) {
            run = {current, 1, 0, false};
        } else if (!IsStepUsable(last, cell.integer)) {
            run_model::Emit(run, out);
            run = {current, 1, 0, false};
        } else {
            const bool descending = cell.integer < last;
            const Wide magnitude = descending ? last - current : current - last;
            if (run.length == 1) {
                run.length = 2;
                run.magnitude = magnitude;
                run.descending = descending;
            } else if (run.descending == descending && run.magnitude == magnitude) {
                ++run.length;
            } else if (run.length < 4) {
                --run.length;
                run_model::Emit(run, out);
                run = {Wide{last}, 2, magnitude, descending};
            } else {
                run_model::Emit(run, out);
                run = {current, 1, 0, false};
            }
        }
        last = cell.integer;
    }
    run_model::Emit(run, out);
    return out.Finish();
}

// A column of reals: runs of equal elements; nulls stand alone.
inline std::vector<PackedItem> PackReals(const std::vector<Cell>& cells) {
    run_model::Output out("float-rle");
    std::size_t start = 0;
    while (start < cells.size()) {
        std::size_t end = start + 1;
        while (cells[start].kind == Cell::Real && end < cells.size() && cells[end].kind == Cell::Real &&
               cells[end].real == cells[start].real) {
            ++end;
        }
        if (end - start >= 4) {
            out.Run({cells[start].Text(), std::to_string(end - start)});
        } else {
            for (std::size_t i = start; i < end; ++i) {
                out.Plain(cells[start].Text());
            }
        }
        start = end;
    }
    return out.Finish();
}

// The sum or difference of two numbers: integers wrap, a real makes a real.
inline Cell Add(const Cell& left, const Cell& step, bool descending) {
    Cell sum;
    if (left.kind == Cell::Integer && step.kind == Cell::Integer) {
        const auto a = static_cast<std::uint64_t>(left.integer);
        const auto b = static_cast<std::uint64_t>(step.integer);
        sum.kind = Cell::Integer;
        sum.integer = static_cast<std::int64_t>(descending ? a - b : a + b);
        return sum;
    }
    const double a = left.kind == Cell::Integer ? static_cast<double>(left.integer) : left.real;
    const double b = step.kind == Cell::Integer ? static_cast<double>(step.integer) : step.real;
    sum.kind = Cell::Real;
    sum.real = descending ? a - b : a + b;
    return sum;
}

// A run as a test makes it, and its texts.
struct Record {
    int position = 0;
    Cell first;
    unsigned int length = 0;
    std::optional<Cell> step;  // its magnitude
    bool descending = false;
    std::vector<TString> texts;  // of which two or three make a run
};

// Insertion by insertion, from the last record to the first.
inline std::vector<Cell> Expand(std::vector<Cell> cells, std::vector<Record> records) {
    std::stable_sort(records.begin(), records.end(),
                     [](const Record& left, const Record& right) { return left.position < right.position; });
    for (std::size_t k = records.size(); k-- > 0;) {
        const Record& record = records[k];
        if (record.texts.size() != 2 && record.texts.size() != 3) {
            continue;
        }
        auto index = static_cast<std::ptrdiff_t>(record.position) - static_cast<std::ptrdiff_t>(k);
        Cell cell = record.first;
        for (unsigned int i = 0; i < record.length; ++i, ++index) {
            if (i > 0 && record.texts.size() == 3) {
                cell = Add(cell, *record.step, record.descending);
            }
            cells.insert(cells.begin() + index, cell);
        }
    }
    return cells;
}

}  // namespace typed_run_model

// Packing and expanding, the slow way: the rules word for word, in arithmetic that is wide enough for everything. Tests
// compare the library with it on lists that nobody can write down.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "structure/PackedItems.h"
#include "support/RealTextModel.h"

namespace run_model {

__extension__ typedef __int128 Wide;

inline std::string TextOf(Wide value) {
    std::string digits;
    for (Wide rest = value < 0 ? -value : value; rest != 0; rest /= 10) {
        digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(rest % 10)));
    }
    if (digits.empty()) {
        digits = "0";
    }
    return value < 0 ? "-" + digits : digits;
}

inline Wide ValueOf(const std::string& text) {
    Wide value = 0;
    for (const char c : text) {
        if (c != '-') {
            value = value * 10 + (c - '0');
        }
    }
    return text.front() == '-' ? -value : value;
}

inline std::string RealTextOf(float value) { return RealTextModel(static_cast<double>(value), 7); }
inline std::string RealTextOf(double value) { return RealTextModel(value, 14); }

// What a list is written as, and whether a run was written in run form.
class Output {
public:
    explicit Output(std::string tag) : m_tag(std::move(tag)) {}

    void Plain(const std::string& text) { m_items.push_back({false, text, {}}); }
    void Run(std::vector<std::string> items) {
        m_items.push_back({true, m_tag, std::move(items)});
        m_hasRuns = true;
    }
    std::vector<PackedItem> Finish() {
        if (m_hasRuns) {
            m_items.push_back({true, m_tag, {}});
        }
        return m_items;
    }

private:
    std::string m_tag;
    std::vector<PackedItem> m_items;
    bool m_hasRuns = false;
};

struct SteppedRun {
    Wide first = 0;
    int length = 0;
    Wide magnitude = 0;
    bool descending = false;
};

inline void Emit(const SteppedRun& run, Output& out) {
    const Wide step = run.descending ? -run.magnitude : run.magnitude;
    if (run.length < 4) {
        for (int i = 0; i < run.length; ++i) {
            out.Plain(TextOf(run.first + i * step));
        }
    } else if (run.magnitude == 0) {
        out.Run({TextOf(run.first), std::to_string(run.length)});
    } else {
        out.Run({TextOf(run.first), std::to_string(run.length), TextOf(step)});
    }
}

// Half of ten to the power of the digits that the type always holds.
template <class T>
Wide StepBound() {
    Wide power = 1;
    for (int i = 0; i < std::numeric_limits<T>::digits10; ++i) {
        power *= 10;
    }
    return power / 2;
}

template <class T>
bool IsStepUsable(T previous, T current) {
    const Wide difference = Wide{previous / 2} - Wide{current / 2};  // towards zero
    return (difference < 0 ? -difference : difference) < StepBound<T>();
}

// Integers: runs of equal steps.
template <class T>
requires std::is_integral_v<T> std::vector<PackedItem> Pack(const std::vector<T>& values) {
    Output out(std::is_signed_v<T> ? "int-rle" : "uint-rle");
    SteppedRun run;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Wide current{values[i]};
        if (i == 0) {
            run = {current, 1, 0, false};
            continue;
        }
        if (!IsStepUsable(values[i - 1], values[i])) {
            Emit(run, out);
            run = {current, 1, 0, false};
            continue;
        }
        const Wide previous{values[i - 1]};
        const bool descending = current < previous;
        const Wide magnitude = descending ? previous - current : current - previous;
        if (run.length == 1) {
            run.length = 2;
            run.magnitude = magnitude;
            run.descending = descending;
        } else if (run.descending == descending && run.magnitude == magnitude) {
            ++run.length;
        } else if (run.length < 4) {
            --run.length;
            Emit(run, out);
            run = {previous, 2, magnitude, descending};
        } else {
            Emit(run, out);
            run = {current, 1, 0, false};
        }
    }
    Emit(run, out);
    return out.Finish();
}

// Reals: runs of equal elements.
template <class T>
requires std::is_floating_point_v<T> std::vector<PackedItem> Pack(const std::vector<T>& values) {
    Output out("float-rle");
    std::size_t start = 0;
    for (std::size_t i = 1; i <= values.size(); ++i) {
        if (i < values.size() && values[i] == values[start]) {
            continue;
        }
        const std::string text = RealTextOf(values[start]);
        if (i - start < 4) {
            for (std::size_t j = start; j < i; ++j) {
                out.Plain(text);
            }
        } else {
            out.Run({text, std::to_string(i - start)});
        }
        start = i;
    }
    return out.Finish();
}

// Integers that wrap, in the element type. Insertion by insertion, from the last record to the first.
template <class T>
std::vector<T> Expand(std::vector<T> values, std::vector<RunRecord> records) {
    std::stable_sort(records.begin(), records.end(),
                     [](const RunRecord& left, const RunRecord& right) { return left.first < right.first; });
    for (std::size_t k = records.size(); k-- > 0;) {
        const auto& [position, texts] = records[k];
        if (texts.size() != 2 && texts.size() != 3) {
            continue;
        }
        const Wide first = ValueOf(texts[0].ToUtf8());
        const Wide length = ValueOf(texts[1].ToUtf8());
        const Wide step = texts.size() == 3 ? ValueOf(texts[2].ToUtf8()) : 0;
        auto index = static_cast<std::ptrdiff_t>(position) - static_cast<std::ptrdiff_t>(k);
        for (Wide i = 0; i < length; ++i, ++index) {
            // The low bits of the exact value, reinterpreted.
            const auto bits = static_cast<std::uint64_t>(first + i * step);
            values.insert(values.begin() + index, static_cast<T>(bits));
        }
    }
    return values;
}

}  // namespace run_model

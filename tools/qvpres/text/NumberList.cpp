#include "tools/qvpres/text/NumberList.h"

#include <algorithm>
#include <array>
#include <exception>

#include <qvcore/TextNumbers.h>

namespace qvpres {

namespace {

std::optional<long double> Number(std::u16string_view text) {
    Int64 integer = 0;
    if (ParseInt64(text, integer)) {
        return integer;
    }
    UInt64 large = 0;
    if (ParseUInt64(text, large)) {
        return large;
    }
    double real = 0;
    if (ParseDouble(text, real)) {
        return real;
    }
    return std::nullopt;
}

// An element of a list of typed values, "i:42" or "r:::4.5".
std::optional<NumberRun> TypedNumber(std::u16string_view text) {
    if (!text.starts_with(u"i:") && !text.starts_with(u"r:")) {
        return std::nullopt;
    }
    try {
        const DataValue value = ParameterTypeTraits<DataValue>::FromText(text);
        NumberRun run;
        run.null = value.IsSpecial();
        if (!run.null) {
            run.first = value.GetDataType() == DataType::Integer ? static_cast<long double>(value.GetInteger())
                                                                 : static_cast<long double>(value.GetReal());
        }
        return run;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

// Reads the elements of one array.
class ListReader {
public:
    ListReader(const JSONDocument& document, bool typed) : m_document(document), m_typed(typed) {}

    std::optional<NumberRun> Element(JSONDocument::Index element) const {
        const JSONKind kind = m_document[element].kind;
        if (kind == JSONKind::Null) {
            NumberRun run;
            run.null = true;
            return run;
        }
        if (m_typed) {
            return kind == JSONKind::String ? TypedNumber(m_document.Text(element)) : std::nullopt;
        }
        return Plain(element);
    }

    // A nested array of two or three items; one of any other length stands for no elements.
    std::optional<NumberRun> Nested(JSONDocument::Index array) const {
        std::vector<JSONDocument::Index> items;
        for (auto item = array + 1; item != m_document.Next(array); item = m_document.Next(item)) {
            items.push_back(item);
        }
        NumberRun none;
        none.count = 0;
        if (items.size() != 2 && items.size() != 3) {
            return none;
        }
        std::optional<NumberRun> run = Element(items[0]);
        const auto count = Plain(items[1]);
        const auto step = items.size() == 3 ? Plain(items[2]) : NumberRun();
        constexpr long double kLargest = 4294967295.0L;
        if (!run || !count || !step || count->first > kLargest) {
            return std::nullopt;
        }
        run->packed = true;
        run->step = step->first;
        run->count = count->first < 0 ? 0 : static_cast<std::uint64_t>(count->first);
        return run;
    }

private:
    std::optional<NumberRun> Plain(JSONDocument::Index element) const {
        const JSONKind kind = m_document[element].kind;
        if (kind != JSONKind::Integer && kind != JSONKind::Real && kind != JSONKind::String) {
            return std::nullopt;
        }
        const auto number = Number(m_document.Text(element));
        if (!number) {
            return std::nullopt;
        }
        NumberRun run;
        run.first = *number;
        return run;
    }

    const JSONDocument& m_document;
    bool m_typed;
};

bool IsTyped(const TextNode& node) {
    return node.declaration != nullptr && node.declaration->type != nullptr &&
           node.declaration->type->form == TextForm::TypedValue;
}

bool IsNumeric(const TextNode& node) { return node.info->serializer && node.info->serializer->GetType() == PTC_Number; }

}  // namespace

void NumberRange::Add(const NumberRun& run, std::uint64_t from, std::uint64_t count) {
    elements += count;
    packed += run.packed ? count : 0;
    if (run.null || count == 0) {
        return;
    }
    const auto [least, greatest] = std::minmax({run.At(from), run.At(from + count - 1)});
    if (numbers == 0) {
        low = least;
        high = greatest;
        first = run.At(from);
    }
    low = std::min(low, least);
    high = std::max(high, greatest);
    last = run.At(from + count - 1);
    sum += static_cast<long double>(count) * (least + greatest) / 2;
    numbers += count;
}

std::optional<NumberList> NumberList::From(const ParameterText& text, ParameterText::Node node) {
    const TextNode& it = text[node];
    if (it.role != Role::Parameter || it.info->kind != PTC_List || text.KindOf(node) != JSONKind::Array ||
        (!IsTyped(it) && !IsNumeric(it))) {
        return std::nullopt;
    }
    const JSONDocument& document = text.Document();
    const ListReader reader(document, IsTyped(it));
    NumberList list;
    const auto behind = document.Next(it.value);
    for (auto element = it.value + 1; element != behind; element = document.Next(element)) {
        const bool nested = document[element].kind == JSONKind::Array;
        const auto run = nested ? reader.Nested(element) : reader.Element(element);
        if (!run) {
            return std::nullopt;
        }
        list.Add(*run);
    }
    return list;
}

void NumberList::Add(const NumberRun& run) {
    if (run.count == 0) {
        return;
    }
    m_runs.push_back(run);
    m_packedRuns += run.packed ? 1 : 0;
    m_total.Add(run, 0, run.count);
}

std::vector<NumberRange> NumberList::Parts(std::size_t count) const {
    count = static_cast<std::size_t>(std::min<std::uint64_t>(count, m_total.elements));
    std::vector<NumberRange> parts(count);
    if (count == 0) {
        return parts;
    }
    std::uint64_t done = 0;  // elements before those to come
    std::size_t part = 0;
    const auto endOf = [&](std::size_t index) {
        return static_cast<std::uint64_t>(static_cast<long double>(m_total.elements) *
                                          static_cast<long double>(index + 1) / static_cast<long double>(count));
    };
    for (const NumberRun& run : m_runs) {
        for (std::uint64_t from = 0; from < run.count;) {
            while (done + from >= endOf(part) && part + 1 < count) {
                ++part;
            }
            const std::uint64_t room = part + 1 == count ? run.count : endOf(part) - done - from;
            const std::uint64_t taken = std::min(run.count - from, room);
            parts[part].Add(run, from, taken);
            from += taken;
        }
        done += run.count;
    }
    return parts;
}

std::string Sparkline(const NumberList& list, std::size_t width) {
    constexpr std::array<std::string_view, 8> kBlocks = {"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    const std::vector<NumberRange> parts = list.Parts(width);
    long double low = 0;
    long double high = 0;
    bool any = false;
    for (const NumberRange& part : parts) {
        if (part.numbers != 0) {
            low = any ? std::min(low, part.Mean()) : part.Mean();
            high = any ? std::max(high, part.Mean()) : part.Mean();
            any = true;
        }
    }
    std::string line;
    for (const NumberRange& part : parts) {
        if (part.numbers == 0) {
            line += ' ';
            continue;
        }
        const long double height = high > low ? (part.Mean() - low) / (high - low) : 0;
        line += kBlocks.at(std::min<std::size_t>(static_cast<std::size_t>(height * 8), 7));
    }
    return line;
}

}  // namespace qvpres

#include "tools/qvpres/stats/Stats.h"

#include <algorithm>
#include <exception>
#include <map>
#include <optional>

#include "tools/qvpres/show/Description.h"
#include "tools/qvpres/text/NumberList.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

using Node = ParameterText::Node;
using Rows = std::map<std::string, StatsRow>;

RefCntPtr<IParameters> Read(const ParameterText& text, std::u16string_view json) {
    const ToolSession session(text.Names() == NameForm::Short);
    return JSONSerializer(text.Namespace()).ToParameters(json);
}

TString Written(const ParameterText& text, const RefCntPtr<IParameters>& bag, bool shortNames, bool packed,
                JSONSerializer::OutputType layout) {
    const ToolSession session(shortNames, packed);
    return JSONSerializer(text.Namespace()).ToString(bag, layout);
}

std::uint64_t CompactLength(const ParameterText& text, const RefCntPtr<IParameters>& bag, bool packed) {
    return Written(text, bag, false, packed, JSONSerializer::Compact).size();
}

bool IsReadable(const ParameterText& text, const TString& json, bool shortNames) {
    const ToolSession session(shortNames);
    try {
        JSONSerializer(text.Namespace()).ToParameters(json);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool IsTypedList(const TextNode& node) {
    return node.declaration != nullptr && node.declaration->type != nullptr &&
           node.declaration->type->form == TextForm::TypedValue;
}

class StatsMaker {
public:
    explicit StatsMaker(const ParameterText& text) : m_text(text) {}

    Stats Make() {
        m_stats.characters = m_text[0].behind - m_text[0].begin;
        m_stats.layout = CountLayout();
        CountNode(0, "");
        m_stats.byPath = Sorted(m_byPath, &StatsRow::total);
        m_stats.byName = Sorted(m_byName, &StatsRow::own);
        m_stats.byType = Sorted(m_byType, &StatsRow::own);
        try {
            MeasureForms();
            MeasurePacking();
        } catch (const std::exception&) {
            m_stats.readable = false;
            m_stats.forms.clear();
            m_stats.packing.clear();
        }
        return std::move(m_stats);
    }

private:
    // Blanks outside of strings.
    std::uint64_t CountLayout() const {
        std::uint64_t blanks = 0;
        bool inString = false;
        const std::u16string_view text = m_text.Text().substr(m_text[0].begin, m_stats.characters);
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char16_t unit = text[i];
            if (unit == u'"') {
                inString = !inString;
            } else if (inString) {
                i += unit == u'\\' ? 1 : 0;
            } else {
                blanks += unit == u' ' || unit == u'\n' || unit == u'\r' || unit == u'\t' ? 1 : 0;
            }
        }
        return blanks;
    }

    // Depth is that of the document, which is limited.
    void CountNode(Node node, const std::string& path) {
        const TextNode& it = m_text[node];
        const std::uint64_t total = it.behind - it.begin;
        std::uint64_t own = total;
        for (const Node child : m_text.Children(node)) {
            own -= m_text[child].behind - m_text[child].begin;
            CountNode(child, path + "/" + Step(m_text[child]));
        }
        Count(m_byPath, path.empty() ? "/" : path, own, total);
        const Description description = Describe(m_text, node, 0);
        Count(m_byType, node == 0 ? "root" : description.type, own, total);
        if (it.role == Role::Parameter || it.role == Role::Unknown) {
            Count(m_byName, description.name, own, total);
        } else {
            Count(m_byName, "(elements and entries)", own, total);
        }
    }

    static std::string Step(const TextNode& node) {
        return node.role == Role::Parameter || node.role == Role::Unknown ? ToUtf8(node.name) : "*";
    }

    static void Count(Rows& rows, const std::string& label, std::uint64_t own, std::uint64_t total) {
        StatsRow& row = rows[label];
        row.label = label;
        ++row.values;
        row.own += own;
        row.total += total;
    }

    static std::vector<StatsRow> Sorted(const Rows& rows, std::uint64_t StatsRow::*by) {
        std::vector<StatsRow> sorted;
        for (const auto& [label, row] : rows) {
            sorted.push_back(row);
        }
        std::stable_sort(sorted.begin(), sorted.end(),
                         [by](const StatsRow& left, const StatsRow& right) { return left.*by > right.*by; });
        return sorted;
    }

    void MeasureForms() {
        const RefCntPtr<IParameters> bag = Read(m_text, m_text.Text());
        const auto add = [&](const char* form, bool shortNames, bool packed, JSONSerializer::OutputType layout) {
            const TString written = Written(m_text, bag, shortNames, packed, layout);
            m_stats.forms.push_back({form, written.size(), IsReadable(m_text, written, shortNames)});
        };
        m_stats.forms.push_back({"as it is", m_stats.characters, true});
        add("pretty", false, false, JSONSerializer::Pretty);
        add("compact", false, false, JSONSerializer::Compact);
        add("compact, packed", false, true, JSONSerializer::Compact);
        try {
            add("compact, short names", true, false, JSONSerializer::Compact);
            add("compact, short names, packed", true, true, JSONSerializer::Compact);
        } catch (const ParameterNotFoundException&) {
            // Some parameter has no short name.
        }
    }

    // Each list alone, in an object of its own; not those of typed values, which neither way can be read again.
    void MeasurePacking() {
        for (Node node = 1; node < m_text.Nodes().size(); ++node) {
            const TextNode& it = m_text[node];
            if (it.role != Role::Parameter || it.overridden || it.info->kind != PTC_List || IsTypedList(it)) {
                continue;
            }
            const auto numbers = NumberList::From(m_text, node);
            if (!numbers) {
                continue;
            }
            const TString json = u"{" + TString(m_text.Text().substr(it.begin, it.behind - it.begin)) + u"}";
            const RefCntPtr<IParameters> bag = Read(m_text, json);
            m_stats.packing.push_back({m_text.Path(node), numbers->Total().elements, CompactLength(m_text, bag, false),
                                       CompactLength(m_text, bag, true)});
        }
        const auto saved = [](const PackingRow& row) {
            return static_cast<std::int64_t>(row.plain) - static_cast<std::int64_t>(row.packed);
        };
        std::stable_sort(m_stats.packing.begin(), m_stats.packing.end(),
                         [&](const auto& left, const auto& right) { return saved(left) > saved(right); });
    }

    const ParameterText& m_text;
    Stats m_stats;
    Rows m_byPath;
    Rows m_byName;
    Rows m_byType;
};

}  // namespace

Stats MakeStats(const ParameterText& text) { return StatsMaker(text).Make(); }

}  // namespace qvpres

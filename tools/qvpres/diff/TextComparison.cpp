#include "tools/qvpres/diff/TextComparison.h"

#include <algorithm>
#include <exception>
#include <map>
#include <optional>

#include <qvcore/TextNumbers.h>

#include "tools/qvpres/diff/RunComparison.h"
#include "tools/qvpres/text/NumberList.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

using Node = ParameterText::Node;

constexpr std::size_t kLongestValue = 60;

// By what a child is matched with one of the other text: parameters by identifier, all others by name or position.
struct Key {
    int id = 0;
    TString name;
    std::uint32_t position = 0;

    friend auto operator<=>(const Key&, const Key&) = default;
    friend bool operator==(const Key&, const Key&) = default;
};

Key KeyOf(const TextNode& node) {
    switch (node.role) {
        case Role::Parameter:
            return {node.info->id, {}, 0};
        case Role::Element:
            return {0, {}, node.position};
        default:
            return {0, node.name, 0};
    }
}

// What is read of the children of a node, in the order of the text. Of two spellings of one name the greater is read.
std::vector<std::pair<Key, Node>> ReadChildren(const ParameterText& text, Node node) {
    std::vector<std::pair<Key, Node>> children;
    std::map<Key, std::size_t> places;
    for (const Node child : text.Children(node)) {
        const TextNode& it = text[child];
        if (it.overridden || (it.role == Role::Parameter && text.KindOf(child) == JSONKind::Null)) {
            continue;
        }
        const auto [place, added] = places.try_emplace(KeyOf(it), children.size());
        if (added) {
            children.emplace_back(place->first, child);
        } else if (it.name > text[children[place->second].second].name) {
            children[place->second].second = child;
        }
    }
    return children;
}

std::string ValueOf(const ParameterText& text, Node node) {
    const JSONKind kind = text.KindOf(node);
    std::string value = kind == JSONKind::String ? Quoted(ToUtf8(text.ValueText(node)))
                                                 : TString(text.ValueText(node).substr(0, 4 * kLongestValue)).ToUtf8();
    std::replace_if(
        value.begin(), value.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return Shortened(value, kLongestValue);
}

std::string ElementText(const NumberRun& element) { return element.null ? "null" : NumberText(element.first); }

class Comparison {
public:
    Comparison(const ParameterText& left, const ParameterText& right, const Tolerance& tolerance, std::size_t most)
        : m_left(left), m_right(right), m_tolerance(tolerance), m_most(most) {}

    ComparisonResult Compare() {
        CompareChildren(0, 0);
        return std::move(m_result);
    }

private:
    bool IsFull() const { return m_result.differences.size() >= m_most; }

    void Add(Difference difference) {
        if (IsFull()) {
            m_result.cut = true;
        } else {
            m_result.differences.push_back(std::move(difference));
        }
    }

    void CompareChildren(Node left, Node right) {
        const auto leftChildren = ReadChildren(m_left, left);
        std::map<Key, Node> rightChildren;
        const auto rightOrder = ReadChildren(m_right, right);
        rightChildren.insert(rightOrder.begin(), rightOrder.end());
        for (const auto& [key, child] : leftChildren) {
            const auto partner = rightChildren.find(key);
            if (partner == rightChildren.end()) {
                Add({Difference::Sort::Removed, m_left.Path(child), ValueOf(m_left, child), "", 0, 0, 0});
            } else {
                CompareValues(child, partner->second);
                rightChildren.erase(partner);
            }
        }
        for (const auto& [key, child] : rightOrder) {
            if (rightChildren.contains(key)) {
                Add({Difference::Sort::Added, m_right.Path(child), "", ValueOf(m_right, child), 0, 0, 0});
            }
        }
    }

    void CompareValues(Node left, Node right) {
        const JSONKind leftKind = m_left.KindOf(left);
        const JSONKind rightKind = m_right.KindOf(right);
        const bool isLeaf = m_left[left].end == left + 1 && m_right[right].end == right + 1;
        if (leftKind == JSONKind::Array && rightKind == JSONKind::Array && isLeaf) {
            CompareLists(left, right);
        } else if (leftKind == rightKind && JSONDocument::IsContainer(leftKind) && !isLeaf) {
            CompareChildren(left, right);
        } else if (JSONDocument::IsContainer(leftKind) || JSONDocument::IsContainer(rightKind)) {
            if (leftKind != rightKind || m_left.ValueText(left) != m_right.ValueText(right)) {
                AddChange(left, right);
            }
        } else if (!IsSameScalar(left, right)) {
            AddChange(left, right);
        }
    }

    void AddChange(Node left, Node right) {
        Add({Difference::Sort::Changed, m_left.Path(left), ValueOf(m_left, left), ValueOf(m_right, right), 0, 0, 0});
    }

    bool IsSameScalar(Node left, Node right) const {
        const TextNode& it = m_left[left];
        const std::u16string_view leftText = m_left.ValueText(left);
        const std::u16string_view rightText = m_right.ValueText(right);
        if (leftText == rightText) {
            return true;
        }
        if (it.declaration != nullptr && it.declaration->type != nullptr &&
            it.declaration->type->form == TextForm::TypedValue) {
            return IsSameTyped(leftText, rightText);
        }
        const bool isNumber = it.info != nullptr && it.info->serializer && it.info->serializer->GetType() == PTC_Number;
        return (isNumber || (IsNumber(m_left, left) && IsNumber(m_right, right))) && IsSameNumber(leftText, rightText);
    }

    static bool IsNumber(const ParameterText& text, Node node) {
        return text.KindOf(node) == JSONKind::Integer || text.KindOf(node) == JSONKind::Real;
    }

    // Integers of 64 bits exactly, all others as doubles.
    static std::optional<long double> Number(std::u16string_view text) {
        Int64 integer = 0;
        UInt64 large = 0;
        double real = 0;
        if (ParseInt64(text, integer)) {
            return integer;
        }
        if (ParseUInt64(text, large)) {
            return large;
        }
        return ParseDouble(text, real) ? std::optional<long double>(real) : std::nullopt;
    }

    bool IsSameNumber(std::u16string_view left, std::u16string_view right) const {
        const auto leftNumber = Number(left);
        const auto rightNumber = Number(right);
        return leftNumber && rightNumber && IsSame(*leftNumber, *rightNumber, m_tolerance);
    }

    bool IsSameTyped(std::u16string_view left, std::u16string_view right) const {
        try {
            const DataValue leftValue = ParameterTypeTraits<DataValue>::FromText(left);
            const DataValue rightValue = ParameterTypeTraits<DataValue>::FromText(right);
            const bool reals = leftValue.GetDataType() == DataType::Real &&
                               rightValue.GetDataType() == DataType::Real && !leftValue.IsSpecial() &&
                               !rightValue.IsSpecial();
            return leftValue == rightValue || (reals && IsSame(leftValue.GetReal(), rightValue.GetReal(), m_tolerance));
        } catch (const std::exception&) {
            return false;  // no typed values: their texts decide
        }
    }

    void CompareLists(Node left, Node right) {
        const auto leftNumbers = NumberList::From(m_left, left);
        const auto rightNumbers = NumberList::From(m_right, right);
        if (leftNumbers && rightNumbers) {
            CompareNumbers(left, *leftNumbers, *rightNumbers);
        } else {
            CompareItems(left, right);
        }
    }

    void AddLength(Node left, std::uint64_t leftCount, std::uint64_t rightCount) {
        if (leftCount != rightCount) {
            Add({Difference::Sort::Length, m_left.Path(left), Grouped(leftCount), Grouped(rightCount), 0, 0, 0});
        }
    }

    void CompareNumbers(Node left, const NumberList& leftNumbers, const NumberList& rightNumbers) {
        AddLength(left, leftNumbers.Total().elements, rightNumbers.Total().elements);
        for (const Stretch& stretch : CompareRuns(leftNumbers, rightNumbers, m_tolerance)) {
            Add({Difference::Sort::Elements, m_left.Path(left), ElementText(stretch.left), ElementText(stretch.right),
                 stretch.first, stretch.count, static_cast<double>(stretch.largest)});
        }
    }

    std::vector<std::string> ItemsOf(const ParameterText& text, Node node) const {
        const JSONDocument& document = text.Document();
        std::vector<std::string> items;
        const auto behind = document.Next(text[node].value);
        for (auto item = text[node].value + 1; item != behind; item = document.Next(item)) {
            items.push_back(ItemText(document, item));
        }
        return items;
    }

    static std::string ItemText(const JSONDocument& document, JSONDocument::Index item) {
        const JSONKind kind = document[item].kind;
        if (kind == JSONKind::Array) {
            std::string text;
            for (auto inner = item + 1; inner != document.Next(item); inner = document.Next(inner)) {
                text += (text.empty() ? "" : ", ") + ItemText(document, inner);
            }
            return "[" + text + "]";
        }
        if (kind == JSONKind::Object) {
            return "{}";  // counts as the empty text, whatever it holds
        }
        const std::string text = ToUtf8(document.Text(item));
        return kind == JSONKind::String ? Quoted(text) : text;
    }

    // Neighbouring items that differ make one difference.
    void CompareItems(Node left, Node right) {
        const auto leftItems = ItemsOf(m_left, left);
        const auto rightItems = ItemsOf(m_right, right);
        AddLength(left, leftItems.size(), rightItems.size());
        const std::size_t both = std::min(leftItems.size(), rightItems.size());
        for (std::size_t i = 0; i < both;) {
            std::size_t end = i;
            while (end < both && leftItems[end] != rightItems[end]) {
                ++end;
            }
            if (end > i) {
                Add({Difference::Sort::Elements, m_left.Path(left), Shortened(leftItems[i], kLongestValue),
                     Shortened(rightItems[i], kLongestValue), i, end - i, 0});
            }
            i = end + 1;
        }
    }

    const ParameterText& m_left;
    const ParameterText& m_right;
    Tolerance m_tolerance;
    std::size_t m_most;
    ComparisonResult m_result;
};

}  // namespace

ComparisonResult CompareTexts(const ParameterText& left, const ParameterText& right, const Tolerance& tolerance,
                              std::size_t most) {
    return Comparison(left, right, tolerance, most).Compare();
}

}  // namespace qvpres

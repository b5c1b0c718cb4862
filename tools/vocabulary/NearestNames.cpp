#include "tools/vocabulary/NearestNames.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace qvpres {

namespace {

constexpr std::size_t kMostErrors = 3;

// Names that are longer are not compared: the work grows with the product of two lengths.
constexpr std::size_t kLongestName = 200;

// What remains of a name when case and joints do not count.
std::u16string Plain(std::u16string_view name) {
    std::u16string plain;
    for (const char16_t unit : name) {
        if (unit >= u'A' && unit <= u'Z') {
            plain.push_back(static_cast<char16_t>(unit - u'A' + u'a'));
        } else if (unit != u'-' && unit != u'_' && unit != u' ') {
            plain.push_back(unit);
        }
    }
    return plain;
}

// How many units must be put in, left out, exchanged, or swapped with their neighbour to turn one into the other.
std::size_t TypingErrors(std::u16string_view from, std::u16string_view to) {
    std::vector<std::size_t> beforeLast(to.size() + 1);
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (from[i - 1] == to[j - 1] ? 0U : 1U)});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
        std::swap(beforeLast, last);
        std::swap(last, row);
    }
    return last[to.size()];
}

}  // namespace

TString Quoted(const TString& name) { return u"\"" + name + u'"'; }

std::vector<TString> NearestNames(std::u16string_view name, const std::vector<TString>& known, std::size_t count) {
    if (name.size() > kLongestName) {
        return {};
    }
    const std::u16string sought = Plain(name);
    const std::size_t most = std::clamp<std::size_t>(sought.size() / 3, 1, kMostErrors);
    std::vector<std::pair<std::size_t, const TString*>> near;
    for (const TString& candidate : known) {
        if (candidate.size() > kLongestName) {
            continue;
        }
        const std::size_t errors = TypingErrors(sought, Plain(candidate));
        if (errors <= most) {
            near.emplace_back(errors, &candidate);
        }
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<TString> names;
    for (const auto& [errors, candidate] : near) {
        if (names.size() < count && std::find(names.begin(), names.end(), *candidate) == names.end()) {
            names.push_back(*candidate);
        }
    }
    return names;
}

TString NearestNamesHint(std::u16string_view name, const std::vector<TString>& known) {
    const std::vector<TString> names = NearestNames(name, known);
    TString hint;
    for (std::size_t i = 0; i < names.size(); ++i) {
        hint += i == 0 ? u"; did you mean " : i + 1 == names.size() ? u" or " : u", ";
        hint += Quoted(names[i]);
    }
    return hint.empty() ? hint : hint + u'?';
}

}  // namespace qvpres

// Putting packed runs back into their list. Included by the .cpp files that read packed lists.
//
// Records are taken by position, upwards; the k-th of them (records that are skipped count too) belongs before the
// plain element number position - k, since positions count the nested lists before it. Literally inserting from the
// last to the first would move the rest of the list once for each record; one forward merge gives the same list.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include <qvsys/LogicException.h>

#include <qvcore/TString.h>

#include <qvpreslayer/PresLayerLimits.h>

using RunRecords = std::vector<std::pair<int, std::vector<TString>>>;

// Expands runs into values, which hold the plain elements in order. Elements gives the rules of the element type:
//
//   Elements::Run                                            a run as parsed
//   Elements::Parse(const std::vector<TString>& items)       from two or three items
//   Elements::Length(run)                                    how many elements it stands for
//   Elements::Append(run, std::vector<T>& to)                its elements
//
// Parses from the last record to the first, all before any element moves. What values hold after a failure is not told.
template <class Elements, class T>
void ExpandRuns(std::vector<T>& values, const RunRecords& records) {
    struct Piece {
        std::size_t index;  // among the plain elements
        typename Elements::Run run;
    };
    std::vector<const RunRecords::value_type*> sorted;
    sorted.reserve(records.size());
    for (const auto& record : records) {
        sorted.push_back(&record);
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](auto* left, auto* right) { return left->first < right->first; });

    std::vector<Piece> pieces;  // last to first
    std::size_t total = values.size();
    std::ptrdiff_t limit = static_cast<std::ptrdiff_t>(values.size());
    const PresLayerLimits::ExpansionBudgetScope budget;
    for (std::size_t k = sorted.size(); k-- > 0;) {
        const auto& [position, items] = *sorted[k];
        if (items.size() != 2 && items.size() != 3) {
            continue;
        }
        Piece piece{0, Elements::Parse(items)};
        const std::ptrdiff_t index = static_cast<std::ptrdiff_t>(position) - static_cast<std::ptrdiff_t>(k);
        if (index < 0 || index > limit) {
            ThrowLogicException("index <= values.size()", __LINE__, "main/structure/DataSerializerHelpers");
        }
        limit = index;
        piece.index = static_cast<std::size_t>(index);
        PresLayerLimits::ExpansionBudgetScope::Spend(Elements::Length(piece.run) * sizeof(T));
        total += Elements::Length(piece.run);
        pieces.push_back(std::move(piece));
    }
    if (pieces.empty()) {
        return;
    }

    std::vector<T> merged;
    merged.reserve(total);
    auto plain = std::make_move_iterator(values.begin());
    std::size_t taken = 0;
    for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece) {
        const auto count = static_cast<std::ptrdiff_t>(piece->index - taken);
        merged.insert(merged.end(), plain, plain + count);
        plain += count;
        taken = piece->index;
        Elements::Append(piece->run, merged);
    }
    merged.insert(merged.end(), plain, std::make_move_iterator(values.end()));
    values = std::move(merged);
}

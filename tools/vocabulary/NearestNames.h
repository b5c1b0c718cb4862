// Names in messages, and the names that somebody may have meant.
#pragma once

#include <string_view>
#include <vector>

#include <qvcore/TString.h>

namespace qvpres {

// The name in quotation marks, as messages show it.
TString Quoted(const TString& name);

// The names of known that differ from name by few typing errors (a third of its length, three at most, one at least),
// the nearest first, count of them at most. Letters of either case, dashes, underscores and blanks count as the same.
std::vector<TString> NearestNames(std::u16string_view name, const std::vector<TString>& known, std::size_t count = 3);

// "; did you mean "title"?" or "; did you mean "a", "b" or "c"?"; empty when no name is near.
TString NearestNamesHint(std::u16string_view name, const std::vector<TString>& known);

}  // namespace qvpres

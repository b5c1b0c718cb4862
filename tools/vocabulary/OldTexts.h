// Whether texts that were written for one parameter are read for another. Included by Comparison.cpp and its tests.
#pragma once

#include <string_view>

#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

// What becomes of texts that an older vocabulary wrote, and could read, when a newer one reads them. The order is from
// good to bad. Only texts count in which the parameter has a value that is not empty: null members and empty lists are
// nearly always read.
enum class OldTexts {
    Read,      // all are read, and the value says what it said, if in another type
    Differ,    // all are read, but the value may say something else, or be left out
    SomeFail,  // it depends on the value
    Fail,      // none is read
};

// "read", "differ", "some fail", "fail".
std::u16string_view ToText(OldTexts oldTexts);

// Single values of the one type read as those of the other.
OldTexts ReadAs(const ValueType& older, const ValueType& newer);

// The same for parameters: kinds, types and forms. Names and identifiers do not count.
OldTexts ReadAs(const ParameterDeclaration& older, const ParameterDeclaration& newer);

inline OldTexts Worse(OldTexts left, OldTexts right) { return left < right ? right : left; }

}  // namespace qvpres

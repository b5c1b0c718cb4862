// The numbers of a text, one after the other. Included by DirectReader.h.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include <qvcore/IntegerTypes.h>

// Reads tokens of the JSON grammar for numbers, from at on, and tells what they stand for by the rules of the long way.
// Each operation answers the unit behind the token; null, with nothing said about value, when the long way is to take
// it: a token that is none, too many digits, an exponent. What follows the token is not looked at, but for that it does
// not belong to it.
class DirectNumberReader {
public:
    // Requires: the text ends with a unit that is no part of a number, at end.
    DirectNumberReader(const char16_t* begin, const char16_t* end) noexcept : m_begin(begin), m_end(end) {}

    // An integer, as it travels (see TravellingInteger).
    const char16_t* TakeInteger(const char16_t* at, Int64& value) const noexcept;

    // An integer as it travels, or a real as its 14-digit text gives it; never a negative zero.
    const char16_t* TakeReal(const char16_t* at, double& value) const noexcept;

private:
    struct Parts;

    bool HasRoom(const char16_t* at) const noexcept;
    const char16_t* TakeShortInteger(const char16_t* at, Int64& value) const noexcept;
    const char16_t* TakeShortReal(const char16_t* at, double& value) const noexcept;
    const char16_t* TakeParts(const char16_t* at, Parts& parts) const noexcept;

    const char16_t* m_begin;
    const char16_t* m_end;
};

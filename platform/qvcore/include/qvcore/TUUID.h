// Universally unique identifiers (RFC 4122).
//
// Exceptions: making one from text and ToString are strong; all else never throws.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include <qvcore/Export.h>
#include <qvcore/TString.h>

// An identifier of 128 bits.
class QVCORE_API TUUID {
public:
    // The nil identifier, all bits zero.
    TUUID() = default;

    // From 36 characters, hexadecimal digits of either case in groups of 8, 4, 4, 4 and 12 with dashes between, without
    // braces; QuorvelException naming the text when it is anything else.
    explicit TUUID(const TString& text);

    // The same without an exception: false for any other text, which leaves uuid as it was.
    static bool TryParse(std::u16string_view text, TUUID& uuid) noexcept;

    // Writes the kTextUnits units of ToString(0) at to.
    static constexpr std::size_t kTextUnits = 36;
    void WriteText(char16_t* to) const noexcept;

    // The text: option 0 is 36 characters, lower case, with dashes and without braces. No other option exists;
    // QuorvelException for one.
    TString ToString(int format = 0) const;

    friend bool operator==(const TUUID&, const TUUID&) = default;
    friend std::strong_ordering operator<=>(const TUUID&, const TUUID&) = default;

private:
    std::array<std::uint8_t, 16> m_bytes{};  // in the order of the text
};

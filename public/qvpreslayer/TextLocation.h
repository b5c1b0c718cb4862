// Where in a text a failure lies.
//
// Exceptions: asking and setting never throw; the path is copied by whoever hands it over.
#pragma once

#include <cstddef>
#include <utility>

#include <qvcore/TString.h>

// A place in a JSON text. Lines and columns count from 1, offsets from 0; columns and offsets count UTF-16 code units.
struct TextLocation {
    std::size_t line = 0;    // 0: unknown
    std::size_t column = 0;  // 0: unknown
    std::size_t offset = 0;
    TString path;  // names and positions from the root, such as "/style/colors/3"; empty at the root

    bool IsKnown() const noexcept { return line != 0; }
};

// What exceptions carry beside their fixed message when they come out of reading a text.
class TextLocated {
public:
    // Where the failure lies; not IsKnown() when the exception does not come out of reading a text. Valid as long as
    // the exception.
    const TextLocation& GetLocation() const noexcept { return m_location; }
    void SetLocation(TextLocation location) noexcept { m_location = std::move(location); }

protected:
    TextLocated() = default;
    TextLocated(const TextLocated&) = default;
    TextLocated& operator=(const TextLocated&) = default;
    ~TextLocated() = default;

private:
    TextLocation m_location;
};

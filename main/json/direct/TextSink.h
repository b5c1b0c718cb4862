// The end of a text that is being written, with the room behind it at hand. Included by the direct writers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <qvcore/TString.h>

// Writers ask for room, write through a pointer, and say how far they got. While a sink is in use the text itself is
// behind: Flush brings it up to date, Reload starts again from it.
class TextSink {
public:
    TextSink() = default;
    TextSink(const TextSink&) = delete;
    TextSink& operator=(const TextSink&) = delete;

    // Goes on behind what text holds. Requires: text outlives the use of the sink.
    void Begin(TString& text) noexcept {
        m_text = &text;
        Reload();
    }

    // Where to write up to units.
    char16_t* Room(std::size_t units) {
        if (static_cast<std::size_t>(m_limit - m_at) < units) [[unlikely]] {
            Grow(units);
        }
        return m_at;
    }

    // What was written ends here.
    void Accept(char16_t* end) noexcept { m_at = end; }

    void Put(char16_t unit) {
        char16_t* const at = Room(1);
        *at = unit;
        m_at = at + 1;
    }

    void Flush() noexcept { m_text->Accept(m_at); }

    void Reload() noexcept {
        m_at = m_text->mutable_data() + m_text->size();
        m_limit = m_text->mutable_data() + m_text->capacity();
    }

    // Takes back what was written behind the first units.
    void Shrink(std::size_t units) noexcept { m_at = m_text->mutable_data() + units; }

    std::size_t Size() const noexcept { return static_cast<std::size_t>(m_at - m_text->data()); }

    TString& Text() noexcept { return *m_text; }

private:
    void Grow(std::size_t units) {
        Flush();
        m_text->Extend(units);
        Reload();
    }

    TString* m_text = nullptr;
    char16_t* m_at = nullptr;
    char16_t* m_limit = nullptr;
};

// What CopyText may write beyond the end of the text.
inline constexpr std::size_t kCopySlack = 8;

// Copies a short text in blocks of eight units; there must be room for kCopySlack units behind it. A TString's memory
// goes on to the end of the block.
inline char16_t* CopyText(char16_t* to, const TString& text) {
    const char16_t* const from = text.data();
    const std::size_t size = text.size();
    std::size_t copied = 0;
    do {
        std::memcpy(to + copied, from + copied, 8 * sizeof(char16_t));
        copied += 8;
    } while (copied < size);
    return to + size;
}

// Copies a constant.
template <std::size_t N>
char16_t* CopyUnits(char16_t* to, const char16_t (&units)[N]) {
    std::memcpy(to, units, (N - 1) * sizeof(char16_t));
    return to + N - 1;
}

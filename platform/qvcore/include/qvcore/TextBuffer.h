// The store inside TString: 32 bytes, up to 14 code units in place, longer texts in a block of their own.
//
// Included by TString.h; not for callers.
//
// Exceptions: strong.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include <qvcore/Export.h>

namespace qvcore::detail {

// The operations are those of std::u16string of the same name, and Extend, which gives room that is not filled
// first. A NUL stands behind the text, as it does there. Positions are not checked.
class QVCORE_API TextBuffer {
public:
    TextBuffer() noexcept { SetInlineSize(0); }
    explicit TextBuffer(std::u16string_view text) { Fill(text); }
    // A text whose memory can be read up to the end of its last block, which has at least one more unit than the text.
    struct WholeBlocks {};
    TextBuffer(WholeBlocks, std::u16string_view text) {
        if (text.size() > kInlineUnits) {
            FillHeapByBlocks(text);
            return;
        }
        std::memcpy(m_units, text.data(), sizeof(m_units));
        SetInlineSize(text.size());
    }
    TextBuffer(std::size_t count, char16_t unit) {
        SetInlineSize(0);
        append(count, unit);
    }
    TextBuffer(const TextBuffer& other) {
        if (other.IsInline()) {
            std::memcpy(m_units, other.m_units, sizeof(m_units));
        } else {
            FillHeap(other.view());
        }
    }
    TextBuffer(TextBuffer&& other) noexcept {
        std::memcpy(m_units, other.m_units, sizeof(m_units));
        other.SetInlineSize(0);
    }
    TextBuffer& operator=(const TextBuffer& other) {
        if (this != &other) {
            assign(other.view());
        }
        return *this;
    }
    TextBuffer& operator=(TextBuffer&& other) noexcept {
        if (this != &other) {
            Free();
            std::memcpy(m_units, other.m_units, sizeof(m_units));
            other.SetInlineSize(0);
        }
        return *this;
    }
    ~TextBuffer() { Free(); }

    const char16_t* data() const noexcept { return IsInline() ? m_units : Heap().data; }
    char16_t* data() noexcept { return IsInline() ? m_units : Heap().data; }
    std::size_t size() const noexcept { return IsInline() ? m_units[kTag] : Heap().size; }
    std::size_t capacity() const noexcept { return IsInline() ? kInlineUnits : Heap().capacity; }
    bool empty() const noexcept { return size() == 0; }
    std::u16string_view view() const noexcept {
        return IsInline() ? std::u16string_view(m_units, m_units[kTag]) : std::u16string_view(Heap().data, Heap().size);
    }
    char16_t operator[](std::size_t position) const noexcept { return data()[position]; }

    void clear() noexcept { SetSize(0); }
    void reserve(std::size_t units) {
        if (units > capacity()) {
            Grow(units);
        }
    }
    // Gives back the room behind a long text, where that is worth it and works.
    void shrink_to_fit() noexcept;
    void resize(std::size_t units) {
        const std::size_t old = size();
        if (units > old) {
            std::fill_n(Extend(units - old), units - old, u'\0');
        }
        SetSize(units);
    }
    // The text may be a part of this one.
    void append(std::u16string_view text) {
        if (text.empty()) {
            return;  // its data may be null
        }
        if (text.size() > capacity() - size()) [[unlikely]] {
            AppendGrowing(text);
            return;
        }
        const std::size_t old = size();
        std::memmove(data() + old, text.data(), text.size() * sizeof(char16_t));
        SetSize(old + text.size());
    }
    void append(std::size_t count, char16_t unit) {
        std::fill_n(Extend(count), count, unit);
        SetSize(size() + count);
    }
    void push_back(char16_t unit) {
        *Extend(1) = unit;
        SetSize(size() + 1);
    }
    void assign(std::u16string_view text);
    void erase(std::size_t position, std::size_t count) noexcept;

    // Room for more units behind the text, not part of it yet; SetSize makes what was written there part of it.
    char16_t* Extend(std::size_t more) {
        const std::size_t old = size();
        if (more > capacity() - old) [[unlikely]] {
            GrowFor(more);
        }
        return data() + old;
    }

    // Requires: units <= capacity(), and all of them written.
    void SetSize(std::size_t units) noexcept {
        if (IsInline()) {
            SetInlineSize(units);
        } else {
            Heap().size = units;
            Heap().data[units] = u'\0';
        }
    }

private:
    struct HeapText {
        char16_t* data;
        std::size_t size;
        std::size_t capacity;
    };

    static constexpr std::size_t kTag = 15;  // the last unit: the size of a text in place, or kOnHeap
    static constexpr std::size_t kInlineUnits = 14;
    static constexpr char16_t kOnHeap = 0xFFFF;

    bool IsInline() const noexcept { return m_units[kTag] != kOnHeap; }
    void SetInlineSize(std::size_t units) noexcept {
        m_units[kTag] = static_cast<char16_t>(units);
        m_units[units] = u'\0';
    }
    HeapText& Heap() noexcept { return m_heap; }
    const HeapText& Heap() const noexcept { return m_heap; }

    // For constructors: the text is the first.
    void Fill(std::u16string_view text) {
        if (text.size() > kInlineUnits) {
            FillHeap(text);
            return;
        }
        if (!text.empty()) {  // its data may be null
            std::memcpy(m_units, text.data(), text.size() * sizeof(char16_t));
        }
        SetInlineSize(text.size());
    }
    void FillHeap(std::u16string_view text);
    void FillHeapByBlocks(std::u16string_view text);

    void Free() noexcept {
        if (!IsInline()) {
            FreeHeap();
        }
    }
    void FreeHeap() noexcept;
    void Grow(std::size_t units);
    void GrowFor(std::size_t more);
    void AppendGrowing(std::u16string_view text);

    // The tag lies behind what the heap form takes, and can be read in either form.
    union {
        char16_t m_units[16];
        HeapText m_heap;
    };
};

static_assert(sizeof(TextBuffer) == 32);

}  // namespace qvcore::detail

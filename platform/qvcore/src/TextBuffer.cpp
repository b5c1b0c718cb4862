#include <qvcore/TextBuffer.h>

#include <cstdlib>
#include <new>
#include <stdexcept>

#include <qvsys/BlockPool.h>
#include <qvsys/LargeBlocks.h>
#include <qvsys/LargePages.h>

namespace qvcore::detail {

namespace {

constexpr std::size_t kMaxUnits = static_cast<std::size_t>(-1) / (2 * sizeof(char16_t)) - 32;

// Memory comes in so many units.
constexpr std::size_t kBlockUnits = 16;

// Texts that are copied block by block: a call takes longer.
constexpr std::size_t kShortUnits = 64;

// Whole granules of the pool, so that what is allocated is used, with room for the NUL.
std::size_t RoundUp(std::size_t units) { return units / kBlockUnits * kBlockUnits + kBlockUnits - 1; }

std::size_t Bytes(std::size_t capacity) { return (capacity + 1) * sizeof(char16_t); }

// Large texts belong to the C library, whose realloc lengthens a block of many pages without copying it.
bool IsLarge(std::size_t capacity) { return Bytes(capacity) > qvsys::detail::kLargestKeptBlock; }

struct Units {
    char16_t* data;
    std::size_t capacity;
};

// For at least as many units as capacity tells, and for up to most where memory is kept.
Units Allocate(std::size_t capacity, std::size_t most) {
    if (!IsLarge(capacity)) {
        return {static_cast<char16_t*>(qvsys::detail::AllocateBlock(Bytes(capacity))), capacity};
    }
    const auto [memory, bytes] = qvsys::detail::AllocateLargeBlock(Bytes(capacity), Bytes(most));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return {static_cast<char16_t*>(memory), bytes / sizeof(char16_t) - 1};
}

char16_t* Reallocate(char16_t* data, std::size_t capacity) {
    void* const memory = std::realloc(data, Bytes(capacity));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    qvsys::detail::PreferLargePages(memory, Bytes(capacity));
    return static_cast<char16_t*>(memory);
}

// A block of many pages is lengthened without copying it; one of few pages can just as well be copied into a block that
// is kept.
bool IsLengthened(std::size_t capacity, std::size_t longer) {
    return IsLarge(capacity) &&
           (Bytes(capacity) >= qvsys::detail::kLeastLargeBlock || Bytes(longer) < qvsys::detail::kLeastLargeBlock);
}

}  // namespace

void TextBuffer::FreeHeap() noexcept {
    if (IsLarge(Heap().capacity)) {
        qvsys::detail::ReleaseLargeBlock(Heap().data, Bytes(Heap().capacity));
    } else {
        qvsys::detail::ReleaseBlock(Heap().data, Bytes(Heap().capacity));
    }
}

void TextBuffer::FillHeap(std::u16string_view text) {
    if (text.size() > kMaxUnits) {
        throw std::length_error("TString");
    }
    const auto [data, capacity] = Allocate(RoundUp(text.size()), RoundUp(text.size() + text.size() / 4));
    m_heap = HeapText{data, text.size(), capacity};
    m_units[kTag] = kOnHeap;
    std::memcpy(m_heap.data, text.data(), text.size() * sizeof(char16_t));
    m_heap.data[text.size()] = u'\0';
}

void TextBuffer::FillHeapByBlocks(std::u16string_view text) {
    if (text.size() > kShortUnits) {
        FillHeap(text);
        return;
    }
    const auto [data, capacity] = Allocate(RoundUp(text.size()), RoundUp(text.size()));
    m_heap = HeapText{data, text.size(), capacity};
    m_units[kTag] = kOnHeap;
    const char16_t* const from = text.data();
    for (std::size_t at = 0; at <= text.size(); at += kBlockUnits) {
        std::memcpy(data + at, from + at, kBlockUnits * sizeof(char16_t));
    }
    data[text.size()] = u'\0';
}

void TextBuffer::Grow(std::size_t units) {
    if (units > kMaxUnits) {
        throw std::length_error("TString");
    }
    const std::size_t size = this->size();
    if (!IsInline() && IsLengthened(Heap().capacity, RoundUp(units))) {
        m_heap.data = Reallocate(Heap().data, RoundUp(units));
        m_heap.capacity = RoundUp(units);
        return;
    }
    const auto [data, capacity] = Allocate(RoundUp(units), RoundUp(units + units / 4));
    std::memcpy(data, this->data(), size * sizeof(char16_t));
    Free();
    m_heap = HeapText{data, size, capacity};
    m_units[kTag] = kOnHeap;
    data[size] = u'\0';
}

void TextBuffer::shrink_to_fit() noexcept {
    const std::size_t capacity = RoundUp(size());
    if (IsInline() || !IsLarge(capacity) || capacity >= Heap().capacity) {
        return;
    }
    if (void* const data = std::realloc(Heap().data, Bytes(capacity)); data != nullptr) {
        m_heap.data = static_cast<char16_t*>(data);
        m_heap.capacity = capacity;
    }
}

void TextBuffer::GrowFor(std::size_t more) {
    if (more > kMaxUnits) {
        throw std::length_error("TString");
    }
    Grow(std::max(size() + more, 2 * capacity()));
}

void TextBuffer::AppendGrowing(std::u16string_view text) {
    // The text may be a part of this one, which moves.
    const bool inside = text.data() >= data() && text.data() <= data() + size();
    const auto offset = inside ? text.data() - data() : 0;
    GrowFor(text.size());
    append(inside ? std::u16string_view(data() + offset, text.size()) : text);
}

void TextBuffer::assign(std::u16string_view text) {
    if (text.size() > capacity()) {
        *this = TextBuffer(text);
        return;
    }
    if (!text.empty()) {  // the data of an empty one may be null
        std::memmove(data(), text.data(), text.size() * sizeof(char16_t));
    }
    SetSize(text.size());
}

void TextBuffer::erase(std::size_t position, std::size_t count) noexcept {
    char16_t* const at = data() + position;
    std::memmove(at, at + count, (size() - position - count) * sizeof(char16_t));
    SetSize(size() - count);
}

}  // namespace qvcore::detail

#include <qvcore/TextBuffer.h>

#include <cstdlib>
#include <new>
#include <stdexcept>

#include <qvsys/BlockPool.h>
#include <qvsys/LargePages.h>

namespace qvcore::detail {

namespace {

constexpr std::size_t kMaxUnits = static_cast<std::size_t>(-1) / (2 * sizeof(char16_t)) - 32;

// Whole granules of the pool, so that what is allocated is used, with room for the NUL.
std::size_t RoundUp(std::size_t units) { return units / 16 * 16 + 15; }

std::size_t Bytes(std::size_t capacity) { return (capacity + 1) * sizeof(char16_t); }

// Large texts belong to realloc, which lengthens a block of many pages without copying it.
bool IsLarge(std::size_t capacity) { return Bytes(capacity) > qvsys::detail::kLargestKeptBlock; }

// What the C library answered for a text of that capacity.
char16_t* OrThrow(void* block, std::size_t capacity) {
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    qvsys::detail::PreferLargePages(block, Bytes(capacity));
    return static_cast<char16_t*>(block);
}

char16_t* Allocate(std::size_t capacity) {
    return IsLarge(capacity) ? OrThrow(std::malloc(Bytes(capacity)), capacity)
                             : static_cast<char16_t*>(qvsys::detail::AllocateBlock(Bytes(capacity)));
}

}  // namespace

void TextBuffer::FreeHeap() noexcept {
    if (IsLarge(Heap().capacity)) {
        std::free(Heap().data);
    } else {
        qvsys::detail::ReleaseBlock(Heap().data, Bytes(Heap().capacity));
    }
}

void TextBuffer::FillHeap(std::u16string_view text) {
    if (text.size() > kMaxUnits) {
        throw std::length_error("TString");
    }
    const std::size_t capacity = RoundUp(text.size());
    m_heap = HeapText{Allocate(capacity), text.size(), capacity};
    m_units[kTag] = kOnHeap;
    std::memcpy(m_heap.data, text.data(), text.size() * sizeof(char16_t));
    m_heap.data[text.size()] = u'\0';
}

void TextBuffer::Grow(std::size_t units) {
    if (units > kMaxUnits) {
        throw std::length_error("TString");
    }
    const std::size_t size = this->size();
    const std::size_t capacity = RoundUp(units);
    if (!IsInline() && IsLarge(Heap().capacity)) {
        m_heap.data = OrThrow(std::realloc(Heap().data, Bytes(capacity)), capacity);
        m_heap.capacity = capacity;
        return;
    }
    char16_t* const data = Allocate(capacity);
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

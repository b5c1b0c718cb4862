// Strings into a text, escaped while they are copied. Included by DirectWriter.cpp.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "main/json/PlainUnits.h"
#include "main/json/direct/TextSink.h"

// Appends text, escaped as AppendEscaped does it, to sink.
void CopyEscaped(TextSink& sink, std::u16string_view text);

// The same between quotation marks, at to in room of the sink for the first one.
void PutEscaped(TextSink& sink, char16_t* to, std::u16string_view text);

// The last units of a text, fewer than eight or as many as there are, one by one.
inline char16_t* CopyFew(char16_t* to, const char16_t* at, const char16_t* end) {
    for (; at != end; ++at) {
        if (!IsPlainUnit(*at)) {
            return nullptr;
        }
        *to++ = *at;
    }
    return to;
}

// Writes text between quotation marks, at to in room for text.size() + 2 * kCopySlack units; answers null, with nothing
// accepted, when the text needs an escape, which is for CopyEscaped to give.
//
// Copies first and looks afterwards: what is not plain is rare, and the block is in a register already. The last block
// overlaps the one before.
inline char16_t* CopyQuoted(char16_t* to, std::u16string_view text) {
    const std::size_t size = text.size();
    const char16_t* const from = text.data();
    *to++ = u'"';
#if defined(__SSE2__)
    unsigned special = 0;
    if (size >= 8) {
        const auto copy = [&](std::size_t at) {
            const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + at));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + at), units);
            special |= SpecialUnits(units);
        };
        for (std::size_t at = 0; at + 8 < size; at += 8) {
            copy(at);
        }
        copy(size - 8);
    } else if (size >= 4) {
        const __m128i units = _mm_unpacklo_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)),
                                                 _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from + size - 4)));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), units);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to + size - 4), _mm_unpackhi_epi64(units, units));
        special = SpecialUnits(units);
    } else {
        special = CopyFew(to, from, from + size) == nullptr ? 1 : 0;
    }
    if (special != 0) {
        return nullptr;
    }
    to += size;
#else
    to = CopyFew(to, from, from + size);
    if (to == nullptr) {
        return nullptr;
    }
#endif
    *to++ = u'"';
    return to;
}

// Copies a text that needs no escape, at to in room for text.size() + kCopySlack units. Short ones in as many steps
// whatever their size is: jumps that depend on it are hard to foretell.
inline char16_t* CopyPlain(char16_t* to, std::u16string_view text) {
    const std::size_t size = text.size();
    const char16_t* const from = text.data();
    if (size - 4 <= 12) [[likely]] {
        for (const std::size_t at :
             {std::size_t{0}, std::min<std::size_t>(4, size - 4), std::min<std::size_t>(8, size - 4), size - 4}) {
            std::memcpy(to + at, from + at, 4 * sizeof(char16_t));
        }
    } else {
        std::memcpy(to, from, size * sizeof(char16_t));
    }
    return to + size;
}

#if defined(__SSE2__)

// As CopyQuoted, for a TString in room for size + 1 + 2 * kCopySlack units. In blocks of sixteen, whatever the size is:
// the memory of a TString goes on to the end of one.
inline char16_t* CopyQuotedBlocks(char16_t* to, std::u16string_view text) {
    const std::size_t size = text.size();
    *to++ = u'"';
    const auto copy = [from = text.data(), to](std::size_t at) {
        const __m128i first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + at));
        const __m128i second = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + at + 8));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + at), first);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + at + 8), second);
        return SpecialUnits(first, second);
    };
    unsigned special = 0;
    std::size_t at = 0;
    for (; at + 16 <= size; at += 16) {
        special |= copy(at);
    }
    special |= copy(at) & ((1u << (size - at)) - 1);
    if (special != 0) [[unlikely]] {
        return nullptr;
    }
    to += size;
    *to++ = u'"';
    return to;
}

#else

inline char16_t* CopyQuotedBlocks(char16_t* to, std::u16string_view text) { return CopyQuoted(to, text); }

#endif

// Text between quotation marks, whatever it holds, at to in that room of the sink.
inline void PutQuoted(TextSink& sink, char16_t* to, std::u16string_view text) {
    if (char16_t* const end = CopyQuoted(to, text); end != nullptr) [[likely]] {
        sink.Accept(end);
    } else {
        PutEscaped(sink, to, text);
    }
}

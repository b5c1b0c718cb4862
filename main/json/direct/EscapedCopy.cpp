#include "main/json/direct/EscapedCopy.h"

#include <algorithm>

#include "main/json/JSONEscaping.h"
#include "main/json/PlainUnits.h"

namespace {

// The last units of a text, fewer than eight or as many as there are, one by one.
char16_t* CopyFew(char16_t* to, const char16_t* at, const char16_t* end) {
    for (; at != end; ++at) {
        if (!IsPlainUnit(*at)) {
            return nullptr;
        }
        *to++ = *at;
    }
    return to;
}

}  // namespace

// Copies first and looks afterwards: what is not plain is rare, and the block is in a register already. The last block
// overlaps the one before.
char16_t* CopyQuoted(char16_t* to, std::u16string_view text) {
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

void CopyEscaped(TextSink& sink, std::u16string_view text) {
    sink.Flush();
    AppendEscaped(sink.Text(), text);
    sink.Reload();
}

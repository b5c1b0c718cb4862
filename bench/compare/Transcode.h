// UTF-16 to UTF-8 and back for the peers that need it: blocks of 16 ASCII units at once, the rest one by one. It is
// meant to be fast, so that no peer is slowed by its conversion. Texts are well-formed.
#pragma once

#include <emmintrin.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace compare {

namespace detail {

inline constexpr std::ptrdiff_t kBlock = 16;

inline __m128i Load(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }
inline void Store(void* to, __m128i value) { _mm_storeu_si128(static_cast<__m128i*>(to), value); }

inline bool IsAsciiBlock(__m128i low, __m128i high) {
    const __m128i beyond = _mm_and_si128(_mm_or_si128(low, high), _mm_set1_epi16(static_cast<short>(0xFF80)));
    return _mm_movemask_epi8(_mm_cmpeq_epi16(beyond, _mm_setzero_si128())) == 0xFFFF;
}

inline char* PutTail(char* out, std::uint32_t code, int shift) {
    for (; shift >= 0; shift -= 6) {
        *out++ = static_cast<char>(0x80U | (code >> shift & 0x3FU));
    }
    return out;
}

// Writes one character and moves in behind it.
inline char* PutUtf8(const char16_t*& in, char* out) {
    std::uint32_t code = *in++;
    if (code < 0x80) {
        *out++ = static_cast<char>(code);
        return out;
    }
    if (code < 0x800) {
        *out++ = static_cast<char>(0xC0U | code >> 6U);
        return PutTail(out, code, 0);
    }
    if (code < 0xD800 || code > 0xDBFF) {
        *out++ = static_cast<char>(0xE0U | code >> 12U);
        return PutTail(out, code, 6);
    }
    code = 0x10000 + ((code - 0xD800) << 10U) + (static_cast<std::uint32_t>(*in++) - 0xDC00);
    *out++ = static_cast<char>(0xF0U | code >> 18U);
    return PutTail(out, code, 12);
}

inline char16_t* PutUtf16(const char*& in, char16_t* out) {
    const auto lead = static_cast<unsigned char>(*in++);
    if (lead < 0x80) {
        *out++ = lead;
        return out;
    }
    const int tail = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    std::uint32_t code = lead & (0x3FU >> tail);
    for (int i = 0; i < tail; ++i) {
        code = code << 6U | (static_cast<unsigned char>(*in++) & 0x3FU);
    }
    if (code < 0x10000) {
        *out++ = static_cast<char16_t>(code);
        return out;
    }
    *out++ = static_cast<char16_t>(0xD7C0 + (code >> 10U));
    *out++ = static_cast<char16_t>(0xDC00 + (code & 0x3FFU));
    return out;
}

}  // namespace detail

// The most bytes that a text of so many units takes.
inline constexpr std::size_t GetUtf8Room(std::size_t units) { return units * 3; }

// Writes to out, which has GetUtf8Room; answers the number of bytes.
inline std::size_t ToUtf8(std::u16string_view text, char* out) {
    const char16_t* in = text.data();
    const char16_t* const end = in + text.size();
    char* at = out;
    while (in < end) {
        for (; end - in >= detail::kBlock; in += detail::kBlock, at += detail::kBlock) {
            const __m128i low = detail::Load(in);
            const __m128i high = detail::Load(in + 8);
            if (!detail::IsAsciiBlock(low, high)) {
                break;
            }
            detail::Store(at, _mm_packus_epi16(low, high));
        }
        const char16_t* const stop = in + std::min(detail::kBlock, end - in);
        while (in < stop) {
            at = detail::PutUtf8(in, at);
        }
    }
    return static_cast<std::size_t>(at - out);
}

inline std::u16string ToUtf16(std::string_view utf8) {
    std::u16string text(utf8.size(), u'\0');
    const char* in = utf8.data();
    const char* const end = in + utf8.size();
    char16_t* at = text.data();
    while (in < end) {
        for (; end - in >= detail::kBlock; in += detail::kBlock, at += detail::kBlock) {
            const __m128i block = detail::Load(in);
            if (_mm_movemask_epi8(block) != 0) {
                break;
            }
            detail::Store(at, _mm_unpacklo_epi8(block, _mm_setzero_si128()));
            detail::Store(at + 8, _mm_unpackhi_epi8(block, _mm_setzero_si128()));
        }
        const char* const stop = in + std::min(detail::kBlock, end - in);
        while (in < stop) {
            at = detail::PutUtf16(in, at);
        }
    }
    text.resize(static_cast<std::size_t>(at - text.data()));
    return text;
}

// A buffer for UTF-8 that is kept between calls, as an application in a hurry would. The view is valid until the next
// call; behind it there is room for so many bytes more as padding asks for.
class Utf8Buffer {
public:
    std::string_view Convert(std::u16string_view text, std::size_t padding = 0) {
        const std::size_t room = GetUtf8Room(text.size()) + padding;
        if (m_bytes.size() < room) {
            m_bytes.resize(room);
        }
        return {m_bytes.data(), ToUtf8(text, m_bytes.data())};
    }
    void Release() { std::string().swap(m_bytes); }  // an assignment would keep the memory

private:
    std::string m_bytes;
};

}  // namespace compare

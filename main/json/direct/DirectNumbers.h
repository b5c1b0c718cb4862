// Lists of numbers into a text. Included by DirectWriter.cpp.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

#include <qvpreslayer/detail/NumberText.h>
#include <qvpreslayer/detail/RunPieces.h>

#include "main/json/direct/TextSink.h"

template <class T>
inline constexpr std::size_t kLongestNumber =
    std::is_floating_point_v<T> ? qvpreslayer::detail::kLongestReal : qvpreslayer::detail::kLongestInteger;

template <class T>
char16_t* WriteNumberText(char16_t* to, const T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        // Without a branch: truth is hard to foretell.
        static constexpr char16_t kWords[2][9] = {u"false\0\0\0", u"true\0\0\0\0"};
        std::memcpy(to, kWords[value ? 1 : 0], 8 * sizeof(char16_t));
        return to + (value ? 4 : 5);
    } else if constexpr (std::is_floating_point_v<T>) {
        return qvpreslayer::detail::WriteReal(to, value);
    } else {
        return qvpreslayer::detail::WriteInteger(to, value);
    }
}

// Integers one after the other, of which most differ from the one before in their last four digits alone: the digits
// before these are copied then.
template <class T>
class NearIntegers {
public:
    // Whether it pays for these, as far as a few of them tell.
    static bool Are(const T* at, const T* end) {
        constexpr std::ptrdiff_t kSamples = 4;
        const std::ptrdiff_t distance = (end - at) / kSamples;
        unsigned near = 0;
        for (std::ptrdiff_t i = 0; distance > 1 && i < kSamples; ++i) {
            const T* const sample = at + i * distance;
            near += static_cast<Magnitude>(sample[1]) - static_cast<Magnitude>(sample[0]) + kTail / 2 < kTail ? 1 : 0;
        }
        return near >= kSamples - 1;
    }

    char16_t* Write(char16_t* to, T value) {
        auto magnitude = static_cast<Magnitude>(value);
        if (value < 0) [[unlikely]] {
            *to++ = u'-';
            magnitude = 0 - magnitude;
        }
        if (magnitude - kTail >= kTail * kTail - kTail) {
            return qvpreslayer::detail::WriteInteger(to, magnitude);
        }
        const auto number = static_cast<std::uint32_t>(magnitude);
        if (number - m_headValue >= kTail) [[unlikely]] {
            m_headValue = number / kTail * kTail;
            m_headSize =
                static_cast<std::size_t>(qvpreslayer::detail::WriteUpToFourDigits(m_head, number / kTail) - m_head);
        }
        std::memcpy(to, m_head, sizeof(m_head));
        return qvpreslayer::detail::WriteFourDigits(to + m_headSize, number - m_headValue);
    }

private:
    using Magnitude = std::conditional_t<sizeof(T) == 8, UInt64, std::uint32_t>;

    static constexpr std::uint32_t kTail = 10000;

    std::uint32_t m_headValue = 0;  // none yet: less than has such digits
    std::size_t m_headSize = 0;
    char16_t m_head[4] = {};
};

// Elements with commas between them. Neighbours are often equal in columns of reals, whose texts take longest: the last
// text is copied then.
template <class T>
class NumberList {
public:
    explicit NumberList(TextSink& sink) : m_sink(sink) {}

    void Write(const std::vector<T>& values) {
        if (values.size() > kMany) {
            m_sink.Room(EstimateText(values));
        }
        for (std::size_t i = 0; i < values.size(); i += kBlock) {
            WriteBlock(values.data() + i, values.data() + std::min(values.size(), i + kBlock), i == 0);
        }
    }

private:
    // One question for room serves a block of elements; reals are long only in theory, so that theirs are smaller.
    static constexpr std::size_t kBlock = std::is_floating_point_v<T> ? 64 : 128;
    static constexpr std::size_t kMany = 8 * kBlock;
    static constexpr std::size_t kUsualText = 24;  // what a number hardly ever exceeds

    // What all elements take, as far as every so-manieth tells: growing a large text step by step costs more than
    // writing it.
    static std::size_t EstimateText(const std::vector<T>& values) {
        constexpr std::size_t kSamples = 64;
        char16_t text[kLongestNumber<T>];
        std::size_t units = 0;
        for (std::size_t i = 0; i < kSamples; ++i) {
            const auto end = WriteNumberText(text, values[values.size() / kSamples * i]);
            units += std::min(static_cast<std::size_t>(end - text) + 1, kUsualText);
        }
        return values.size() / kSamples * (units + kSamples / 4);
    }

    void WriteBlock(const T* at, const T* end, bool first) {
        char16_t* to = m_sink.Room(static_cast<std::size_t>(end - at) * (kLongestNumber<T> + 1 + kCopySlack));
        if constexpr (std::is_integral_v<T>) {
            if (NearIntegers<T>::Are(at, end)) {
                m_sink.Accept(WriteNearIntegers(to, at, end, first));
                return;
            }
        }
        // The last element that was not copied from one before. Its text, not that of a copy: processors are slow to
        // read what they have just written in other pieces.
        [[maybe_unused]] const T* last = at;
        [[maybe_unused]] const char16_t* lastText = nullptr;
        [[maybe_unused]] std::size_t lastSize = kRepeated + 1;
        for (; at != end; ++at) {
            *to = u',';
            to += first ? 0 : 1;
            first = false;
            if constexpr (std::is_floating_point_v<T>) {
                if (lastSize <= kRepeated && IsSame(at[0], *last)) {
                    char16_t copy[kRepeated];  // source and target may overlap
                    std::memcpy(copy, lastText, sizeof(copy));
                    std::memcpy(to, copy, sizeof(copy));
                    to += lastSize;
                    continue;
                }
                last = at;
                lastText = to;
                to = WriteNumberText(to, *at);
                lastSize = static_cast<std::size_t>(to - lastText);
            } else {
                to = WriteNumberText(to, *at);
            }
        }
        m_sink.Accept(to);
    }

    static char16_t* WriteNearIntegers(char16_t* to, const T* at, const T* end, bool first) {
        NearIntegers<T> texts;
        if (!first) {
            *to++ = u',';
        }
        to = texts.Write(to, *at);
        while (++at != end) {
            *to++ = u',';
            to = texts.Write(to, *at);
        }
        return to;
    }

    static constexpr std::size_t kRepeated = 24;

    static bool IsSame(T left, T right) {
        using Bits = std::conditional_t<sizeof(T) == 8, std::uint64_t, std::uint32_t>;
        return std::bit_cast<Bits>(left) == std::bit_cast<Bits>(right);
    }

    TextSink& m_sink;
};

// Packed elements, as the output of RunPieces.
template <class T>
class PackedElements {
public:
    explicit PackedElements(TextSink& sink) : m_sink(sink) {}

    void Plain(T value, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            m_sink.Accept(WriteNumberText(Next(kLongestNumber<T>), value));
        }
    }

    void Nested(const qvpreslayer::detail::Run<T>& run) {
        char16_t* to = Next(kLongestNumber<T> + 2 * qvpreslayer::detail::kLongestInteger + 4);
        *to++ = u'[';
        to = WriteNumberText(to, run.first);
        *to++ = u',';
        to = WriteShortNumber(to, run.length);
        if constexpr (std::is_integral_v<T>) {
            if (run.step != 0) {
                to[0] = u',';
                to[1] = u'-';
                to = WriteShortNumber(to + (run.descending ? 2 : 1), run.step);
            }
        }
        *to++ = u']';
        m_sink.Accept(to);
    }

    void Marker() {
        char16_t* const to = Next(2);
        m_sink.Accept(CopyUnits(to, u"[]"));
    }

private:
    // Lengths and steps have four digits at the most, as a rule.
    template <class Magnitude>
    static char16_t* WriteShortNumber(char16_t* to, Magnitude magnitude) {
        return magnitude <= 9999 ? qvpreslayer::detail::WriteUpToFourDigits(to, static_cast<std::uint32_t>(magnitude))
                                 : WriteNumberText(to, static_cast<UInt64>(magnitude));
    }

    // Room for the next element, behind its comma.
    char16_t* Next(std::size_t units) {
        char16_t* to = m_sink.Room(units + 1);
        if (!m_first) {
            *to++ = u',';
        }
        m_first = false;
        return to;
    }

    TextSink& m_sink;
    bool m_first = true;
};

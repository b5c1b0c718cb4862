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
        return value ? CopyUnits(to, u"true") : CopyUnits(to, u"false");
    } else if constexpr (std::is_floating_point_v<T>) {
        return qvpreslayer::detail::WriteReal(to, value);
    } else {
        return qvpreslayer::detail::WriteInteger(to, value);
    }
}

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

    template <class Step>
    void Nested(T first, unsigned int length, const Step* step) {
        char16_t* to = Next(kLongestNumber<T> + 2 * qvpreslayer::detail::kLongestInteger + 4);
        *to++ = u'[';
        to = WriteNumberText(to, first);
        *to++ = u',';
        to = WriteNumberText(to, length);
        if constexpr (std::is_integral_v<Step>) {
            if (step != nullptr) {
                *to++ = u',';
                to = WriteNumberText(to, *step);
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

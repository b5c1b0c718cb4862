// The input of a fuzz target, and how a target fails. Included by all targets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include <qvcore/TString.h>

#include "support/Printing.h"

namespace fuzz {

// A promise that does not hold ends the program, so that the fuzzer keeps the input.
[[noreturn]] inline void Fail(const std::string& what) {
    std::fprintf(stderr, "fuzz: does not hold: %s\n", what.c_str());
    std::abort();
}

inline void Require(bool holds, const char* what) {
    if (!holds) {
        Fail(what);
    }
}

inline std::string Shown(const TString& text) { return printing::ToPrintable(text); }
inline std::string Shown(const std::string& text) { return text; }

template <class Text>
void RequireEqual(const Text& expected, const Text& got, const char* what) {
    if (!(expected == got)) {
        Fail(std::string(what) + "\n  expected: " + Shown(expected) + "\n  got:      " + Shown(got));
    }
}

// An input, taken from its start; 0 stands for everything behind its end, so that every input is a whole one.
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : m_rest(reinterpret_cast<const char*>(data), size) {}

    bool AtEnd() const { return m_rest.empty(); }

    std::uint8_t Byte() {
        if (m_rest.empty()) {
            return 0;
        }
        const auto byte = static_cast<std::uint8_t>(m_rest.front());
        m_rest.remove_prefix(1);
        return byte;
    }

    // Settings stand at the end, where they do not move when a text before them grows.
    std::uint8_t LastByte() {
        if (m_rest.empty()) {
            return 0;
        }
        const auto byte = static_cast<std::uint8_t>(m_rest.back());
        m_rest.remove_suffix(1);
        return byte;
    }

    std::string_view Rest() { return std::exchange(m_rest, {}); }

    // Requires: count is 1 to 256.
    std::size_t Below(std::size_t count) { return Byte() % count; }
    bool Coin() { return Byte() % 2 != 0; }

    template <class Choices>
    const auto& Of(const Choices& choices) {
        return std::data(choices)[Below(std::size(choices))];
    }

    // The bytes as they are, least significant first.
    template <class T>
    T Raw() {
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i) {
            bits |= std::uint64_t{Byte()} << (8 * i);
        }
        T value;
        std::memcpy(&value, &bits, sizeof(T));  // little-endian machines are all that we run on
        return value;
    }

    // A text of up to most units, any of them: a byte for those of Latin-1 below U+00C0, two for all from U+C000 on,
    // where the surrogates are.
    TString Text(std::size_t most) {
        TString text;
        for (std::size_t count = Below(most + 1); count > 0 && !AtEnd(); --count) {
            const unsigned byte = Byte();
            text.push_back(static_cast<char16_t>(byte < 0xC0 ? byte : byte << 8 | Byte()));
        }
        return text;
    }

    // All that is left as one text: UTF-8, or else its units, low byte first.
    TString RestAsText(bool utf8) {
        if (utf8) {
            return TString::FromUtf8(Rest());
        }
        TString text;
        while (!AtEnd()) {
            const unsigned low = Byte();
            text.push_back(static_cast<char16_t>(low | unsigned{Byte()} << 8));
        }
        return text;
    }

private:
    std::string_view m_rest;
};

}  // namespace fuzz

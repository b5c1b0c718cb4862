// Hashing of parameter names. Included by EagerParametersNamespace.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Names share long beginnings and differ near the end, or the other way round: four units at the start, four at the end
// and the length tell nearly all apart, at the same cost for any length. The rest settles in the comparison; the table
// holds registered names only, so that no text from outside can fill it with equal hashes.
struct NameHash {
    using is_transparent = void;
    using is_avalanching = void;

    std::size_t operator()(std::u16string_view name) const noexcept {
        std::uint64_t head = 0;
        std::uint64_t middle = 0;
        std::uint64_t tail = 0;
        const std::size_t size = name.size();
        if (size >= 4) {
            std::memcpy(&head, name.data(), sizeof(head));
            std::memcpy(&middle, name.data() + size / 2 - 2, sizeof(middle));
            std::memcpy(&tail, name.data() + size - 4, sizeof(tail));
        } else {
            std::memcpy(&head, name.data(), size * sizeof(char16_t));
        }
        return Mix(Mix(head ^ 0x9E3779B97F4A7C15u, middle + size), tail ^ 0xBF58476D1CE4E5B9u);
    }

private:
    // Two multiplications, so that every bit of both words reaches every bit of the result.
    static std::uint64_t Mix(std::uint64_t left, std::uint64_t right) noexcept {
        std::uint64_t mixed = (left ^ (left >> 32)) * 0xD6E8FEB86659FD93u + right;
        mixed ^= mixed >> 29;
        mixed *= 0xBF58476D1CE4E5B9u;
        return mixed ^ (mixed >> 32);
    }
};

struct NameEqual {
    using is_transparent = void;
    bool operator()(std::u16string_view left, std::u16string_view right) const noexcept {
        return left.size() == right.size() &&
               (left.empty() || std::memcmp(left.data(), right.data(), left.size() * sizeof(char16_t)) == 0);
    }
};

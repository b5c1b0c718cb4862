#include "tools/qvpres/text/Wording.h"

#include <array>
#include <charconv>
#include <cmath>

#include <nlohmann/json.hpp>

namespace qvpres {

namespace {

constexpr std::string_view kEllipsis = "…";

bool StartsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0u) != 0x80u; }

template <class T>
std::string Digits(T number) {
    std::array<char, 64> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), result.ptr};
}

}  // namespace

std::string Grouped(std::uint64_t number) {
    std::string digits = Digits(number);
    for (std::size_t at = digits.size(); at > 3;) {
        at -= 3;
        digits.insert(at, 1, ',');
    }
    return digits;
}

std::string Counted(std::uint64_t number, std::string_view word) {
    return Grouped(number) + " " + std::string(word) + (number == 1 ? "" : "s");
}

std::string NumberText(long double number) {
    constexpr long double kTwoTo63 = 9223372036854775808.0L;
    if (number == std::floor(number) && number < 2 * kTwoTo63 && number >= -kTwoTo63) {
        return number < 0 ? Digits(static_cast<std::int64_t>(number)) : Digits(static_cast<std::uint64_t>(number));
    }
    return Digits(static_cast<double>(number));
}

std::string Percent(std::uint64_t part, std::uint64_t whole) {
    const double share = whole == 0 ? 0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole);
    std::array<char, 32> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), share, std::chars_format::fixed, 1);
    return std::string(buffer.data(), result.ptr) + " %";
}

std::string Visible(std::string_view utf8) {
    std::string visible;
    const auto escape = [&](unsigned char code) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        visible += "\\u00";
        visible += kDigits[code / 16];
        visible += kDigits[code % 16];
    };
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const auto next = i + 1 < utf8.size() ? static_cast<unsigned char>(utf8[i + 1]) : 0u;
        if (byte < 0x20 || byte == 0x7F) {
            escape(byte);
        } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {  // U+0080 to U+009F
            escape(static_cast<unsigned char>(next));
            ++i;
        } else {
            visible += utf8[i];
        }
    }
    return visible;
}

std::string Quoted(std::string_view utf8) {
    return Visible(nlohmann::json(utf8).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

std::size_t Width(std::string_view utf8) {
    std::size_t count = 0;
    for (const char byte : utf8) {
        count += StartsCharacter(byte) ? 1 : 0;
    }
    return count;
}

std::string Padded(std::string_view utf8, std::size_t width) {
    const std::size_t own = Width(utf8);
    return std::string(utf8) + std::string(own < width ? width - own : 0, ' ');
}

std::string PaddedLeft(std::string_view utf8, std::size_t width) {
    const std::size_t own = Width(utf8);
    return std::string(own < width ? width - own : 0, ' ') + std::string(utf8);
}

std::string Shortened(std::string_view utf8, std::size_t width) {
    std::size_t characters = 0;
    std::size_t cut = 0;  // where the last character that leaves room for the mark ends
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        if (!StartsCharacter(utf8[at])) {
            continue;
        }
        if (characters + 1 == width) {
            cut = at;
        }
        if (++characters > width) {
            return std::string(utf8.substr(0, cut)) + std::string(kEllipsis);
        }
    }
    return std::string(utf8);
}

std::string_view KindName(JSONKind kind) {
    constexpr std::array<std::string_view, 7> kNames = {"object", "array", "string", "bool", "integer", "real", "null"};
    return kNames.at(static_cast<std::size_t>(kind));
}

std::string_view KindName(ParameterTypeCategory kind) {
    constexpr std::array<std::string_view, 10> kNames = {
        "none", "text", "number", "bool", "list", "bag", "structure", "structure list", "map", "structure map"};
    return kNames.at(static_cast<std::size_t>(kind));
}

std::string TypeName(const ParameterDeclaration& declaration) {
    const std::string type = declaration.type == nullptr ? "" : ToUtf8(declaration.type->name);
    switch (declaration.kind) {
        case DeclaredKind::Value:
            return type;
        case DeclaredKind::List:
            return "list of " + type;
        case DeclaredKind::Map:
            return "map of " + type;
        case DeclaredKind::Bag:
            return "bag";
        case DeclaredKind::Structure:
            return "structure";
        case DeclaredKind::StructureList:
            return "structure list";
        default:
            return "structure map";
    }
}

}  // namespace qvpres

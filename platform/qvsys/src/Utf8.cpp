#include <qvsys/Utf8.h>

#include <iterator>

#include <utf8.h>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsLead(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsTrail(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

std::string ToUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t codePoint = text[i];
        if (IsLead(text[i]) && i + 1 < text.size() && IsTrail(text[i + 1])) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (text[++i] - 0xDC00u);
        } else if (IsLead(text[i]) || IsTrail(text[i])) {
            codePoint = kReplacement;
        }
        utf8::append(codePoint, std::back_inserter(result));
    }
    return result;
}

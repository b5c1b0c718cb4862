#include "tools/qvpres/report/ReportPage.h"

#include <kainjow/mustache.hpp>

#include "tools/qvpres/Failure.h"
#include "tools/qvpres/report/PageParts.h"

namespace qvpres {

namespace {

// U+2028 and U+2029 in UTF-8, but for their last byte.
constexpr std::string_view kSeparatorStart = "\xE2\x80";

}  // namespace

std::string EmbeddableJSON(const nlohmann::ordered_json& data) {
    const std::string json = data.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    std::string safe;
    safe.reserve(json.size() + json.size() / 16);
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        // All of these stand inside strings only.
        if (c == '<') {
            safe += "\\u003c";
        } else if (c == '>') {
            safe += "\\u003e";
        } else if (c == '&') {
            safe += "\\u0026";
        } else if (json.compare(i, 2, kSeparatorStart) == 0 && (json[i + 2] == '\xA8' || json[i + 2] == '\xA9')) {
            safe += json[i + 2] == '\xA8' ? "\\u2028" : "\\u2029";
            i += 2;
        } else {
            safe += c;
        }
    }
    return safe;
}

std::string MakeReportPage(const nlohmann::ordered_json& data) {
    kainjow::mustache::mustache page{std::string(kPart_page_mustache)};
    if (!page.is_valid()) {
        throw Failure("the template of the page: " + page.error_message());
    }
    kainjow::mustache::data parts;
    parts.set("title", data.at("title").get<std::string>());
    parts.set("version", QVPRES_VERSION);
    parts.set("style", std::string(kPart_page_css));
    parts.set("script", std::string(kPart_page_js));
    parts.set("data", EmbeddableJSON(data));
    return page.render(parts);
}

}  // namespace qvpres

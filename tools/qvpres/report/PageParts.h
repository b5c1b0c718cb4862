// The parts of the report's page, as the files of the folder page have them; the build makes texts of them.
#pragma once

#include <string_view>

namespace qvpres {

extern const std::string_view kPart_page_mustache;  // the page around the others
extern const std::string_view kPart_page_css;
extern const std::string_view kPart_page_js;

}  // namespace qvpres

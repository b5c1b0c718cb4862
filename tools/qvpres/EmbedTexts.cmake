# cmake -D OUTPUT=file.cpp -D PARTS=a.css;b.js -P EmbedTexts.cmake: a source with one text for each file.
#
# Raw string literals have a limit of length, so that each text is a sequence of them, a line each.
set(code "// Made by the build from the files of tools/qvpres/report/page.\n#include \"tools/qvpres/report/PageParts.h\"\n\nnamespace qvpres {\n\n")
foreach(part IN LISTS PARTS)
    get_filename_component(name ${part} NAME)
    string(MAKE_C_IDENTIFIER ${name} identifier)
    file(READ ${part} text)
    string(REGEX REPLACE "([\\\\\"?])" "\\\\\\1" text "${text}")
    string(REPLACE "\n" "\\n\"\n    \"" text "${text}")
    string(APPEND code "const std::string_view kPart_${identifier} =\n    \"${text}\";\n\n")
endforeach()
string(APPEND code "}  // namespace qvpres\n")
file(WRITE ${OUTPUT} "${code}")

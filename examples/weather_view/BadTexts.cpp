#include "BadTexts.h"

#include "ViewHost.h"
#include "WeatherVocabulary.h"

namespace weather {

namespace {

// Reads text, which must fail with Expected. Every failure is a std::exception; those that carry a place in the text
// derive from TextLocated as well.
template <class Expected>
BadText Read(const std::string& what, const TString& text) {
    try {
        JSONSerializer(kViewNamespace).ToParameters(text);
    } catch (const Expected& failure) {
        return {what, failure.what(), failure.GetLocation(), true};
    } catch (const std::exception& failure) {
        return {what, failure.what(), {}, false};
    }
    return {what, "was read without complaint", {}, false};
}

}  // namespace

std::vector<BadText> ReadBadTexts(const TString& goodText) {
    const ViewSession session(false, false);
    return {
        Read<ParameterNotFoundException>("an unknown name", L"{\n  \"title\": \"Rain\",\n  \"sytle\": {}\n}"),
        Read<JSONParseException>("a wrong kind", L"{\n  \"style\": {\n    \"font\": [\"Serif\"]\n  }\n}"),
        Read<ParameterParseException>("no number", L"{\n  \"dayCount\": \"many\"\n}"),
        Read<JSONParseException>("a cut-off text", goodText.left(goodText.length() / 2)),
    };
}

}  // namespace weather

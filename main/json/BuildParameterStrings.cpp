#include <qvpreslayer/BuildParameterStrings.h>

#include <limits>
#include <utility>

#include <qvcore/CaseConversion.h>

#include <qvpreslayer/ParametersRegistry.h>

#include "main/json/JSONEscaping.h"

namespace {

// What follows from the form of the text.
struct Switches {
    bool pretty;
    bool quoteNames;
    bool outerBraces;
    bool suppressFirstName;
    bool camelCaseNames;
};

// For any value, also one that the enumeration does not name.
constexpr Switches SwitchesOf(JSONSerializer::OutputType type) {
    const bool bare = type == JSONSerializer::Bare || type == JSONSerializer::BareRawNames;
    return {.pretty = type == JSONSerializer::Pretty,
            .quoteNames = type != JSONSerializer::UnquotedNames,
            .outerBraces = !bare,
            .suppressFirstName = bare,
            .camelCaseNames = type != JSONSerializer::BareRawNames};
}

constexpr std::uint32_t kNotRecorded = std::numeric_limits<std::uint32_t>::max();

}  // namespace

BuildParameterStrings::BuildParameterStrings(TString& out, JSONSerializer::OutputType type, bool captureEnabled,
                                             bool nestedCapture, bool shortNames)
    : m_pretty(SwitchesOf(type).pretty),
      m_prettyConfigured(m_pretty),
      m_quoteNames(SwitchesOf(type).quoteNames),
      m_omitOuterBraces(!SwitchesOf(type).outerBraces),
      m_suppressNextName(SwitchesOf(type).suppressFirstName),
      m_camelCaseNames(SwitchesOf(type).camelCaseNames),
      m_out(out),
      m_depth(m_pretty ? 1 : 0),
      m_captureEnabled(captureEnabled),
      m_nestedCapture(nestedCapture),
      m_shortNames(shortNames) {
    if (!m_omitOuterBraces) {
        m_out.append(m_pretty ? u"{\n" : u"{");
    }
}

BuildParameterStrings::~BuildParameterStrings() = default;

void BuildParameterStrings::Finish() {
    if (!m_omitOuterBraces) {
        m_out.append(m_prettyConfigured ? u"\n}" : u"}");
    }
}

void BuildParameterStrings::Parameter(const TString& name, const TString& valueText, ParameterTypeCategory kind) {
    Separate();
    if (WriteName(name, false)) {
        m_out.append(u": ");  // with its blank in the compact forms too, as readers of the text expect
    }
    WriteValue(valueText, kind);
}

void BuildParameterStrings::StartList(const TString& name, ParameterTypeCategory elementKind) {
    Open(name, false, u'[', {true, true, elementKind});
}

void BuildParameterStrings::ListItem(const TString& valueText) {
    Separate();
    WriteValue(valueText, m_frame.valueKind);
}

void BuildParameterStrings::EndList(const TString&) { Close(u']'); }

void BuildParameterStrings::StartMap(const TString& name, ParameterTypeCategory valueKind) {
    Open(name, false, u'{', {false, true, valueKind});
}

void BuildParameterStrings::MapItem(const TString& key, const TString& valueText, bool rawKey) {
    Separate();
    WriteName(key, rawKey);
    m_out.append(m_pretty ? u": " : u":");
    WriteValue(valueText, m_frame.valueKind);
}

void BuildParameterStrings::EndMap(const TString&) { Close(u'}'); }

void BuildParameterStrings::StartComposite(const TString& name, bool isMapItem) {
    Open(name, isMapItem, u'{', {false, true, PTC_None});
}

void BuildParameterStrings::EndComposite(const TString&) { Close(u'}'); }

void BuildParameterStrings::NullMapItem(const TString& key, bool rawKey) {
    Separate();
    WriteName(key, rawKey);
    m_out.append(m_pretty ? u": null" : u":null");
    m_pretty = m_prettyConfigured;
}

void BuildParameterStrings::StartCapture() {
    if (!m_captureEnabled) {
        return;
    }
    const bool record = (m_captureStarts.empty() || m_nestedCapture) && m_out.size() < kNotRecorded;
    m_captureStarts.push_back(record ? static_cast<std::uint32_t>(m_out.size()) : kNotRecorded);
}

TString BuildParameterStrings::EndCapture() {
    if (!m_captureEnabled || m_captureStarts.empty()) {
        return {};
    }
    const std::uint32_t start = m_captureStarts.back();
    m_captureStarts.pop_back();
    if (start == kNotRecorded || start > m_out.size()) {
        return {};
    }
    return m_out.view().substr(start);
}

void BuildParameterStrings::WriteCaptured(const TString& text) {
    if (!m_pretty) {
        m_out.append(text);
        return;
    }
    Separate();
    std::u16string_view rest = text;
    for (auto end = rest.find(u'\n'); end != std::u16string_view::npos; end = rest.find(u'\n')) {
        m_out.append(rest.substr(0, end));
        SeparateClosing();
        rest.remove_prefix(end + 1);
    }
    m_out.append(rest);
}

// Before an element.
void BuildParameterStrings::Separate() {
    const bool first = std::exchange(m_frame.firstToCome, false);
    if (!first) {
        m_out.append(m_pretty ? u", " : u",");
    }
    BreakLine(first);
}

// Before a closing bracket, whose container is no longer on the stack: the flag is that of the container around it,
// which the opening has cleared. So every closing bracket of the pretty form stands on a line of its own.
void BuildParameterStrings::SeparateClosing() {
    const bool first = std::exchange(m_frame.firstToCome, false);
    BreakLine(first);
}

void BuildParameterStrings::BreakLine(bool first) {
    if (!m_pretty) {
        return;
    }
    if (!first) {
        m_out.push_back(u'\n');
    }
    if (m_depth > 0) {
        m_out.append(2 * static_cast<std::size_t>(m_depth), u' ');
    }
}

bool BuildParameterStrings::WriteName(const TString& name, bool raw) {
    if (m_suppressNextName) {
        m_suppressNextName = false;
        return false;
    }
    if (m_frame.inList) {
        return false;
    }
    if (m_quoteNames) {
        m_out.push_back(u'"');
    }
    if (m_camelCaseNames && !raw && !m_shortNames) {
        m_out.append(DashedToCamel(name));
    } else {
        AppendEscaped(m_out, name);
    }
    if (m_quoteNames) {
        m_out.push_back(u'"');
    }
    return true;
}

void BuildParameterStrings::WriteValue(const TString& text, ParameterTypeCategory kind) {
    const bool quoted = kind != PTC_Number && kind != PTC_Bool;
    if (quoted) {
        m_out.push_back(u'"');
    }
    AppendEscaped(m_out, text);
    if (quoted) {
        m_out.push_back(u'"');
    }
}

void BuildParameterStrings::Open(const TString& name, bool raw, char16_t bracket, Frame frame) {
    Separate();
    if (WriteName(name, raw)) {
        m_out.append(m_pretty ? u": " : u":");
    }
    m_out.push_back(bracket);
    if (m_pretty) {
        m_out.push_back(u'\n');
    }
    ++m_depth;
    m_outerFrames.push_back(m_frame);
    m_frame = frame;
}

void BuildParameterStrings::Close(char16_t bracket) {
    // The frame of the whole text stays: an end without a start gives unbalanced text, nothing worse.
    if (!m_outerFrames.empty()) {
        m_frame = m_outerFrames.back();
        m_outerFrames.pop_back();
    }
    --m_depth;
    m_pretty = m_prettyConfigured;
    SeparateClosing();
    m_out.push_back(bracket);
}

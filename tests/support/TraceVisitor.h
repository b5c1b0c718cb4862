// Walks as text: a visitor that notes each event on a line of its own, so that a test compares one string.
#pragma once

#include <string>

#include <qvpreslayer/qvpreslayer.h>

// Events read like calls: Parameter(name, text, kind), StartList(name, kind), ListItem(text), EndList(name),
// StartMap(name, kind), MapItem(key, text, raw), EndMap(name), StartComposite(name, raw), EndComposite(name),
// NullMapItem(key, raw), StartCapture(), EndCapture(), WriteCaptured(text). Kinds are numbers, flags true or false.
class TraceVisitor final : public IStructuredParameterVisitor {
public:
    // All lines so far, each ended by a line feed.
    const std::string& Text() const { return m_text; }

    void Parameter(const TString& name, const TString& valueText, ParameterTypeCategory kind) override {
        Line("Parameter", name.ToUtf8() + ", " + valueText.ToUtf8() + ", " + std::to_string(kind));
    }
    void StartList(const TString& name, ParameterTypeCategory elementKind) override {
        Line("StartList", name.ToUtf8() + ", " + std::to_string(elementKind));
    }
    void ListItem(const TString& valueText) override { Line("ListItem", valueText.ToUtf8()); }
    void EndList(const TString& name) override { Line("EndList", name.ToUtf8()); }
    void StartMap(const TString& name, ParameterTypeCategory valueKind) override {
        Line("StartMap", name.ToUtf8() + ", " + std::to_string(valueKind));
    }
    void MapItem(const TString& key, const TString& valueText, bool rawKey) override {
        Line("MapItem", key.ToUtf8() + ", " + valueText.ToUtf8() + ", " + Flag(rawKey));
    }
    void EndMap(const TString& name) override { Line("EndMap", name.ToUtf8()); }
    void StartComposite(const TString& name, bool isMapItem) override {
        Line("StartComposite", name.ToUtf8() + ", " + Flag(isMapItem));
    }
    void EndComposite(const TString& name) override { Line("EndComposite", name.ToUtf8()); }
    void NullMapItem(const TString& key, bool rawKey) override {
        Line("NullMapItem", key.ToUtf8() + ", " + Flag(rawKey));
    }
    void StartCapture() override { Line("StartCapture", ""); }
    TString EndCapture() override {
        Line("EndCapture", "");
        return {};
    }
    void WriteCaptured(const TString& text) override { Line("WriteCaptured", text.ToUtf8()); }

private:
    static std::string Flag(bool value) { return value ? "true" : "false"; }
    void Line(const char* event, const std::string& arguments) {
        m_text += std::string(event) + "(" + arguments + ")\n";
    }

    std::string m_text;
};

// The events of a walk.
inline std::string TraceOf(RefCntPtr<const IParameters> bag) {
    TraceVisitor visitor;
    VisitParametersStructure(L"", bag, visitor);
    return visitor.Text();
}

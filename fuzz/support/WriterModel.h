// The spelling of events as JSON, the slow way: the rules of docs/json.md in the plainest form, without short cuts.
// Targets compare the library's visitor with it, event by event.
#pragma once

#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "fuzz/support/TextModels.h"

class WriterModel final : public IStructuredParameterVisitor {
public:
    WriterModel(JSONSerializer::OutputType form, bool capture, bool nestedCapture, bool shortNames)
        : m_pretty(form == JSONSerializer::Pretty),
          m_quoted(form != JSONSerializer::UnquotedNames),
          m_braces(form != JSONSerializer::Bare && form != JSONSerializer::BareRawNames),
          m_camel(form != JSONSerializer::BareRawNames && !shortNames),
          m_capture(capture),
          m_nestedCapture(nestedCapture),
          m_nameToDrop(!m_braces),
          m_depth(m_pretty ? 1 : 0) {
        if (m_braces) {
            m_text += m_pretty ? u"{\n" : u"{";
        }
    }

    const TString& Text() const { return m_text; }

    void Finish() {
        if (m_braces) {
            m_text += m_pretty ? u"\n}" : u"}";
        }
    }

    void Parameter(const TString& name, const TString& valueText, ParameterTypeCategory kind) override {
        BeforeElement();
        if (Name(name, false)) {
            m_text += u": ";
        }
        Value(valueText, kind);
    }
    void StartList(const TString& name, ParameterTypeCategory elementKind) override {
        Open(name, false, u"[", {true, elementKind});
    }
    void ListItem(const TString& valueText) override {
        BeforeElement();
        Value(valueText, m_frames.back().kind);
    }
    void EndList(const TString&) override { Close(u"]"); }
    void StartMap(const TString& name, ParameterTypeCategory valueKind) override {
        Open(name, false, u"{", {false, valueKind});
    }
    void MapItem(const TString& key, const TString& valueText, bool rawKey) override {
        BeforeElement();
        Name(key, rawKey);
        m_text += m_pretty ? u": " : u":";
        Value(valueText, m_frames.back().kind);
    }
    void EndMap(const TString&) override { Close(u"}"); }
    void StartComposite(const TString& name, bool isMapItem) override {
        Open(name, isMapItem, u"{", {false, PTC_None});
    }
    void EndComposite(const TString&) override { Close(u"}"); }
    void NullMapItem(const TString& key, bool rawKey) override {
        BeforeElement();
        Name(key, rawKey);
        m_text += m_pretty ? u": null" : u":null";
    }
    void StartCapture() override {
        if (m_capture) {
            const bool recorded = m_captures.empty() || m_nestedCapture;
            m_captures.push_back({recorded, m_text.size()});
        }
    }
    TString EndCapture() override {
        if (m_captures.empty()) {
            return {};
        }
        const Capture last = m_captures.back();
        m_captures.pop_back();
        return last.recorded ? TString(m_text.view().substr(last.start)) : TString();
    }
    void WriteCaptured(const TString& text) override {
        if (!m_pretty) {
            m_text += text;
            return;
        }
        BeforeElement();
        for (const char16_t unit : text.view()) {
            if (unit == u'\n') {
                NewLine();
            } else {
                m_text += unit;
            }
        }
    }

private:
    struct Frame {
        bool isList;
        ParameterTypeCategory kind;
        bool isEmpty = true;  // nothing in it has been written yet
    };
    struct Capture {
        bool recorded;
        std::size_t start;
    };

    void Indent() {
        for (int level = 0; level < m_depth; ++level) {
            m_text += u"  ";
        }
    }

    void BeforeElement() {
        if (m_frames.back().isEmpty) {
            m_frames.back().isEmpty = false;
            if (m_pretty) {
                Indent();  // the opening bracket has ended its line
            }
            return;
        }
        m_text += m_pretty ? u", " : u",";
        NewLine();
    }

    // Also before a closing bracket, which therefore stands on a line of its own.
    void NewLine() {
        if (!m_pretty) {
            return;
        }
        if (!m_frames.back().isEmpty) {
            m_text += u"\n";
        }
        m_frames.back().isEmpty = false;
        Indent();
    }

    bool Name(const TString& name, bool raw) {
        if (m_nameToDrop) {
            m_nameToDrop = false;
            return false;
        }
        if (m_frames.back().isList) {
            return false;
        }
        const TString quote(m_quoted ? u"\"" : u"");
        m_text += quote;
        m_text += m_camel && !raw ? text_model::CamelCase(name) : text_model::Escaped(name);
        m_text += quote;
        return true;
    }

    void Value(const TString& text, ParameterTypeCategory kind) {
        const TString quote(kind == PTC_Number || kind == PTC_Bool ? u"" : u"\"");
        m_text += quote + text_model::Escaped(text) + quote;
    }

    void Open(const TString& name, bool raw, const char16_t* bracket, Frame frame) {
        BeforeElement();
        if (Name(name, raw)) {
            m_text += m_pretty ? u": " : u":";
        }
        m_text += bracket;
        m_text += m_pretty ? u"\n" : u"";
        ++m_depth;
        m_frames.push_back(frame);
    }

    // The frame of the whole text stays, whatever ends come.
    void Close(const char16_t* bracket) {
        if (m_frames.size() > 1) {
            m_frames.pop_back();
        }
        --m_depth;
        NewLine();
        m_frames.back().isEmpty = false;
        m_text += bracket;
    }

    bool m_pretty;
    bool m_quoted;
    bool m_braces;
    bool m_camel;
    bool m_capture;
    bool m_nestedCapture;
    bool m_nameToDrop;
    int m_depth;
    TString m_text;
    std::vector<Frame> m_frames{{false, PTC_None}};
    std::vector<Capture> m_captures;
};

// A visitor that notes every event and throws at one of them.
#pragma once

#include <stdexcept>
#include <string>

#include "support/TraceVisitor.h"

// Throws std::runtime_error with the event's name as its text, after the event was noted.
class FailingVisitor final : public IStructuredParameterVisitor {
public:
    explicit FailingVisitor(std::string event) : m_event(std::move(event)) {}

    // As TraceVisitor notes it.
    const std::string& Text() const { return m_trace.Text(); }

    void Parameter(const TString& name, const TString& valueText, ParameterTypeCategory kind) override {
        m_trace.Parameter(name, valueText, kind);
        Check("Parameter");
    }
    void StartList(const TString& name, ParameterTypeCategory elementKind) override {
        m_trace.StartList(name, elementKind);
        Check("StartList");
    }
    void ListItem(const TString& valueText) override {
        m_trace.ListItem(valueText);
        Check("ListItem");
    }
    void EndList(const TString& name) override {
        m_trace.EndList(name);
        Check("EndList");
    }
    void StartMap(const TString& name, ParameterTypeCategory valueKind) override {
        m_trace.StartMap(name, valueKind);
        Check("StartMap");
    }
    void MapItem(const TString& key, const TString& valueText, bool rawKey) override {
        m_trace.MapItem(key, valueText, rawKey);
        Check("MapItem");
    }
    void EndMap(const TString& name) override {
        m_trace.EndMap(name);
        Check("EndMap");
    }
    void StartComposite(const TString& name, bool isMapItem) override {
        m_trace.StartComposite(name, isMapItem);
        Check("StartComposite");
    }
    void EndComposite(const TString& name) override {
        m_trace.EndComposite(name);
        Check("EndComposite");
    }
    void NullMapItem(const TString& key, bool rawKey) override {
        m_trace.NullMapItem(key, rawKey);
        Check("NullMapItem");
    }
    void StartCapture() override { m_trace.StartCapture(); }
    TString EndCapture() override { return m_trace.EndCapture(); }
    void WriteCaptured(const TString& text) override { m_trace.WriteCaptured(text); }

private:
    void Check(const char* event) const {
        if (m_event == event) {
            throw std::runtime_error(event);
        }
    }

    TraceVisitor m_trace;
    std::string m_event;
};

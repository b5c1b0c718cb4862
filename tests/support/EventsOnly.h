// A visitor between a walk and another visitor, which keeps values from going the short way.
#pragma once

#include <qvpreslayer/IStructuredParameterVisitor.h>

// Hands every event on and nothing else: what it writes came as events.
class EventsOnly final : public IStructuredParameterVisitor {
public:
    explicit EventsOnly(IStructuredParameterVisitor& to) : m_to(to) {}

    void Parameter(const TString& name, const TString& text, ParameterTypeCategory kind) override {
        m_to.Parameter(name, text, kind);
    }
    void StartList(const TString& name, ParameterTypeCategory kind) override { m_to.StartList(name, kind); }
    void ListItem(const TString& text) override { m_to.ListItem(text); }
    void EndList(const TString& name) override { m_to.EndList(name); }
    void StartMap(const TString& name, ParameterTypeCategory kind) override { m_to.StartMap(name, kind); }
    void MapItem(const TString& key, const TString& text, bool raw) override { m_to.MapItem(key, text, raw); }
    void EndMap(const TString& name) override { m_to.EndMap(name); }
    void StartComposite(const TString& name, bool raw) override { m_to.StartComposite(name, raw); }
    void EndComposite(const TString& name) override { m_to.EndComposite(name); }
    void NullMapItem(const TString& key, bool raw) override { m_to.NullMapItem(key, raw); }
    void StartCapture() override { m_to.StartCapture(); }
    TString EndCapture() override { return m_to.EndCapture(); }
    void WriteCaptured(const TString& text) override { m_to.WriteCaptured(text); }

private:
    IStructuredParameterVisitor& m_to;
};

// Visitors that take the events of one list.
#pragma once

#include <cstdint>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

// Counts what it is told and forgets it. Derived classes keep some.
class CountingListVisitor : public IStructuredParameterVisitor {
public:
    std::int64_t items = 0;
    std::int64_t lists = 0;

    void Parameter(const TString&, const TString&, ParameterTypeCategory) override {}
    void StartList(const TString&, ParameterTypeCategory) override { ++lists; }
    void ListItem(const TString&) override { ++items; }
    void EndList(const TString&) override {}
    void StartMap(const TString&, ParameterTypeCategory) override {}
    void MapItem(const TString&, const TString&, bool) override {}
    void EndMap(const TString&) override {}
    void StartComposite(const TString&, bool) override {}
    void EndComposite(const TString&) override {}
    void NullMapItem(const TString&, bool) override {}
    void StartCapture() override {}
    TString EndCapture() override { return TString(); }
    void WriteCaptured(const TString&) override {}

protected:
    ~CountingListVisitor() = default;
};

class ListCounter final : public CountingListVisitor {};

// Keeps a list as the reader of JSON hands it to a serializer: plain elements, and nested lists by their position.
class ListCollector final : public CountingListVisitor {
public:
    std::vector<TString> values;
    std::vector<RunRecord> runs;

    void StartList(const TString& name, ParameterTypeCategory kind) override {
        CountingListVisitor::StartList(name, kind);
        if (++m_depth == 2) {
            runs.emplace_back(static_cast<int>(m_position++), std::vector<TString>());
        }
    }
    void ListItem(const TString& text) override {
        if (m_depth == 2) {
            runs.back().second.push_back(text);
        } else {
            values.push_back(text);
            ++m_position;
        }
    }
    void EndList(const TString&) override { --m_depth; }

private:
    int m_depth = 0;
    std::int64_t m_position = 0;
};

// Host code that throws at a chosen call: serializers, structure serializers, visitors, bags, factories and options,
// each of which counts its calls.
#pragma once

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "support/TestHost.h"
#include "support/TraceVisitor.h"

// What tripping host code throws.
class HostFailure final : public std::runtime_error {
public:
    HostFailure() : std::runtime_error("the host failed") {}
};

// The calls of host code on this thread, one of which fails. One exists at a time.
class Trip {
public:
    // Lets the call number (from 0) fail; a negative one lets none.
    explicit Trip(int number) : m_number(number) { s_current = this; }
    Trip(const Trip&) = delete;
    Trip& operator=(const Trip&) = delete;
    ~Trip() { s_current = nullptr; }

    int Calls() const { return m_calls; }
    bool HasFailed() const { return m_number >= 0 && m_calls > m_number; }
    const std::string& Where() const { return m_where; }  // of the failure

    // What each piece of host code does first.
    static void Step(const char* where) {
        if (s_current != nullptr && s_current->m_calls++ == s_current->m_number) {
            s_current->m_where = where;
            throw HostFailure();
        }
    }

private:
    static inline thread_local Trip* s_current = nullptr;

    int m_number;
    int m_calls = 0;
    std::string m_where;
};

// A serializer of the library's behind host code.
template <class Base>
class TrippingSerializer final : public Base {
public:
    using Runs = std::vector<std::pair<int, std::vector<TString>>>;

    ParameterTypeCategory GetType() const override {
        Trip::Step("GetType");
        return Base::GetType();
    }
    TString ToString(RefCntPtr<const IParameter> value) override {
        Trip::Step("ToString");
        return Base::ToString(value);
    }
    RefCntPtr<IParameter> FromString(const TString& text) const override {
        Trip::Step("FromString");
        return Base::FromString(text);
    }
    std::vector<TString> ToStringList(RefCntPtr<const IParameter> value) override {
        Trip::Step("ToStringList");
        return Base::ToStringList(value);
    }
    RefCntPtr<IParameter> FromStringList(const std::vector<TString>& values, const Runs& runs) const override {
        Trip::Step("FromStringList");
        return Base::FromStringList(values, runs);
    }
    void SerializeList(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id) const override {
        Trip::Step("SerializeList");
        Base::SerializeList(value, stream, id);
        Trip::Step("SerializeList's end");
    }
    std::map<TString, TString> ToStringMap(RefCntPtr<const IParameter> value) override {
        Trip::Step("ToStringMap");
        return Base::ToStringMap(value);
    }
    RefCntPtr<IParameter> FromStringMap(const std::map<TString, TString>& texts) const override {
        Trip::Step("FromStringMap");
        return Base::FromStringMap(texts);
    }
};

// The library's structure serializer behind host code.
class TrippingStructureSerializer final : public BagStructureSerializer {
public:
    using BagStructureSerializer::BagStructureSerializer;

    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id, bool own) const override {
        Trip::Step("Serialize");
        BagStructureSerializer::Serialize(value, stream, id, own);
        Trip::Step("Serialize's end");
    }
    std::vector<RefCntPtr<const IParameter>> SplitList(RefCntPtr<const IParameter> value) const override {
        Trip::Step("SplitList");
        return BagStructureSerializer::SplitList(value);
    }
    std::map<TString, RefCntPtr<const IParameter>> SplitMap(RefCntPtr<const IParameter> value) const override {
        Trip::Step("SplitMap");
        return BagStructureSerializer::SplitMap(value);
    }
    bool IsListForm() const override {
        Trip::Step("IsListForm");
        return BagStructureSerializer::IsListForm();
    }
    void PrepareElement(int, RefCntPtr<IParameters>, RefCntPtr<IParameters>) const override {
        Trip::Step("PrepareElement");
    }
    RefCntPtr<IParameter> FromParameters(int id, RefCntPtr<IParameters> bag) const override {
        Trip::Step("FromParameters");
        return BagStructureSerializer::FromParameters(id, bag);
    }
    RefCntPtr<IParameter> MakeList(const std::vector<RefCntPtr<IParameter>>& elements) const override {
        Trip::Step("MakeList");
        return BagStructureSerializer::MakeList(elements);
    }
    RefCntPtr<IParameter> MakeMap(const std::map<TString, RefCntPtr<IParameter>>& entries) const override {
        Trip::Step("MakeMap");
        return BagStructureSerializer::MakeMap(entries);
    }
};

// Notes every event, one line each, and trips behind it.
class TrippingVisitor final : public IStructuredParameterVisitor {
public:
    const std::vector<std::string>& Events() const { return m_events; }

    void Parameter(const TString& name, const TString& valueText, ParameterTypeCategory kind) override {
        Note([&](auto& v) { v.Parameter(name, valueText, kind); });
    }
    void StartList(const TString& name, ParameterTypeCategory kind) override {
        Note([&](auto& v) { v.StartList(name, kind); });
    }
    void ListItem(const TString& valueText) override {
        Note([&](auto& v) { v.ListItem(valueText); });
    }
    void EndList(const TString& name) override {
        Note([&](auto& v) { v.EndList(name); });
    }
    void StartMap(const TString& name, ParameterTypeCategory kind) override {
        Note([&](auto& v) { v.StartMap(name, kind); });
    }
    void MapItem(const TString& key, const TString& valueText, bool rawKey) override {
        Note([&](auto& v) { v.MapItem(key, valueText, rawKey); });
    }
    void EndMap(const TString& name) override {
        Note([&](auto& v) { v.EndMap(name); });
    }
    void StartComposite(const TString& name, bool isMapItem) override {
        Note([&](auto& v) { v.StartComposite(name, isMapItem); });
    }
    void EndComposite(const TString& name) override {
        Note([&](auto& v) { v.EndComposite(name); });
    }
    void NullMapItem(const TString& key, bool rawKey) override {
        Note([&](auto& v) { v.NullMapItem(key, rawKey); });
    }
    void StartCapture() override {}
    TString EndCapture() override { return {}; }
    void WriteCaptured(const TString&) override {}

    // How many events there were when one tripped, that one included; nothing when none did.
    std::optional<std::size_t> TrippedAt() const { return m_trippedAt; }

private:
    template <class Tell>
    void Note(const Tell& tell) {
        TraceVisitor line;
        tell(line);
        m_events.push_back(line.Text());
        try {
            Trip::Step("an event");
        } catch (...) {
            m_trippedAt = m_events.size();
            throw;
        }
    }

    std::vector<std::string> m_events;
    std::optional<std::size_t> m_trippedAt;
};

// A bag of the host's that counts itself.
class TrippingBag final : public TestBag {
public:
    explicit TrippingBag(int& alive) : m_alive(alive) {
        Trip::Step("a bag");
        ++m_alive;
    }

    void SetParameter(int id, RefCntPtr<IParameter> value) override {
        Trip::Step("SetParameter");
        TestBag::SetParameter(id, std::move(value));
    }
    void Accept(IParameterVisitor& visitor) const override {
        Trip::Step("Accept");
        TestBag::Accept(visitor);
        Trip::Step("Accept's end");
    }

protected:
    ~TrippingBag() override { --m_alive; }
    RefCntPtr<BaseParameters> DoEmptyClone() override {
        Trip::Step("DoEmptyClone");
        return RefCntPtr<BaseParameters>(new TrippingBag(m_alive));
    }

private:
    int& m_alive;
};

// One list on its way to a visitor: a published registry with a list of T, and its events as one line of text.
#pragma once

#include <string>
#include <type_traits>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "support/TestHost.h"

// Notes lists in one line: name, ":", kind of the elements, the items between "[" and "]". An end under another name
// than its start shows the name behind a "!"; every other event shows as "?" and its name.
class ListTraceVisitor final : public IStructuredParameterVisitor {
public:
    const std::string& Text() const { return m_text; }

    void Parameter(const TString&, const TString&, ParameterTypeCategory) override { Add("?Parameter"); }
    void StartList(const TString& name, ParameterTypeCategory elementKind) override {
        Add(name.ToUtf8() + ":" + std::to_string(elementKind) + "[");
        m_names.push_back(name);
    }
    void ListItem(const TString& valueText) override { Add(valueText.ToUtf8()); }
    void EndList(const TString& name) override {
        m_text += "]";
        if (m_names.empty() || m_names.back() != name) {
            m_text += "!" + name.ToUtf8();
        }
        if (!m_names.empty()) {
            m_names.pop_back();
        }
    }
    void StartMap(const TString&, ParameterTypeCategory) override { Add("?StartMap"); }
    void MapItem(const TString&, const TString&, bool) override { Add("?MapItem"); }
    void EndMap(const TString&) override { Add("?EndMap"); }
    void StartComposite(const TString&, bool) override { Add("?StartComposite"); }
    void EndComposite(const TString&) override { Add("?EndComposite"); }
    void NullMapItem(const TString&, bool) override { Add("?NullMapItem"); }
    void StartCapture() override { Add("?StartCapture"); }
    TString EndCapture() override {
        Add("?EndCapture");
        return {};
    }
    void WriteCaptured(const TString&) override { Add("?WriteCaptured"); }

private:
    void Add(const std::string& word) {
        if (!m_text.empty() && m_text.back() != '[') {
            m_text += ' ';
        }
        m_text += word;
    }

    std::string m_text;
    std::vector<TString> m_names;  // of the open lists
};

// The serializer class of a value type.
template <class T>
using SerializerOf = std::conditional_t<std::is_same_v<T, TString>, TStringSerializer, ParameterTypeSerializer<T>>;

enum class ListForm { Plain, Packed };

// A published registry in which kListId is a list of T called "values", short "v", and, unless told otherwise, the core
// namespace with the tags of packed lists.
template <class T>
class ListHost {
public:
    static constexpr int kListId = 7;

    explicit ListHost(bool withCoreNamespace = true) {
        m_registry.Add(L"lists", 1, 9,
                       [](AbstractParamAdder& adder) { adder.AddList(kListId, L"values", L"v", new SerializerOf<T>); });
        if (withCoreNamespace) {
            RegisterCoreNamespaceParameters(m_registry, L"qvcore");
        }
    }

    // Writes values as the list, through the serializer.
    void Send(const std::vector<T>& values, ListForm form, IStructuredParameterVisitor& visitor, bool verbose = true) {
        SerializeStructure stream(visitor, verbose, form == ListForm::Packed);
        SerializerOf<T>().SerializeList(Val<std::vector<T>>(values), stream, kListId);
    }

    // The events of that.
    std::string Trace(const std::vector<T>& values, ListForm form, bool verbose = true) {
        ListTraceVisitor visitor;
        Send(values, form, visitor, verbose);
        return visitor.Text();
    }
    std::string Packed(const std::vector<T>& values) { return Trace(values, ListForm::Packed); }
    std::string Plain(const std::vector<T>& values) { return Trace(values, ListForm::Plain); }

private:
    TestRegistry m_registry;
};

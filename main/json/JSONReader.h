// From a JSON document to a bag. Included by JSONSerializer.cpp.
#pragma once

#include <memory>
#include <vector>

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/IReadingDiagnostics.h>
#include <qvpreslayer/IStructureSerializer.h>
#include <qvpreslayer/ParametersRegistry.h>

#include "main/json/JSONDocument.h"
#include "main/json/JSONMembers.h"

class JSONReader;

// One container of the text that is being turned into parameters. Step does a piece of the work, and hands containers
// inside to a further filling; it is called again when that one is done. So no text makes the call stack grow.
class JSONFilling {
public:
    virtual ~JSONFilling() = default;

    // False when the container is done.
    virtual bool Step(JSONReader& reader) = 0;

    // The value being read, and the step that leads to it, for the place of a failure.
    virtual JSONDocument::Index Current() const = 0;
    virtual void AppendStep(TString& path, const JSONDocument& document) const = 0;
};

// What one reading call knows: the registry, how names are spelled, and the first structure that it met.
class JSONReader {
public:
    // Takes the published registry. Requires: document outlives the reader.
    JSONReader(const JSONDocument& document, const TString& namespaceName, bool shortNames, bool lookupFlag,
               IReadingDiagnostics* diagnostics);
    ~JSONReader();

    // Reads the whole document. Throws what JSONSerializer::ToParameters tells.
    // root, where it is not null, is the outermost bag, made already.
    RefCntPtr<IParameters> Read(RefCntPtr<IParameters>* root = nullptr);

    const JSONDocument& Document() const noexcept { return m_document; }
    ParametersRegistry& Registry() noexcept { return m_registry; }

    // Puts further work before the filling that asks for it.
    void Push(std::unique_ptr<JSONFilling> filling) { m_fillings.push_back(std::move(filling)); }

    RefCntPtr<IParameters> NewBag() { return m_registry.CreateParameters(); }

    // A member's name as the registry spells it, and what it stands for there.
    TString RegisteredName(std::u16string_view name) const;
    int FindID(const TString& name) const { return m_registry.GetID(m_namespace, name, m_lookupFlag); }

    const ParameterInfo* FindInfo(int id) const { return m_registry.FindInfo(id); }
    std::size_t CountElements(JSONDocument::Index array) const;

    // What both together lead to, where one look-up tells; null says nothing.
    const ParameterInfo* FindDirectly(std::u16string_view name);

    // The text of a scalar; empty for objects, arrays and null.
    TString ScalarText(JSONDocument::Index node) const;

    // The texts of all elements of an array.
    std::vector<TString> ScalarTexts(JSONDocument::Index array) const;

    // Checks what a container is; std::runtime_error when it is something else.
    void RequireKind(JSONDocument::Index node, JSONKind kind) const;

    // Remembers the first structure of the call and the bag that owns it; later ones change nothing.
    void Record(RefCntPtr<IStructureSerializer> serializer, RefCntPtr<IParameters> owner);

    // Whether somebody wants to know of leniencies; values then go the long way, which meets them.
    bool IsWatched() const noexcept { return m_diagnostics != nullptr; }

    // Tells of a leniency at a node of the container being read, or of one inside it under a further step of the path.
    // Requires: IsWatched().
    void Report(Leniency leniency, int id, JSONDocument::Index node, const TString& step = {}) const;

    // What becomes of a value as ScalarText makes it a text, and as the serializer of info then takes that.
    void ReportScalar(const ParameterInfo& info, JSONDocument::Index node, const TString& step = {}) const;

    // What becomes of the elements of an array as ScalarTexts makes them texts.
    void ReportTexts(int id, JSONDocument::Index array, const TString& step = {}) const;

    // The members of an object; those that do not count are reported.
    std::vector<JSONMember> Members(JSONDocument::Index object, int id) const;

    // Lets the recorded structure, if there is one, add to an element's bag.
    void PrepareElement(int id, const RefCntPtr<IParameters>& elementBag) const;

private:
    bool ReportText(int id, JSONDocument::Index node, const TString& step) const;
    TextLocation Locate() const;
    void ReportTextAfterValue() const;

    const JSONDocument& m_document;
    ParametersRegistry& m_registry;
    TString m_namespace;
    bool m_shortNames;
    bool m_lookupFlag;
    IReadingDiagnostics* m_diagnostics;
    bool m_camelNamesSought = false;  // at the first member: no earlier, since seeking fills the namespace
    const qvpreslayer::detail::INameIndex* m_camelNames = nullptr;  // null too when they are not what is looked for
    RefCntPtr<IStructureSerializer> m_recordedSerializer;           // empty until a structure is met
    RefCntPtr<IParameters> m_recordedBag;
    std::vector<std::unique_ptr<JSONFilling>> m_fillings;  // outermost first
};

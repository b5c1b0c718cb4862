// The process-wide dictionary of parameters: identifiers, names, kinds and serializers, in namespaces.
//
// A namespace is a named, inclusive range of identifiers. Its registration functions run when it is first looked into
// (at once for an eager one) and declare its parameters. A namespace may have a fallback, in which names that it does
// not know are sought. Where ranges overlap, the namespace whose name sorts first covers the identifier, alone.
//
// Threads: registration, fallbacks, marks and Clear come first, on one thread; lookups may then run on any number of
// threads. First lookups may race: each namespace is filled once, under a recursive mutex of its own, so that a
// registration function may itself look up. Two namespaces whose functions look each other up must not meet their first
// lookups on two threads at once; one lookup of each at start-up avoids that.
//
// Exceptions: strong, registering and clearing included: what throws has changed nothing, but that namespaces that were
// filled on the way stay filled. HasNamespace, IsUnserializable, FindInfo of a filled namespace and Clear() never
// throw.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/AbstractParamAdder.h>
#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/ParameterTypeCategory.h>
#include <qvpreslayer/detail/DirectText.h>
#include <qvpreslayer/detail/InfoTable.h>

// One row of a namespace listing.
struct ParameterRegistryinfo {
    int id = 0;
    TString verboseName;
    TString shortName;
};

// All that the registry knows of one parameter, from one lookup. The pointers and references are the registry's own.
struct ParameterInfo {
    int id = 0;
    ParameterTypeCategory kind = PTC_None;
    TString verboseName;
    TString shortName;                                    // empty when there is none
    TString camelName;                                    // the verbose name as JSON spells it
    RefCntPtr<IParameterSerializer> serializer;           // null for bags and structures
    RefCntPtr<IStructureSerializer> structureSerializer;  // null for all but structures
    qvpreslayer::detail::DirectInfo direct{};             // for the library's own use
};

// A registered namespace as a whole. The records are the registry's own, in the order in which they were added.
struct ParameterNamespaceInfo {
    TString name;
    int firstId = 0;
    int lastId = 0;
    TString fallback;  // empty when there is none
    std::vector<const ParameterInfo*> parameters;
};

class QVPRESLAYER_API ParametersRegistry {
public:
    using RegistrationFunction = std::function<void(AbstractParamAdder&)>;

    ParametersRegistry();
    ParametersRegistry(const ParametersRegistry&) = delete;
    ParametersRegistry& operator=(const ParametersRegistry&) = delete;

    // A new, empty bag of the class that the host wants wherever the library needs one.
    virtual RefCntPtr<IParameters> CreateParameters() = 0;

    // The registry that the process uses. SetInstance publishes one (null takes it back) and does not own it;
    // GetInstance answers it or null; Get reports LogicException "gm_RegistryInstance != nullptr" when there is none.
    static void SetInstance(ParametersRegistry* registry);
    static ParametersRegistry* GetInstance() noexcept;
    static ParametersRegistry& Get();

    // Registers the namespace name over firstId to lastId, filled by fill at its first lookup, or before this returns
    // when eager. fill may look up, add parts and register other namespaces; it must not clear its own.
    // ParameterNamespaceAlreadyExistsException(name) when there is one. What an eager fill throws passes,
    // and the namespace is not registered then.
    void RegisterNamespace(const TString& name, RegistrationFunction fill, int firstId, int lastId, bool eager);

    // Adds fill to the namespace's registration functions, or registers a lazy namespace when there is none of that
    // name. LogicException "m_needInit" when the namespace has been filled already,
    // "m_namespace.FirstID() == firstId" or "m_namespace.LastID() == lastId" when the range is another.
    void RegisterNamespacePart(const TString& name, RegistrationFunction fill, int firstId, int lastId);

    // Makes fallback the place where names that name does not know are sought next. Both must be registered:
    // ParameterNamespaceNotFoundException otherwise (name is checked first);
    // ParameterNamespaceAlreadyHasFallbackException when name has one; CyclicFallbacksException when fallback leads
    // back to name. A failure links nothing.
    void SetFallback(const TString& name, const TString& fallback);

    // Marks id, registered or not, as one that walks pass over; asks for the mark.
    void AddUnserializable(int id);
    bool IsUnserializable(int id) const;
    bool HasUnserializable() const noexcept { return m_state.unserializable; }  // whether any is marked

    // Removes the namespace, its links as a fallback and to one, and the unserializable marks of its identifiers that
    // have both names. ParameterNamespaceNotFoundException when there is none. Fills it first when need be. References
    // and pointers that lookups answered die with it.
    void Clear(const TString& name);

    // Removes everything.
    void Clear();

    // Whether the namespace is registered. Does not fill it.
    bool HasNamespace(const TString& name) const;

    // The identifier of a name in a namespace, else in its fallback, and so on. With verbose, verbose names are
    // searched; without, those that PresModelBuilderSupport::UseVerboseNames() asks for, read anew at every namespace
    // of the chain. ParameterNamespaceNotFoundException for an unknown namespace; ParameterNotFoundException(name)
    // when no namespace of the chain knows the name. Identifier 0 is never found.
    int GetID(const TString& namespaceName, const TString& name, bool verbose) const;

    // The verbose or the short name of id, valid until its namespace is cleared; ParameterNotFoundException(id) when
    // no namespace covers id or it has no name of that sort.
    const TString& GetName(int id, bool verbose) const;

    // The kind of id; ParameterNotFoundException(id) when it is not registered.
    ParameterTypeCategory GetType(int id) const;

    // The serializer of id, kept alive by the registry; that of a structure may be null when it was registered so.
    // ParameterNotFoundException(id) when id is not of the kind asked for.
    IParameterSerializer* GetListSerializer(int id) const;
    IParameterSerializer* GetMapSerializer(int id) const;
    IStructureSerializer* GetStructureSerializer(int id) const;
    IStructureSerializer* GetStructureListSerializer(int id) const;
    IStructureSerializer* GetStructureMapSerializer(int id) const;

    // The serializer of values under id, of list and map elements too; null for bags, structures and identifiers that
    // are not registered. ParameterNotFoundException(id) when no namespace covers id.
    IParameterSerializer* GetValueSerializer(int id) const;

    // The text of a single value of id. ParameterNotFoundException(id) when id has no serializer of values; for lists
    // and maps the element serializer is asked, which answers TypeMismatchCommandException for all but an element.
    TString GetValueString(RefCntPtr<const IParameter> value, int id) const;

    // Parses valueText as a single value of the named parameter and stores it in params. The failures of GetID pass
    // unchanged; everything after that (no serializer, a text that does not fit, a null bag) becomes
    // ParameterParseException(id), and params is as it was.
    void FromString(const TString& namespaceName, RefCntPtr<IParameters> params, const TString& name,
                    const TString& valueText, bool verbose) const;

    // The second half of FromString, for an identifier that is known: parses and stores, or throws
    // ParameterParseException(id).
    void SetFromString(int id, const RefCntPtr<IParameters>& params, const TString& valueText) const;

    // Everything about id in one lookup, or null when it is not registered. Valid until its namespace is cleared.
    const ParameterInfo* FindInfo(int id) const {
        const qvpreslayer::detail::InfoTable* const table = m_infos.load(std::memory_order_acquire);
        const ParameterInfo* const info = table == nullptr ? nullptr : table->Find(id);
        return info != nullptr ? info : FindUnpublished(id);
    }

    // The namespace in which names that namespaceName does not know are sought next; null when there is none. Valid
    // until either is cleared.
    const TString* FindFallback(const TString& namespaceName) const noexcept;

    // For the library's own use: the names of a namespace, null when it is not registered, or not filled and fill does
    // not ask for that; whether ranges overlap, so that an identifier may not belong to the namespace that names it.
    // Valid until the namespace is cleared.
    const qvpreslayer::detail::INameIndex* FindNames(const TString& namespaceName, bool fill) const;
    bool HasOverlaps() const noexcept { return m_state.overlaps; }

    // For the library's own use: a number that no other state of any registry of the process has. What lookups
    // answered is valid while it is the same.
    std::uint64_t GetGeneration() const noexcept { return m_state.generation; }

    // The registered namespaces in name order, each with its identifiers that have both names, in the order in which
    // they were added. Fills every namespace.
    std::vector<std::pair<TString, std::vector<ParameterRegistryinfo>>> GetNamespaceInfos() const;

    // The registered namespaces in name order with everything in them, for tools that show or export a vocabulary:
    // parameters without a short name too. Fills every namespace. The records are valid until their namespace is
    // cleared.
    std::vector<ParameterNamespaceInfo> DescribeNamespaces() const;

    // All identifiers that AddUnserializable marked, ascending.
    std::vector<int> GetUnserializable() const;

protected:
    ~ParametersRegistry();

private:
    struct Impl;

    // What writers and readers ask before every document.
    struct State {
        std::uint64_t generation;
        bool overlaps = false;        // some ranges had identifiers in common once
        bool unserializable = false;  // some identifier is marked
    };

    const ParameterInfo* FindUnpublished(int id) const;

    std::atomic<const qvpreslayer::detail::InfoTable*> m_infos{nullptr};  // m_impl's own
    State m_state;
    std::unique_ptr<Impl> m_impl;
};

// Bags and presentation models as JSON (RFC 8259) text, and back.
//
// Exceptions: strong, but for PresModelToString into a text of the caller's, which is basic: what was written before a
// failure stays there. EnableCapture and ForceDisableCapture never throw.
#pragma once

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/PresentationModel.h>

class IReadingDiagnostics;

// Writes and reads the parameters of one namespace. docs/json.md tells what is written in each form, what is read, and
// what does not come back as it went.
//
// Threads: one serializer may write and read on several threads at once; EnableCapture, SetDiagnostics, copying
// into it and ForceDisableCapture need exclusion.
class QVPRESLAYER_API JSONSerializer {
public:
    // The form of the text.
    enum OutputType {
        Pretty = 0,         // a line for each element, indented by two blanks
        Compact = 1,        // one line
        Bare = 2,           // compact, without the outer braces and the first name
        BareRawNames = 3,   // as Bare, with registered names instead of camel case
        UnquotedNames = 4,  // compact, names without quotes; not JSON
    };

    // namespaceName is the namespace whose names are written and read. Capture is off.
    explicit JSONSerializer(const TString& namespaceName);
    JSONSerializer(const JSONSerializer&);
    JSONSerializer& operator=(const JSONSerializer&);
    ~JSONSerializer();

    // Turns on StartCapture and EndCapture for what is written later; nested lets a capture inside another one record
    // its own text. Both are turned off when ForceDisableCapture(true) is in force, whatever is passed.
    void EnableCapture(bool enable, bool nested);

    // Sets s_forceDisableCapture. Affects later calls of EnableCapture only.
    static void ForceDisableCapture(bool disable);

    // Process-wide and unsynchronised: set it before serializers are configured. False at first.
    static bool s_forceDisableCapture;

    // The bag as JSON. Throws what VisitParametersStructure throws, and answers nothing then.
    TString ToString(RefCntPtr<const IParameters> bag, OutputType type) const;

    // The model as JSON, written by the structure serializer that is registered for its GetDefaultParamID(). The first
    // form takes the name form from PresModelBuilderSupport. The second appends to out, and leaves there what was
    // written before a failure. Throws LogicException "m_ptr" for a null model or a null serializer,
    // ParameterNotFoundException when the identifier is of another kind, MissingParameterCommandException when the
    // model's bag does not hold it, and what the serializer throws.
    TString PresModelToString(RefCntPtr<const PresentationModel> model, OutputType type) const;
    void PresModelToString(RefCntPtr<const PresentationModel> model, bool verboseNames, OutputType type,
                           TString& out) const;

    // The bag that a text describes, made by the registry. The first form reads the names that PresModelBuilderSupport
    // asks for. In the second, shortNames leaves member names as they stand (else they are turned from camel case to
    // dashes), and lookupFlag is passed to the registry as the verbose flag of every lookup.
    //
    // Throws JSONParseException when the text is not JSON or a member's value does not fit its parameter's kind;
    // std::runtime_error when the root, or an element of a structure list or map, is of a kind that it cannot be;
    // ParameterNotFoundException for an unknown name, ParameterNamespaceNotFoundException for an unknown namespace;
    // ParameterParseException(id) for a scalar that does not fit; for lists and maps what their serializers throw
    // (ParameterParseException(0), QuorvelException, LogicException, std::out_of_range); LogicException
    // "gm_RegistryInstance != nullptr" without a registry, "m_ptr" where a structure has no serializer. All derive from
    // std::exception; those that derive from TextLocated say where. No bag is answered then.
    RefCntPtr<IParameters> ToParameters(const TString& json) const;
    RefCntPtr<IParameters> ToParameters(const TString& json, bool shortNames, bool lookupFlag) const;

    // Has diagnostics told of every leniency of later readings, on the thread that reads; null turns that off again, as
    // it is at first. Values and failures stay the same; reading takes longer. Copies of the serializer share it.
    // Requires: diagnostics outlives its use.
    void SetDiagnostics(IReadingDiagnostics* diagnostics) noexcept { m_diagnostics = diagnostics; }

private:
    TString m_namespace;
    IReadingDiagnostics* m_diagnostics = nullptr;
    bool m_captureEnabled = false;
    bool m_nestedCapture = false;
};

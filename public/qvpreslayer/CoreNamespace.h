// The namespace that the library itself needs: the tags of packed lists, and "param-type".
//
// Exceptions: strong.
#pragma once

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/ParameterTypeSerializer.h>
#include <qvpreslayer/ParametersRegistry.h>

// An identifier as a value. The registry is its table of names: any registered identifier may stand here, not only the
// four of the core namespace.
enum class QVPRESLAYER_API CoreParameterID : int {
    IntRLE = 285398425,     // "int-rle"
    UIntRLE = 297868712,    // "uint-rle"
    FloatRLE = 291551623,   // "float-rle"
    ParamType = 299054276,  // "param-type"
};

// The range of the core namespace, inclusive.
inline constexpr int kCoreNamespaceFirstID = 285212673;
inline constexpr int kCoreNamespaceLastID = 301989887;

// The text is the identifier's registered name of the form in force; reading looks it up in the namespace "qvcore" and
// its fallbacks. Throws what ParametersRegistry::GetName and GetID throw; there is no default.
template <>
struct QVPRESLAYER_API ParameterTypeTraits<CoreParameterID> : ParameterTypeTraitsBase {
    static TString ToText(const CoreParameterID& value);
    static CoreParameterID FromText(const TString& text);
};

extern template class ParameterTypeSerializer<CoreParameterID>;

// Registers the core namespace, filled at its first lookup. Hosts register it as "qvcore": packed lists need its tags,
// and CoreParameterID values are sought under that name. The one-argument form uses ParametersRegistry::Get().
QVPRESLAYER_API void RegisterCoreNamespaceParameters(ParametersRegistry& registry, const TString& name);
QVPRESLAYER_API void RegisterCoreNamespaceParameters(const TString& name);

// Registers nothing; there so that hosts can call the same pair of functions for every module. The one-argument form
// still needs a published registry.
QVPRESLAYER_API void RegisterCorePresModelParameters(ParametersRegistry& registry, const TString& name);
QVPRESLAYER_API void RegisterCorePresModelParameters(const TString& name);

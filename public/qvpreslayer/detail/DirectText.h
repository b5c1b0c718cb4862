// The short way from typed values to text. Not for callers.
//
// A single value or a plain list of one of the library's own types needs no text of its own on the way into a document:
// the walk offers it to the visitor as it is. A visitor that takes it writes exactly what its events would have
// written; one that does not, and every unusual case, gets the events.
#pragma once

#include <string_view>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameter.h>
#include <qvpreslayer/IParameterSerializer.h>

struct ParameterInfo;

namespace qvpreslayer::detail {

// The types whose values go the short way.
enum class DirectType : unsigned char { None, Int, UInt, Int64, UInt64, Float, Double, Bool, String };

// The type that a serializer stands for; None for a host's own and for all that go the long way, and for null.
QVPRESLAYER_API DirectType DirectTypeOf(const IParameterSerializer* serializer);

// Implemented by visitors that can take values as they are, beside IStructuredParameterVisitor.
class IDirectVisitor {
public:
    // Writes value, of the kind PTC_Text, PTC_Number, PTC_Bool or PTC_List (plain) that info tells, under the name of
    // that form. False, with nothing written, when the value is not exactly of info's type.
    virtual bool WriteDirectly(const ParameterInfo& info, bool useVerboseNames, const IParameter& value) = 0;

protected:
    ~IDirectVisitor() = default;
};

// The verbose names of one namespace as JSON spells them.
class ICamelNames {
public:
    // The identifier that the namespace itself gives to the name whose camel-case form this is; 0 when it has none, or
    // when the form does not lead back to the name.
    virtual int FindCamel(std::u16string_view camelName) const noexcept = 0;

protected:
    ~ICamelNames() = default;
};

}  // namespace qvpreslayer::detail

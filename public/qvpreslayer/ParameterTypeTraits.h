// What a serializer needs to know about one type of value.
//
// Each specialisation gives the kind of a single value, its text in both directions, and two habits that differ between
// families. Hosts specialise ParameterTypeTraits for a type of their own and then register
// ParameterTypeSerializer<TheirType>.
//
// Exceptions: the traits of this library are strong, and those of hosts have to be.
#pragma once

#include <chrono>
#include <ratio>

#include <qvcore/FieldName.h>
#include <qvcore/IntegerTypes.h>
#include <qvcore/PasswordString.h>
#include <qvcore/QualifiedName.h>
#include <qvcore/TString.h>
#include <qvcore/TUUID.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/ParameterTypeCategory.h>

// The durations that travel as parameters: tick counts in their own unit.
using HoursDuration = std::chrono::duration<int, std::ratio<3600, 1>>;
using MinutesDuration = std::chrono::duration<int, std::ratio<60, 1>>;
using SecondsDuration = std::chrono::duration<Int64, std::ratio<1, 1>>;
using MillisecondsDuration = std::chrono::duration<Int64, std::ratio<1, 1000>>;
using MicrosecondsDuration = std::chrono::duration<Int64, std::ratio<1, 1000000>>;
using NanosecondsDuration = std::chrono::duration<Int64, std::ratio<1, 1000000000>>;

// The habits of most types; specialisations derive from it and add ToText and FromText.
struct ParameterTypeTraitsBase {
    // The kind of a single value.
    static constexpr ParameterTypeCategory kCategory = PTC_Text;

    // Whether lists are packed in runs through DataSerializerHelpers, where the options ask for it.
    static constexpr bool kPacksRuns = false;

    // Whether a null value is a programming error ("m_ptr") rather than a missing parameter. So for enumerations.
    static constexpr bool kNullIsLogicError = false;
};

// static TString ToText(const T&);       the text of one value
// static T FromText(const TString&);     the value of one text; throws what its type says
template <class T>
struct ParameterTypeTraits;

namespace qvpreslayer::detail {

// Integers: decimal digits, "-" for negative ones, as TString reads them. ParameterParseException(0) for another text.
template <class T>
struct QVPRESLAYER_API NumberTraits : ParameterTypeTraitsBase {
    static constexpr ParameterTypeCategory kCategory = PTC_Number;
    static constexpr bool kPacksRuns = true;
    static TString ToText(const T& value);
    static T FromText(const TString& text);
};

// Durations: the tick count in their own unit, without a suffix. QuorvelException "Data serialization error" for
// another text. Hours and minutes keep the low 32 bits of what was read.
template <class T>
struct QVPRESLAYER_API DurationTraits : ParameterTypeTraitsBase {
    static TString ToText(const T& value);
    static T FromText(const TString& text);
};

}  // namespace qvpreslayer::detail

template <>
struct ParameterTypeTraits<int> : qvpreslayer::detail::NumberTraits<int> {};
template <>
struct ParameterTypeTraits<unsigned int> : qvpreslayer::detail::NumberTraits<unsigned int> {};
template <>
struct ParameterTypeTraits<Int64> : qvpreslayer::detail::NumberTraits<Int64> {};
template <>
struct ParameterTypeTraits<UInt64> : qvpreslayer::detail::NumberTraits<UInt64> {};

// Reals: fixed-point decimal with up to 7 (float) or 14 (double) fraction digits, never an exponent; "null" is a NaN;
// an infinity is written as 1 and 37 zeros, and read back as that number. Reading takes every text that TString reads
// as a real; ParameterParseException(0) for another.
template <>
struct ParameterTypeTraits<float> : qvpreslayer::detail::NumberTraits<float> {};
template <>
struct ParameterTypeTraits<double> : qvpreslayer::detail::NumberTraits<double> {};

// "true" or "false", exactly; ParameterParseException(0) for another text.
template <>
struct QVPRESLAYER_API ParameterTypeTraits<bool> : ParameterTypeTraitsBase {
    static constexpr ParameterTypeCategory kCategory = PTC_Bool;
    static TString ToText(const bool& value);
    static bool FromText(const TString& text);
};

// Names: their full value; what their ParseGlobal throws passes.
template <>
struct QVPRESLAYER_API ParameterTypeTraits<FieldName> : ParameterTypeTraitsBase {
    static TString ToText(const FieldName& value);
    static FieldName FromText(const TString& text);
};
template <>
struct QVPRESLAYER_API ParameterTypeTraits<QualifiedName> : ParameterTypeTraitsBase {
    static TString ToText(const QualifiedName& value);
    static QualifiedName FromText(const TString& text);
};

// Always the mask: a password never leaves as text. Reading takes the text as the password, so that what was written
// does not come back, by design.
template <>
struct QVPRESLAYER_API ParameterTypeTraits<PasswordString> : ParameterTypeTraitsBase {
    static TString ToText(const PasswordString& value);
    static PasswordString FromText(const TString& text);
};

// Identifiers: TUUID::ToString(0); what the TUUID constructor throws passes.
template <>
struct QVPRESLAYER_API ParameterTypeTraits<TUUID> : ParameterTypeTraitsBase {
    static TString ToText(const TUUID& value);
    static TUUID FromText(const TString& text);
};

template <>
struct ParameterTypeTraits<HoursDuration> : qvpreslayer::detail::DurationTraits<HoursDuration> {};
template <>
struct ParameterTypeTraits<MinutesDuration> : qvpreslayer::detail::DurationTraits<MinutesDuration> {};
template <>
struct ParameterTypeTraits<SecondsDuration> : qvpreslayer::detail::DurationTraits<SecondsDuration> {};
template <>
struct ParameterTypeTraits<MillisecondsDuration> : qvpreslayer::detail::DurationTraits<MillisecondsDuration> {};
template <>
struct ParameterTypeTraits<MicrosecondsDuration> : qvpreslayer::detail::DurationTraits<MicrosecondsDuration> {};
template <>
struct ParameterTypeTraits<NanosecondsDuration> : qvpreslayer::detail::DurationTraits<NanosecondsDuration> {};

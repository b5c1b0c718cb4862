// The text forms of typed values and tuples.
//
// Exceptions: strong.
#pragma once

#include <qvsys/RefCntPtr.h>

#include <qvcore/DataValue.h>
#include <qvcore/TString.h>
#include <qvcore/Tuple.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/ParameterTypeSerializer.h>
#include <qvpreslayer/ParameterTypeTraits.h>

// The text of a typed value names its type by a letter, so that it can be made again from the text alone:
//
//   i:42                 integer               b:true                     boolean
//   r:PRECISION:SCALE:X  real, fields may be   d:2024-02-29               date
//                        empty                 c:2024-02-29 23:59:58.5    date and time
//   s:COLLATION:TEXT     string, unescaped     t:[i:1],[s:root:a,b]       tuple
//   LETTER:null          null                  u:%null%                   unknown, written u:null
//
// A null string keeps its collation: s:root:%null%. A spatial value has no letter and cannot be written. What does not
// come back: a tuple without values, tuples of two or more values inside tuples, strings with "]," inside tuples and
// with "," inside tuples in tuples, the null tuple, and the string "%null%", which reads as null.
//
// Writing throws std::out_of_range "invalid map<K, T> key" for a spatial value. Reading throws it for an unknown
// letter, LogicException for a text that is not properly delimited, QuorvelException for content that is not of the
// type, for a collation name that is none, and for a malformed tuple element. Tuples nest
// PresLayerLimits::GetTupleDepth() levels deep in either direction; QuorvelException beyond.
//
// Lists are written through JSON as bare values, without letters, and cannot be read back from there; the texts of
// ToStringList, and maps and single values, can.
template <>
struct QVPRESLAYER_API ParameterTypeTraits<DataValue> : ParameterTypeTraitsBase {
    static constexpr bool kPacksRuns = true;
    static TString ToText(const DataValue& value);
    static DataValue FromText(const TString& text);
};

extern template class ParameterTypeSerializer<DataValue>;

// The text of a tuple: every value's text in square brackets, joined by commas, without outer brackets.
class QVPRESLAYER_API TupleDataValueSerializer {
public:
    // The empty text for a tuple without values; LogicException "m_ptr" for a null pointer.
    static TString ToString(const RefCntPtr<Tuple>& tuple);

    // The tuple of a text. A string value may hold commas: the pieces behind it, up to one that ends with "]", belong
    // to it as they stand. Throws as the text of typed values does.
    static RefCntPtr<Tuple> FromString(const TString& text);
};

// The bare text of a value, for places where its type is known: no letter, collation or precision. "null" for the null
// of every type but string.
class QVPRESLAYER_API ContextualDataValueSerializerCore {
public:
    static TString ToString(const DataValue& value);
};

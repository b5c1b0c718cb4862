// The types of single values that a vocabulary can name: a row for each, and everything else follows from it.
//
// Threads: the table is made once and never changes.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

namespace qvpres {

// How the text of a value stands in JSON, and which texts are read.
enum class TextForm {
    AnyText,      // quoted, any text is read
    Integer,      // bare, within the bounds of the type
    Real,         // bare; not a number is null
    Bool,         // bare
    Name,         // quoted, a qualified name
    UUID,         // quoted
    Duration,     // quoted: ticks
    Password,     // quoted, always the mask
    Enumeration,  // quoted; any text is read, an unknown one as the default
    TypedValue,   // quoted: a letter and the value
    ParameterID,  // quoted: the name of a parameter
};

// One type. Rows live as long as the program; two types are the same when they are the same row.
struct ValueType {
    std::u16string_view name;  // as declaration files spell it: "int", "data-value", "FontWeight"
    std::string_view cppType;  // what a value is in C++: "int", "DataValue", "FontWeight"
    TextForm form;
    ParameterTypeCategory category;  // PTC_Text, PTC_Number or PTC_Bool

    // A new serializer of the type, as hosts register it.
    RefCntPtr<IParameterSerializer> (*makeSerializer)();

    // Whether a serializer is the library's own of this type.
    bool (*isSerializerOf)(const IParameterSerializer& serializer);

    // The texts of an enumeration, upwards by number, and the one that unknown texts read as; else empty.
    std::vector<std::u16string_view> names;
    std::u16string_view defaultName;
};

// Every scalar type and every enumeration of the library.
std::span<const ValueType> GetValueTypes();

// The type of that name, or of that serializer; null when there is none.
const ValueType* FindValueType(std::u16string_view name);
const ValueType* FindValueTypeOf(const IParameterSerializer& serializer);

}  // namespace qvpres

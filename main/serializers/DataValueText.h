// What the texts of typed values and of tuples share. Included by the serializers of both.
#pragma once

#include <string_view>

#include <qvcore/DataValue.h>
#include <qvcore/TString.h>

// Under which failures of these texts are reported.
inline constexpr const char* kSerializersModule = "main/serializers/CoreSerializers";

// Appends the typed text of value; the value of a typed text.
void AppendTypedText(TString& out, const DataValue& value);
DataValue FromTypedText(std::u16string_view text);

// Appends the text of a tuple; the tuple of a text.
void AppendTupleText(TString& out, const Tuple& tuple);
RefCntPtr<Tuple> FromTupleText(std::u16string_view text);

// Appends the bare text of a value, as all typed texts hold it.
void AppendBareText(TString& out, const DataValue& value);

// Typed values and their texts. Promised:
//
//   - any text is read as the rules say (TypedTextModel), or refused by the exception of the rule that it breaks;
//   - a value is written as the rules say, with its letter and bare, and comes back identical, labels, collation and
//     the sign of zero included, but for what DataValueSerializer.h lists.
//
// The last byte tells whether the others are a text (UTF-8, or units) or make a value.
#include "fuzz/support/RandomBag.h"
#include "fuzz/support/TypedTextModel.h"

using namespace fuzz;

namespace {

using Serializer = ParameterTypeSerializer<DataValue>;

void CheckWriting(const DataValue& value) {
    TString expected;
    TString text;
    const std::string failure = typed_text_model::FailureOf([&] { expected = typed_text_model::Write(value, 0); });
    RequireEqual(failure, typed_text_model::FailureOf([&] { text = Serializer::TypeToString(value); }),
                 "the failure of a value that cannot be written");
    RequireEqual(expected, text, "the text of a typed value");
    if (value.GetDataType() != DataType::Spatial) {
        const bool isNull = value.IsSpecial() && value.GetDataType() != DataType::CString;
        RequireEqual(isNull ? TString(L"null") : typed_text_model::Bare(value),
                     ContextualDataValueSerializerCore::ToString(value), "the bare text of a typed value");
    }
    if (failure == "none" && typed_text_model::ComesBack(value, 0)) {
        Require(typed_text_model::IsIdentical(value, Serializer::TypeFromString(text)),
                "a typed value comes back from its text");
    }
}

void CheckReading(const TString& text) {
    DataValue expected;
    DataValue value;
    const std::string failure = typed_text_model::FailureOf([&] { expected = typed_text_model::Read(text, 0); });
    RequireEqual(failure, typed_text_model::FailureOf([&] { value = Serializer::TypeFromString(text); }),
                 "the failure of a text that is no typed value");
    Require(typed_text_model::IsIdentical(expected, value), "the value of a text");
    if (failure == "none") {
        CheckWriting(value);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PresLayerLimits::SetTupleDepth(typed_text_model::kDeepest);
    Bytes bytes(data, size);
    switch (bytes.LastByte() % 4) {
        case 0:
            CheckWriting(RandomTyped(bytes, 2));
            break;
        case 1:
            CheckWriting(Spatial(bytes.RestAsText(true)));
            break;
        case 2:
            CheckReading(bytes.RestAsText(false));
            break;
        default:
            CheckReading(bytes.RestAsText(true));
    }
    return 0;
}

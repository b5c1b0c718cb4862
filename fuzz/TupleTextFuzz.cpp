// Tuples and their texts. Promised:
//
//   - any text is read as the rules say (TypedTextModel), or refused by the exception of the rule that it breaks;
//   - a tuple is written as the rules say, and comes back identical but for what DataValueSerializer.h lists;
//   - levels beyond the limit are one exception in both directions.
//
// The last byte tells whether the others are a text or make a tuple.
#include "fuzz/support/RandomBag.h"
#include "fuzz/support/TypedTextModel.h"

using namespace fuzz;

namespace {

void CheckReading(const TString& text) {
    RefCntPtr<Tuple> expected;
    RefCntPtr<Tuple> tuple;
    const std::string failure = typed_text_model::FailureOf([&] { expected = typed_text_model::ReadTuple(text, 0); });
    RequireEqual(failure, typed_text_model::FailureOf([&] { tuple = TupleDataValueSerializer::FromString(text); }),
                 "the failure of a text that is no tuple");
    Require(!expected == !tuple, "a text is a tuple or not");
    Require(!tuple || typed_text_model::IsIdentical(expected, tuple), "the tuple of a text");
}

void CheckWriting(const RefCntPtr<Tuple>& tuple) {
    TString expected;
    TString text;
    const std::string failure =
        typed_text_model::FailureOf([&] { expected = typed_text_model::WriteTuple(*tuple, 0); });
    RequireEqual(failure, typed_text_model::FailureOf([&] { text = TupleDataValueSerializer::ToString(tuple); }),
                 "the failure of a tuple that cannot be written");
    RequireEqual(expected, text, "the text of a tuple");
    CheckReading(text);
    if (failure == "none" && typed_text_model::ComesBack(tuple, 0)) {
        Require(typed_text_model::IsIdentical(tuple, TupleDataValueSerializer::FromString(text)), "a tuple comes back");
    }
}

RefCntPtr<Tuple> RandomTuple(Bytes& bytes) {
    DataValue value = RandomTyped(bytes, 3);
    for (std::size_t levels = bytes.Below(8) == 0 ? 16 + bytes.Below(6) : bytes.Below(3); levels > 0; --levels) {
        value = MakeRefCnt<Tuple>(std::vector<DataValue>{value});
    }
    std::vector<DataValue> values{value};
    while (!bytes.AtEnd() && values.size() < 20) {
        values.push_back(RandomTyped(bytes, 2));
    }
    return MakeRefCnt<Tuple>(std::move(values));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PresLayerLimits::SetTupleDepth(typed_text_model::kDeepest);
    Bytes bytes(data, size);
    switch (bytes.LastByte() % 3) {
        case 0:
            CheckWriting(RandomTuple(bytes));
            break;
        case 1:
            CheckReading(bytes.RestAsText(false));
            break;
        default:
            CheckReading(bytes.RestAsText(true));
    }
    return 0;
}

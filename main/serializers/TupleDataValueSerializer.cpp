// The text of a tuple: "[" typed text "]" for each value, "," between two. Nothing is escaped, so that a string with
// commas spreads over several pieces, and is put together again when it is read.
#include <qvpreslayer/DataValueSerializer.h>

#include <utility>
#include <vector>

#include <qvsys/QuorvelException.h>

#include <qvcore/DataValueFormatter.h>

#include <qvpreslayer/PresLayerLimits.h>
#include <qvpreslayer/detail/StackGuard.h>

#include "main/serializers/DataValueText.h"

namespace {

constexpr char16_t kOpen = u'[';
constexpr char16_t kClose = u']';
constexpr char16_t kSeparator = u',';

// The shortest piece that starts an element: a bracket, a letter, a delimiter, and a character.
constexpr std::size_t kShortestPiece = 4;

[[noreturn]] void ThrowMalformedElement() { throw QuorvelException(u"Malformed serialization of a tuple element"); }

thread_local int s_tupleDepth = 0;

// One level of nested tuples on this thread, written or read.
class TupleLevel {
public:
    TupleLevel() {
        const bool low = s_tupleDepth >= qvpreslayer::detail::kUnguardedLevels && qvpreslayer::detail::IsStackLow();
        if (low || s_tupleDepth >= PresLayerLimits::GetTupleDepth()) {
            ThrowMalformedElement();
        }
        ++s_tupleDepth;
    }
    TupleLevel(const TupleLevel&) = delete;
    TupleLevel& operator=(const TupleLevel&) = delete;
    ~TupleLevel() { --s_tupleDepth; }
};

// The pieces between separators, one after the other.
class Pieces {
public:
    explicit Pieces(std::u16string_view text) : m_rest(text) {}

    bool AtEnd() const noexcept { return m_atEnd; }

    std::u16string_view Take() {
        const std::size_t end = m_rest.find(kSeparator);
        const std::u16string_view piece = m_rest.substr(0, end);
        m_atEnd = end == std::u16string_view::npos;
        m_rest.remove_prefix(m_atEnd ? m_rest.size() : end + 1);
        return piece;
    }

private:
    std::u16string_view m_rest;
    bool m_atEnd = false;
};

// A string that lost its end to separators: its content, and the pieces behind it as they stand.
DataValue JoinString(const DataValue& start, Pieces& pieces) {
    TString text = start.IsSpecial() ? DataValueFormatter::valueNull : start.GetString().GetText();
    bool closed = false;
    while (!closed && !pieces.AtEnd()) {
        const std::u16string_view piece = pieces.Take();
        closed = piece.ends_with(kClose);
        text.push_back(kSeparator);
        text.append(piece.substr(0, piece.size() - (closed ? 1 : 0)));
    }
    return DataValue(IndirectString::Lookup(start.GetCollation(), text));
}

[[noreturn]] void ThrowMalformedPiece(int line) {
    ThrowLogicException(
        "Malformed serialization of data value tuple, length must be at least 4 and begin with square bracket", line,
        kSerializersModule);
}

void RequireBrackets(std::u16string_view text) {
    if (text.size() < 2 || !text.starts_with(kOpen) || !text.ends_with(kClose)) {
        ThrowLogicException("Tuple should begin and end with square brackets", __LINE__, kSerializersModule);
    }
}

// The value of a piece without its brackets. A piece holds no separator, so that each tuple in it has one value: they
// are opened one after the other, and put around the value from the innermost outwards.
DataValue FromPiece(std::u16string_view piece) {
    constexpr std::u16string_view kTuple = u"t:";
    int levels = 0;
    for (; piece.starts_with(kTuple); ++levels) {
        piece.remove_prefix(kTuple.size());
        RequireBrackets(piece);
        if (s_tupleDepth + levels >= PresLayerLimits::GetTupleDepth()) {
            ThrowMalformedElement();
        }
        if (piece.size() < kShortestPiece) {
            ThrowMalformedPiece(__LINE__);
        }
        piece = piece.substr(1, piece.size() - 2);
    }
    DataValue value = FromTypedText(piece);
    for (; levels > 0; --levels) {
        std::vector<DataValue> values;
        values.push_back(std::move(value));
        value = MakeRefCnt<Tuple>(std::move(values));
    }
    return value;
}

DataValue TakeElement(Pieces& pieces) {
    std::u16string_view piece = pieces.Take();
    if (piece.size() < kShortestPiece || !piece.starts_with(kOpen)) {
        ThrowMalformedPiece(__LINE__);
    }
    const bool closed = piece.ends_with(kClose);
    piece.remove_prefix(1);
    piece.remove_suffix(closed ? 1 : 0);
    DataValue value = FromPiece(piece);
    if (closed) {
        return value;
    }
    if (value.GetDataType() != DataType::CString) {
        ThrowMalformedElement();
    }
    return JoinString(value, pieces);
}

}  // namespace

void AppendTupleText(TString& out, const Tuple& tuple) {
    const TupleLevel level;
    bool first = true;
    for (const DataValue& value : tuple.GetValues()) {
        if (!std::exchange(first, false)) {
            out.push_back(kSeparator);
        }
        out.push_back(kOpen);
        AppendTypedText(out, value);
        out.push_back(kClose);
    }
}

RefCntPtr<Tuple> FromTupleText(std::u16string_view text) {
    RequireBrackets(text);
    const TupleLevel level;
    std::vector<DataValue> values;
    Pieces pieces(text);
    while (!pieces.AtEnd()) {
        values.push_back(TakeElement(pieces));
    }
    return MakeRefCnt<Tuple>(std::move(values));
}

TString TupleDataValueSerializer::ToString(const RefCntPtr<Tuple>& tuple) {
    TString text;
    AppendTupleText(text, *tuple);
    return text;
}

RefCntPtr<Tuple> TupleDataValueSerializer::FromString(const TString& text) { return FromTupleText(text); }

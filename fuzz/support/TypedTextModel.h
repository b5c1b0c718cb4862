// Typed values and tuples to text and back, the slow way: the rules of DataValueSerializer.h word for word, over pieces
// that are cut out and copied. Which bare contents are read, the parser of the platform decides.
#pragma once

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

namespace typed_text_model {

// The kinds of failure.
struct NotDelimited {};   // LogicException
struct NotAValue {};      // QuorvelException
struct UnknownLetter {};  // std::out_of_range

// Levels of tuples, for the library and here: every rule shows, and deep values do not take all the time.
constexpr int kDeepest = 20;

inline DataValue Parse(DataType type, const Collation& collation, std::uint8_t precision, std::uint8_t scale,
                       const TString& text) {
    try {
        return DataValueParser::ParseGeneric(type, collation, precision, scale, text, false);
    } catch (const QuorvelException&) {
        throw NotAValue();
    }
}

inline DataType TypeOf(const TString& letter) {
    const TString letters(L"irscbdt?u");  // by number
    if (letter.size() != 1 || letter == L"?" || letters.indexOf(letter) < 0) {
        throw UnknownLetter();
    }
    return static_cast<DataType>(letters.indexOf(letter));
}

inline std::uint8_t Label(const TString& field) {
    return field.empty() ? DataValue::kUnset : static_cast<std::uint8_t>(field.toInt());
}

// The first count fields, and as the last one all that is left.
inline std::vector<TString> Fields(const TString& text, std::size_t count) {
    std::vector<TString> fields;
    TString rest = text;
    while (fields.size() < count) {
        const int at = rest.indexOf(L":");
        if (at < 0) {
            throw NotDelimited();
        }
        fields.push_back(rest.left(at));
        rest = rest.mid(at + 1);
    }
    fields.push_back(rest);
    return fields;
}

inline DataValue Text(const Collation& collation, const TString& text) {
    if (text == DataValueFormatter::valueNull) {
        return DataValue::Null(DataType::CString, collation);
    }
    return IndirectString::Lookup(collation, text);
}

RefCntPtr<Tuple> ReadTuple(const TString& text, int depth);

inline DataValue Read(const TString& text, int depth) {
    const std::vector<TString> fields = Fields(text, 1);
    if (fields[0].empty()) {
        throw NotDelimited();
    }
    const DataType type = TypeOf(fields[0]);
    const TString& rest = fields[1];
    if (type == DataType::Tuple) {
        return ReadTuple(rest, depth);
    }
    if (rest == L"null") {
        return DataValue::Null(type);
    }
    if (type == DataType::Real) {
        Fields(text, 3);  // there must be as many
        const std::vector<TString> parts = text.split(L":");
        return Parse(type, GetUnknownCollation(), Label(parts[1]), Label(parts[2]), parts[3]);
    }
    if (type == DataType::CString) {
        const std::vector<TString> parts = Fields(text, 2);
        try {
            return Text(Collation(parts[1], 0), parts[2]);
        } catch (const QuorvelException&) {  // no name of a collation
            throw NotAValue();
        }
    }
    const bool isDelimited = type == DataType::Date || type == DataType::DateTime;
    return Parse(type, GetUnknownCollation(), DataValue::kUnset, DataValue::kUnset,
                 isDelimited ? TString(L"#") + rest + TString(L"#") : rest);
}

inline RefCntPtr<Tuple> ReadTuple(const TString& text, int depth) {
    if (text.size() < 2 || !text.startsWith(L"[") || !text.endsWith(L"]")) {
        throw NotDelimited();
    }
    if (depth == kDeepest) {
        throw NotAValue();
    }
    const std::vector<TString> pieces = text.split(L",");
    std::vector<DataValue> values;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const TString& piece = pieces[i];
        if (piece.size() < 4 || !piece.startsWith(L"[")) {
            throw NotDelimited();
        }
        const bool isClosed = piece.endsWith(L"]");
        DataValue value = Read(piece.mid(1, piece.length() - (isClosed ? 2 : 1)), depth + 1);
        if (!isClosed && value.GetDataType() != DataType::CString) {
            throw NotAValue();
        }
        if (!isClosed && i + 1 < pieces.size()) {
            TString joined = value.IsSpecial() ? DataValueFormatter::valueNull : value.GetString().GetText();
            do {
                joined += TString(L",") + pieces[++i];
            } while (!joined.endsWith(L"]") && i + 1 < pieces.size());
            if (joined.endsWith(L"]")) {
                joined = joined.left(joined.length() - 1);
            }
            value = IndirectString::Lookup(value.GetCollation(), joined);
        }
        values.push_back(value);
    }
    return MakeRefCnt<Tuple>(std::move(values));
}

inline std::string BareDate(const Date& date) {
    char text[32];
    std::snprintf(text, sizeof(text), "%04d-%02u-%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text;
}

inline std::string BareTime(std::chrono::nanoseconds time) {
    const auto count = static_cast<long long>(time.count());
    const long long seconds = count / 1000000000;
    char text[64];
    std::snprintf(text, sizeof(text), "%02lld:%02lld:%02lld.%09lld", seconds / 3600, seconds / 60 % 60, seconds % 60,
                  count % 1000000000);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') {
        result.pop_back();
    }
    return result;
}

// A value without its letter; a null is %null%.
inline TString Bare(const DataValue& value) {
    if (value.IsSpecial()) {
        return L"%null%";
    }
    TString text;
    char digits[40];
    switch (value.GetDataType()) {
        case DataType::Integer:
            return TString::FromUtf8(std::to_string(value.GetInteger()));
        case DataType::Real:
            return TString::FromUtf8(std::string(digits, std::to_chars(digits, std::end(digits), value.GetReal()).ptr));
        case DataType::CString:
            return value.GetString().GetText();
        case DataType::DateTime:
            return TString::FromUtf8(BareDate(value.GetDateTime().GetDate()) + " " +
                                     BareTime(value.GetDateTime().GetTimeOfDay()));
        case DataType::Boolean:
            return value.GetBoolean() ? L"true" : L"false";
        case DataType::Date:
            return TString::FromUtf8(BareDate(value.GetDate()));
        case DataType::Tuple:
            for (const DataValue& element : value.GetTuple()->GetValues()) {
                text += (text.empty() && &element == &value.GetTuple()->GetValues().front() ? TString() : L",") +
                        Bare(element);
            }
            return text;
        default:
            throw UnknownLetter();
    }
}

inline TString Field(std::uint8_t label) {
    return label == DataValue::kUnset ? TString() : TString::FromUtf8(std::to_string(label));
}

inline TString WriteTuple(const Tuple& tuple, int depth);

inline TString Write(const DataValue& value, int depth) {
    const TString letter = TString(L"irscbdt?u").mid(static_cast<int>(value.GetDataType()), 1);
    switch (value.GetDataType()) {
        case DataType::Spatial:
            throw UnknownLetter();
        case DataType::CString:
            return letter + L":" + value.GetCollation().GetName() + L":" + Bare(value);
        default:
            break;
    }
    if (value.IsSpecial()) {
        return letter + L":null";
    }
    if (value.GetDataType() == DataType::Real) {
        return letter + L":" + Field(value.GetPrecision()) + L":" + Field(value.GetScale()) + L":" + Bare(value);
    }
    const bool isTuple = value.GetDataType() == DataType::Tuple;
    return letter + L":" + (isTuple ? WriteTuple(*value.GetTuple(), depth) : Bare(value));
}

inline TString WriteTuple(const Tuple& tuple, int depth) {
    if (depth == kDeepest) {
        throw NotAValue();
    }
    TString text;
    for (std::size_t i = 0; i < tuple.GetValues().size(); ++i) {
        text += (i == 0 ? L"[" : L",[") + Write(tuple.GetValues()[i], depth + 1) + L"]";
    }
    return text;
}

// Whether a value comes back from its text, by the list in DataValueSerializer.h; depth is 0 for a value by itself.
inline bool ComesBack(const DataValue& value, int depth) {
    if (value.IsSpecial()) {
        return value.GetDataType() != DataType::Tuple && value.GetDataType() != DataType::Spatial;
    }
    if (value.GetDataType() == DataType::CString) {
        const TString& text = value.GetString().GetText();
        const bool isSplit = (depth > 0 && text.indexOf(L"],") >= 0) || (depth > 1 && text.indexOf(L",") >= 0);
        return text != L"%null%" && !isSplit;
    }
    if (value.GetDataType() != DataType::Tuple) {
        return value.GetDataType() != DataType::Spatial;
    }
    const std::vector<DataValue>& values = value.GetTuple()->GetValues();
    bool comesBack = !values.empty() && (values.size() == 1 || depth == 0);
    for (const DataValue& element : values) {
        comesBack = comesBack && ComesBack(element, depth + 1);
    }
    return comesBack;
}

// What == looks at, and labels, collations and the sign of zero.
inline bool IsIdentical(const DataValue& left, const DataValue& right) {
    if (left.GetDataType() != right.GetDataType() || left.IsSpecial() != right.IsSpecial() ||
        left.GetPrecision() != right.GetPrecision() || left.GetScale() != right.GetScale() ||
        left.GetCollation() != right.GetCollation()) {
        return false;
    }
    if (left.IsSpecial() || (left.GetDataType() != DataType::Real && left.GetDataType() != DataType::Tuple)) {
        return left == right;
    }
    if (left.GetDataType() == DataType::Real) {
        return left == right && std::signbit(left.GetReal()) == std::signbit(right.GetReal());
    }
    const auto& leftValues = left.GetTuple()->GetValues();
    const auto& rightValues = right.GetTuple()->GetValues();
    return std::equal(leftValues.begin(), leftValues.end(), rightValues.begin(), rightValues.end(), IsIdentical);
}

// Which failure the library throws for each of the model's.
template <class Reading>
std::string FailureOf(Reading&& reading) {
    try {
        reading();
        return "none";
    } catch (const NotDelimited&) {
        return "delimiters";
    } catch (const NotAValue&) {
        return "content";
    } catch (const UnknownLetter&) {
        return "letter";
    } catch (const LogicException&) {
        return "delimiters";
    } catch (const QuorvelException&) {
        return "content";
    } catch (const std::out_of_range&) {
        return "letter";
    }
}

}  // namespace typed_text_model

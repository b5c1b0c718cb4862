// A JSON text that cannot be read.
//
// Exceptions: making, copying, Clone, Throw and SetLocation are strong; asking and SetMismatch never throw. Assigning
// is basic.
#pragma once

#include <qvsys/QuorvelException.h>

#include <qvcore/Messages.h>
#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/ParameterTypeCategory.h>
#include <qvpreslayer/TextLocation.h>

// What a JSON value is. The order is that of the names that messages use: object, array, string, bool, integer, real,
// null.
enum class JSONKind { Object, Array, String, Bool, Integer, Real, Null };

// The message is the localized text of its number: Messages::kJSONNotValid, or Messages::kJSONKindMismatch with the
// member's name. Beside it stand the place (GetLocation) and, for a kind that does not fit, who wanted what.
class QVPRESLAYER_API JSONParseException : public QuorvelException, public TextLocated {
public:
    explicit JSONParseException(StringId id);
    JSONParseException(StringId id, const TString& argument);
    JSONParseException(StringId id, const TString& argument1, const TString& argument2);
    JSONParseException(const JSONParseException&);
    JSONParseException& operator=(const JSONParseException&);
    ~JSONParseException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    // The number of the message.
    StringId GetStringId() const noexcept { return m_stringId; }

    // For Messages::kJSONKindMismatch: the parameter, its registered kind, and the kind of value that was found.
    // Otherwise 0, PTC_None and JSONKind::Null.
    int GetID() const noexcept { return m_id; }
    ParameterTypeCategory GetExpectedKind() const noexcept { return m_expectedKind; }
    JSONKind GetFoundKind() const noexcept { return m_foundKind; }
    void SetMismatch(int id, ParameterTypeCategory expected, JSONKind found) noexcept;

private:
    StringId m_stringId;
    int m_id = 0;
    ParameterTypeCategory m_expectedKind = PTC_None;
    JSONKind m_foundKind = JSONKind::Null;
};

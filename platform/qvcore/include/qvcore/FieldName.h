// The name of a data field.
//
// Exceptions: strong.
#pragma once

#include <string_view>
#include <utility>

#include <qvcore/Export.h>
#include <qvcore/QualifiedName.h>

// A qualified name that stands for a field; same text form and same failures as QualifiedName.
class QVCORE_API FieldName : public QualifiedName {
public:
    FieldName() = default;

    static FieldName ParseGlobal(const TString& text);
    static bool TryParseGlobal(std::u16string_view text, FieldName& name);

    friend bool operator==(const FieldName&, const FieldName&) = default;

private:
    explicit FieldName(QualifiedName name) : QualifiedName(std::move(name)) {}
};

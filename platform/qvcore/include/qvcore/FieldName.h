// The name of a data field.
//
// Exceptions: strong.
#pragma once

#include <utility>

#include <qvcore/Export.h>
#include <qvcore/QualifiedName.h>

// A qualified name that stands for a field; same text form and same failures as QualifiedName.
class QVCORE_API FieldName : public QualifiedName {
public:
    FieldName() = default;

    static FieldName ParseGlobal(const TString& text);

    friend bool operator==(const FieldName&, const FieldName&) = default;

private:
    explicit FieldName(QualifiedName name) : QualifiedName(std::move(name)) {}
};

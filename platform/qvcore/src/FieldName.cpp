#include <qvcore/FieldName.h>

FieldName FieldName::ParseGlobal(const TString& text) { return FieldName(QualifiedName::ParseGlobal(text)); }

bool FieldName::TryParseGlobal(std::u16string_view text, FieldName& name) {
    return QualifiedName::TryParseGlobal(text, name);
}

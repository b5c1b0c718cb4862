#include <qvcore/FieldName.h>

FieldName FieldName::ParseGlobal(const TString& text) { return FieldName(QualifiedName::ParseGlobal(text)); }

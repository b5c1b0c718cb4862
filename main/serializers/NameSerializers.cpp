// Names, identifiers and passwords: values of the platform with a text of their own.
#include <qvpreslayer/ParameterTypeSerializer.h>

TString ParameterTypeTraits<FieldName>::ToText(const FieldName& value) { return value.GetFullValue(); }

FieldName ParameterTypeTraits<FieldName>::FromText(const TString& text) { return FieldName::ParseGlobal(text); }

TString ParameterTypeTraits<QualifiedName>::ToText(const QualifiedName& value) { return value.GetFullValue(); }

QualifiedName ParameterTypeTraits<QualifiedName>::FromText(const TString& text) {
    return QualifiedName::ParseGlobal(text);
}

// Whatever the password: this is the only place where one could become text.
TString ParameterTypeTraits<PasswordString>::ToText(const PasswordString&) { return PasswordString::s_Mask; }

PasswordString ParameterTypeTraits<PasswordString>::FromText(const TString& text) { return PasswordString(text); }

TString ParameterTypeTraits<TUUID>::ToText(const TUUID& value) { return value.ToString(0); }

TUUID ParameterTypeTraits<TUUID>::FromText(const TString& text) { return TUUID(text); }

template class ParameterTypeSerializer<FieldName>;
template class ParameterTypeSerializer<QualifiedName>;
template class ParameterTypeSerializer<PasswordString>;
template class ParameterTypeSerializer<TUUID>;

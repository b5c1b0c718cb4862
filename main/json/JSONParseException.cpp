#include <qvpreslayer/JSONParseException.h>

#include <new>

JSONParseException::JSONParseException(StringId id) : QuorvelException(LookupTStr(id)), m_stringId(id) {}

JSONParseException::JSONParseException(StringId id, const TString& argument)
    : QuorvelException(LookupTFmtStr(id, {argument})), m_stringId(id) {}

JSONParseException::JSONParseException(StringId id, const TString& argument1, const TString& argument2)
    : QuorvelException(LookupTFmtStr(id, {argument1, argument2})), m_stringId(id) {}

JSONParseException::JSONParseException(const JSONParseException&) = default;
JSONParseException& JSONParseException::operator=(const JSONParseException&) = default;
JSONParseException::~JSONParseException() = default;

QuorvelException* JSONParseException::Clone() const { return new (std::nothrow) JSONParseException(*this); }

void JSONParseException::Throw() const { throw *this; }

void JSONParseException::SetMismatch(int id, ParameterTypeCategory expected, JSONKind found) noexcept {
    m_id = id;
    m_expectedKind = expected;
    m_foundKind = found;
}

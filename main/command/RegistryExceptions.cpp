#include <qvpreslayer/RegistryExceptions.h>

#include "main/command/ExceptionMembers.h"

QV_DEFINE_EXCEPTION_MEMBERS(ParameterNotFoundException)
QV_DEFINE_EXCEPTION_MEMBERS(ParameterParseException)
QV_DEFINE_EXCEPTION_MEMBERS(ParameterNamespaceNotFoundException)
QV_DEFINE_EXCEPTION_MEMBERS(ParameterNamespaceAlreadyExistsException)
QV_DEFINE_EXCEPTION_MEMBERS(ParameterNamespaceAlreadyHasFallbackException)
QV_DEFINE_EXCEPTION_MEMBERS(CyclicFallbacksException)

namespace {

TString NotFound(const TString& what) { return u"Error finding command parameter: " + what; }

}  // namespace

ParameterNotFoundException::ParameterNotFoundException(const TString& name)
    : QuorvelException(NotFound(name)), m_id(0), m_name(name) {}

ParameterNotFoundException::ParameterNotFoundException(int id)
    : QuorvelException(NotFound(TString::number(id))), m_id(id) {}

ParameterParseException::ParameterParseException(int id)
    : QuorvelException(u"Error parsing command parameter value string"), m_id(id) {}

ParameterNamespaceNotFoundException::ParameterNamespaceNotFoundException(const TString& name)
    : QuorvelException(u"Unknown parameter namespace: " + name), m_name(name) {}

ParameterNamespaceAlreadyExistsException::ParameterNamespaceAlreadyExistsException(const TString& name)
    : QuorvelException(u"Namespace \"" + name + u"\" already exists in registry"), m_name(name) {}

ParameterNamespaceAlreadyHasFallbackException::ParameterNamespaceAlreadyHasFallbackException(const TString& name)
    : QuorvelException(u"A fallback has already been registered for namespace \"" + name + u"\""), m_name(name) {}

CyclicFallbacksException::CyclicFallbacksException(const TString& name)
    : QuorvelException(u"Trying to set a fallback for namespace \"" + name + u"\" resulted in a fallback loop"),
      m_name(name) {}

// Failures of the registry: names, identifiers and namespaces that are not there, or are there already.
//
// Building one never touches the registry, so that it can be thrown at any time.
//
// Exceptions: making, copying, Clone and Throw are strong; asking never throws, but for names, which are copied.
// Assigning is basic.
#pragma once

#include <qvsys/QuorvelException.h>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/TextLocation.h>

// No such parameter. Message: "Error finding command parameter: " and the name or the decimal identifier.
class QVPRESLAYER_API ParameterNotFoundException : public QuorvelException, public TextLocated {
public:
    explicit ParameterNotFoundException(const TString& name);
    explicit ParameterNotFoundException(int id);
    ParameterNotFoundException(const ParameterNotFoundException&);
    ParameterNotFoundException& operator=(const ParameterNotFoundException&);
    ~ParameterNotFoundException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    // The identifier; 0 when the parameter was sought by name.
    int GetID() const noexcept { return m_id; }

    // The name; empty when the parameter was sought by identifier.
    TString GetName() const { return m_name; }

private:
    int m_id;
    TString m_name;
};

// A text is none of the parameter's type. Message: "Error parsing command parameter value string".
class QVPRESLAYER_API ParameterParseException : public QuorvelException, public TextLocated {
public:
    // id is 0 where the thrower does not know whose text it reads, as no serializer does.
    explicit ParameterParseException(int id);
    ParameterParseException(const ParameterParseException&);
    ParameterParseException& operator=(const ParameterParseException&);
    ~ParameterParseException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    int GetID() const noexcept { return m_id; }

private:
    int m_id;
};

// No such namespace. Message: "Unknown parameter namespace: " and the name.
class QVPRESLAYER_API ParameterNamespaceNotFoundException : public QuorvelException, public TextLocated {
public:
    explicit ParameterNamespaceNotFoundException(const TString& name);
    ParameterNamespaceNotFoundException(const ParameterNamespaceNotFoundException&);
    ParameterNamespaceNotFoundException& operator=(const ParameterNamespaceNotFoundException&);
    ~ParameterNamespaceNotFoundException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    TString GetName() const { return m_name; }

private:
    TString m_name;
};

// A namespace of that name is registered. Message: Namespace "name" already exists in registry.
class QVPRESLAYER_API ParameterNamespaceAlreadyExistsException : public QuorvelException {
public:
    explicit ParameterNamespaceAlreadyExistsException(const TString& name);
    ParameterNamespaceAlreadyExistsException(const ParameterNamespaceAlreadyExistsException&);
    ParameterNamespaceAlreadyExistsException& operator=(const ParameterNamespaceAlreadyExistsException&);
    ~ParameterNamespaceAlreadyExistsException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    TString GetName() const { return m_name; }

private:
    TString m_name;
};

// A namespace has one fallback at most. Message: A fallback has already been registered for namespace "name".
class QVPRESLAYER_API ParameterNamespaceAlreadyHasFallbackException : public QuorvelException {
public:
    explicit ParameterNamespaceAlreadyHasFallbackException(const TString& name);
    ParameterNamespaceAlreadyHasFallbackException(const ParameterNamespaceAlreadyHasFallbackException&);
    ParameterNamespaceAlreadyHasFallbackException& operator=(const ParameterNamespaceAlreadyHasFallbackException&);
    ~ParameterNamespaceAlreadyHasFallbackException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    TString GetName() const { return m_name; }

private:
    TString m_name;
};

// A fallback would lead back to its namespace. Message: Trying to set a fallback for namespace "name" resulted in a
// fallback loop.
class QVPRESLAYER_API CyclicFallbacksException : public QuorvelException {
public:
    explicit CyclicFallbacksException(const TString& name);
    CyclicFallbacksException(const CyclicFallbacksException&);
    CyclicFallbacksException& operator=(const CyclicFallbacksException&);
    ~CyclicFallbacksException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    TString GetName() const { return m_name; }

private:
    TString m_name;
};

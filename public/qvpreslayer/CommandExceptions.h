// What is wrong with the arguments of one command, as lists of parameter identifiers.
//
// Exceptions: making, copying, Clone, Throw and the Add operations are strong; asking never throws. Assigning is basic:
// lists that could not be copied keep what they held.
#pragma once

#include <utility>
#include <vector>

#include <qvsys/QuorvelException.h>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>

// Collects the complaints about one command, so that a caller can report them together. The message is always "Error in
// command parameters"; who wants names for the identifiers asks ParametersRegistry::GetName.
class QVPRESLAYER_API CommandException : public QuorvelException {
public:
    // text is kept for GetText; it does not reach the message.
    explicit CommandException(const TString& text);
    CommandException(const CommandException&);
    CommandException& operator=(const CommandException&);
    ~CommandException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    const TString& GetText() const noexcept { return m_text; }

    // Each appends one entry; order and repetitions are kept.
    void AddUnused(int id);
    void AddMissing(int id);
    void AddMissingOne(int id1, int id2);
    void AddWrongType(int id);
    void AddBadValue(int id);
    void AddOptional(int id);
    void AddHasMoreThanOne(int id1, int id2);
    void AddAtMostOne(int id1, int id2);

    // The entries in the order of the calls. Valid as long as the exception.
    const std::vector<int>& GetUnused() const noexcept { return m_unused; }
    const std::vector<int>& GetMissing() const noexcept { return m_missing; }
    const std::vector<std::pair<int, int>>& GetMissingOne() const noexcept { return m_missingOne; }
    const std::vector<int>& GetWrongType() const noexcept { return m_wrongType; }
    const std::vector<int>& GetBadValue() const noexcept { return m_badValue; }
    const std::vector<int>& GetOptional() const noexcept { return m_optional; }
    const std::vector<std::pair<int, int>>& GetHasMoreThanOne() const noexcept { return m_hasMoreThanOne; }
    const std::vector<std::pair<int, int>>& GetAtMostOne() const noexcept { return m_atMostOne; }

    // Whether any list but optional and at-most-one has an entry: those two are notes that travel with a real error.
    bool HasErrors() const noexcept;

private:
    TString m_text;
    std::vector<int> m_unused;
    std::vector<int> m_missing;
    std::vector<std::pair<int, int>> m_missingOne;
    std::vector<int> m_wrongType;
    std::vector<int> m_badValue;
    std::vector<int> m_optional;  // no error
    std::vector<std::pair<int, int>> m_hasMoreThanOne;
    std::vector<std::pair<int, int>> m_atMostOne;  // no error
};

// A parameter is not there. The identifier is 0 where the thrower does not know it.
class QVPRESLAYER_API MissingParameterCommandException : public CommandException {
public:
    explicit MissingParameterCommandException(int id);
    MissingParameterCommandException(const MissingParameterCommandException&);
    MissingParameterCommandException& operator=(const MissingParameterCommandException&);
    ~MissingParameterCommandException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    // The identifier given to the constructor.
    int GetParameterID() const { return GetMissing().front(); }
};

// A value is not of the type asked for. The identifier is 0 where the thrower does not know it.
class QVPRESLAYER_API TypeMismatchCommandException : public CommandException {
public:
    explicit TypeMismatchCommandException(int id);
    TypeMismatchCommandException(const TypeMismatchCommandException&);
    TypeMismatchCommandException& operator=(const TypeMismatchCommandException&);
    ~TypeMismatchCommandException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    // The identifier given to the constructor.
    int GetParameterID() const { return GetWrongType().front(); }
};

// A value is of the right type and still wrong. Offered to command handlers; the library itself never throws it.
class QVPRESLAYER_API BadValueParameterCommandException : public CommandException {
public:
    explicit BadValueParameterCommandException(int id);
    BadValueParameterCommandException(const BadValueParameterCommandException&);
    BadValueParameterCommandException& operator=(const BadValueParameterCommandException&);
    ~BadValueParameterCommandException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    // The identifier given to the constructor.
    int GetParameterID() const { return GetBadValue().front(); }
};

// Throws MissingParameterCommandException(0): for accessors that are handed no value and do not know whose it is.
[[noreturn]] QVPRESLAYER_API void ThrowMissingParameterCommandException();

// Throws TypeMismatchCommandException(id).
[[noreturn]] QVPRESLAYER_API void ThrowTypeMismatchCommandException(int id);

// The base of every failure that a caller can cause.
//
// Exceptions: making one, Clone and Throw are strong; copying, assigning and asking never throw.
//
// Every header says so what its operations promise when they throw:
//
//   strong         nothing has changed: it is as if the call had not been made, and it may be made again
//   basic          nothing is broken or lost, but a part of the work may be done; the header tells which
//   never throws   not even without memory
//
// std::bad_alloc comes from whatever makes something, and is not named each time.
#pragma once

#include <exception>
#include <memory>
#include <string>
#include <string_view>

#include <qvsys/Export.h>

// Carries a message of UTF-16 code units. Every derived class overrides Clone and Throw, so that an exception can be
// copied and thrown again as its own type by code that knows only this base.
class QVSYS_API QuorvelException : public std::exception {
public:
    explicit QuorvelException(std::u16string_view message);
    QuorvelException(const QuorvelException&) noexcept;
    QuorvelException& operator=(const QuorvelException&) noexcept;
    ~QuorvelException() override;

    // A copy on the heap of the same dynamic type, owned by the caller; null when there is no memory for the object,
    // std::bad_alloc when there is none for what it carries.
    virtual QuorvelException* Clone() const;

    // Throws a copy of this object as its own dynamic type.
    [[noreturn]] virtual void Throw() const;

    // The message, code unit by code unit. Valid as long as the exception.
    const std::u16string& GetMessageText() const noexcept;

    // The message in UTF-8; a surrogate without its partner becomes U+FFFD. Valid as long as the exception.
    const char* what() const noexcept override;

private:
    struct Message;
    std::shared_ptr<const Message> m_message;  // shared by copies: copying an exception does not throw
};

#include <qvsys/QuorvelException.h>

#include <new>

#include <qvsys/Utf8.h>

struct QuorvelException::Message {
    std::u16string text;
    std::string utf8;
};

QuorvelException::QuorvelException(std::u16string_view message)
    : m_message(std::make_shared<const Message>(Message{std::u16string(message), ToUtf8(message)})) {}

QuorvelException::QuorvelException(const QuorvelException&) noexcept = default;
QuorvelException& QuorvelException::operator=(const QuorvelException&) noexcept = default;
QuorvelException::~QuorvelException() = default;

QuorvelException* QuorvelException::Clone() const { return new (std::nothrow) QuorvelException(*this); }

void QuorvelException::Throw() const { throw *this; }

const std::u16string& QuorvelException::GetMessageText() const noexcept { return m_message->text; }

const char* QuorvelException::what() const noexcept { return m_message->utf8.c_str(); }

#include <qvsys/LogicException.h>

namespace {

const char* OrEmpty(const char* text) { return text == nullptr ? "" : text; }

}  // namespace

LogicException::LogicException(const char* expression, int line, const char* file)
    : std::logic_error(OrEmpty(expression)), m_line(line), m_file(OrEmpty(file)) {}

LogicException::~LogicException() = default;

void ThrowLogicException(const char* expression, int line, const char* file) {
    throw LogicException(expression, line, file);
}

#include "tools/qvpres/Terminal.h"

#include <cstdlib>
#include <cstring>
#include <iostream>

#include <unistd.h>

#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

using namespace std::chrono_literals;

constexpr auto kFirstTold = 1s;
constexpr auto kToldEvery = 200ms;

bool ColorsSuit(Stream stream) {
    const char* noColor = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return IsTerminal(stream) && (noColor == nullptr || *noColor == '\0') &&
           (terminal == nullptr || std::strcmp(terminal, "dumb") != 0);
}

}  // namespace

bool IsTerminal(Stream stream) { return isatty(static_cast<int>(stream)) == 1; }

Style::Style(const std::string& when, Stream stream)
    : m_on(when == "always" || (when == "auto" && ColorsSuit(stream))) {}

std::string Style::Wrap(const char* code, std::string_view text) const {
    if (!m_on) {
        return std::string(text);
    }
    return std::string("\x1b[") + code + "m" + std::string(text) + "\x1b[0m";
}

Progress::Progress(std::string what)
    : m_what(std::move(what)), m_on(IsTerminal(Stream::Error)), m_next(Clock::now() + kFirstTold) {}

Progress::~Progress() {
    if (m_shown) {
        std::cerr << "\r\x1b[K" << std::flush;
    }
}

void Progress::Advance(std::uint64_t count) {
    m_done += count;
    if (!m_on || Clock::now() < m_next) {
        return;
    }
    m_next = Clock::now() + kToldEvery;
    m_shown = true;
    std::cerr << "\r\x1b[K" << m_what << ": " << Grouped(m_done) << std::flush;
}

}  // namespace qvpres

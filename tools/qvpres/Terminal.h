// What the terminal allows: colours, and progress on standard error.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace qvpres {

enum class Stream { In = 0, Out = 1, Error = 2 };

bool IsTerminal(Stream stream);

// Puts texts in colours, or leaves them alone.
class Style {
public:
    // when: "always", "never", or "auto", which means on a terminal, unless NO_COLOR is set to something or TERM is
    // dumb.
    Style(const std::string& when, Stream stream);

    std::string Strong(std::string_view text) const { return Wrap("1", text); }
    std::string Faint(std::string_view text) const { return Wrap("2", text); }
    std::string Error(std::string_view text) const { return Wrap("1;31", text); }
    std::string Warning(std::string_view text) const { return Wrap("1;33", text); }
    std::string Name(std::string_view text) const { return Wrap("36", text); }
    std::string Added(std::string_view text) const { return Wrap("32", text); }
    std::string Removed(std::string_view text) const { return Wrap("31", text); }

    bool IsOn() const { return m_on; }

private:
    std::string Wrap(const char* code, std::string_view text) const;

    bool m_on;
};

// Tells how far long work has come, on standard error when that is a terminal, after the first second.
class Progress {
public:
    explicit Progress(std::string what);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Takes the line away again.
    ~Progress();

    void Advance(std::uint64_t count);

private:
    using Clock = std::chrono::steady_clock;

    std::string m_what;
    bool m_on;
    bool m_shown = false;
    std::uint64_t m_done = 0;
    Clock::time_point m_next;  // when to tell again
};

}  // namespace qvpres

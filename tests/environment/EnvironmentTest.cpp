// No text that the libraries write or read depends on the locale, the environment variables or the time zone.
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <locale>
#include <map>
#include <string>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include "environment/Transcript.h"

#if defined(__SANITIZE_ADDRESS__)
// The C library forgets to free the list of folders that it makes from LOCPATH for each locale of the C++ library.
extern "C" const char* __lsan_default_suppressions();   // NOLINT(bugprone-reserved-identifier): the sanitizer's name
extern "C" const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "leak:argz_add_sep\n";
}
#endif

namespace {

// A locale of the C and the C++ library, in force for the whole process as long as this lives. The locales are those
// that the build makes from the system's sources: a machine may have none installed.
class LocaleInForce {
public:
    explicit LocaleInForce(const char* name) : m_previousName(std::setlocale(LC_ALL, nullptr)) {
        setenv("LOCPATH", QV_TEST_LOCALES, 1);
        m_known = std::setlocale(LC_ALL, name) != nullptr;
        if (m_known) {
            std::locale::global(std::locale(name));
        }
    }
    LocaleInForce(const LocaleInForce&) = delete;
    LocaleInForce& operator=(const LocaleInForce&) = delete;
    ~LocaleInForce() {
        std::locale::global(m_previous);
        std::setlocale(LC_ALL, m_previousName.c_str());
    }

    bool IsKnown() const { return m_known; }

private:
    std::string m_previousName;
    std::locale m_previous;
    bool m_known = false;
};

// Environment variables, given back at the end.
class EnvironmentInForce {
public:
    explicit EnvironmentInForce(const std::map<std::string, std::string>& variables) {
        for (char** variable = environ; *variable != nullptr; ++variable) {
            m_previous.emplace_back(*variable);
        }
        clearenv();
        for (const auto& [name, value] : variables) {
            setenv(name.c_str(), value.c_str(), 1);
        }
        tzset();
    }
    EnvironmentInForce(const EnvironmentInForce&) = delete;
    EnvironmentInForce& operator=(const EnvironmentInForce&) = delete;
    ~EnvironmentInForce() {
        clearenv();
        for (std::string& variable : m_previous) {
            const std::size_t equals = variable.find('=');
            setenv(variable.substr(0, equals).c_str(), variable.c_str() + equals + 1, 1);
        }
        tzset();
    }

private:
    std::vector<std::string> m_previous;
};

std::string Decimal() {
    char text[8] = {};
    std::snprintf(text, sizeof(text), "%.1f", 0.5);
    return text;
}

}  // namespace

TEST(Environment, TranscriptHoldsWhatItShould) {
    const std::string transcript = Transcript();
    EXPECT_GT(transcript.size(), 10000U);
    for (const char* part :
         {"\"maxCount\": -1234567,", "\"real\": 1234567.891", "\"smallReal\": 1.1,", "[1000000,4,1]",
          "0.33333333333333", "\"titleId\":\"I\"", "6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21", "{\"real\": 1,5}: not valid",
          "{\"real\": \"1,5\"}: not parsed: 15", "{\"maxCount\": \"1.000\"}: not parsed: 10", "titleId title-id\n",
          "r:9:3:-1234567.875 comes back"}) {
        EXPECT_NE(std::string::npos, transcript.find(part)) << part;
    }
}

TEST(Environment, NoTextDependsOnTheLocale) {
    const std::string expected = Transcript();
    const struct {
        const char* name;
        const char* decimal;
    } locales[] = {{"C", "0.5"}, {"C.UTF-8", "0.5"}, {"de_DE.UTF-8", "0,5"}, {"tr_TR.UTF-8", "0,5"}};
    for (const auto& [name, decimal] : locales) {
        SCOPED_TRACE(name);
        const LocaleInForce locale(name);
        ASSERT_TRUE(locale.IsKnown()) << "the build makes it: " << QV_TEST_LOCALES;
        ASSERT_EQ(decimal, Decimal()) << "the locale is in force";
        EXPECT_EQ(expected, Transcript());
    }
}

TEST(Environment, NoTextDependsOnVariablesOrTimeZone) {
    const std::string expected = Transcript();
    const std::map<std::string, std::string> environments[] = {
        {},
        {{"TZ", "America/St_Johns"}, {"LANG", "tr_TR.UTF-8"}, {"LC_ALL", "tr_TR.UTF-8"}},
        {{"TZ", "NOT-14"}, {"LC_NUMERIC", "de_DE.UTF-8"}, {"HOME", "/nowhere"}, {"TMPDIR", "/nowhere"}, {"PATH", ""}},
    };
    for (const auto& variables : environments) {
        const EnvironmentInForce environment(variables);
        EXPECT_EQ(expected, Transcript());
    }
}

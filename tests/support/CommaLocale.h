// A locale that writes decimals with a comma and groups digits, to show that no text depends on it.
#pragma once

#include <clocale>
#include <locale>
#include <string>

// In force for the whole process as long as it lives, then the earlier ones are back. The C++ locale is always a comma
// locale; the C locale is the first of the well-known comma locales that the system has, else "C".
class CommaLocale {
public:
    CommaLocale()
        : m_previousC(std::setlocale(LC_ALL, nullptr)),
          m_previous(std::locale::global(std::locale(std::locale::classic(), new Punctuation))) {
        for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "es_ES.UTF-8", "it_IT.UTF-8", "nl_NL.UTF-8", "C"}) {
            if (std::setlocale(LC_ALL, name) != nullptr) {
                break;
            }
        }
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    ~CommaLocale() {
        std::locale::global(m_previous);
        std::setlocale(LC_ALL, m_previousC.c_str());
    }

private:
    class Punctuation : public std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::string m_previousC;
    std::locale m_previous;
};

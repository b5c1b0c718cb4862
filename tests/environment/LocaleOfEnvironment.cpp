// Loaded before a test program (LD_PRELOAD), puts the locale that LC_ALL names in force, for C and C++. Used by
// scripts/check-locales.
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <locale>

namespace {

__attribute__((constructor)) void PutLocaleInForce() {
    const char* const name = std::getenv("LC_ALL");
    try {
        if (name == nullptr || std::setlocale(LC_ALL, name) == nullptr) {
            throw std::exception();
        }
        std::locale::global(std::locale(name));
    } catch (const std::exception&) {
        std::fputs("LC_ALL names no locale that is there\n", stderr);
        std::exit(3);
    }
}

}  // namespace

#include <charconv>
#include <random>

#include <qvpreslayer/detail/NumberText.h>

#include "Figures.h"

namespace figures {

namespace {

constexpr std::size_t kNumbers = 10000;

// Measurements with up to four decimals, and as many reals of full precision.
std::vector<double> MakeReals() {
    std::mt19937_64 random(1);
    std::vector<double> reals;
    for (std::size_t i = 0; i < kNumbers; ++i) {
        const double any = std::uniform_real_distribution(-1000.0, 1000.0)(random);
        reals.push_back(i % 2 == 0 ? any : std::round(any * 10000) / 10000);
    }
    return reals;
}

std::vector<int> MakeIntegers() {
    std::mt19937_64 random(2);
    std::vector<int> integers;
    for (std::size_t i = 0; i < kNumbers; ++i) {
        const int digits = static_cast<int>(random() % 10);
        integers.push_back(
            static_cast<int>(static_cast<double>(static_cast<std::int32_t>(random())) / std::pow(10.0, digits)));
    }
    return integers;
}

}  // namespace

void AddNumberTexts(Figures& figures) {
    const std::vector<double> reals = MakeReals();
    figures.push_back({"the fixed-point text of a `double`, UTF-16", "`std::to_chars`, shortest, 8-bit",
                       Duel(
                           kNumbers,
                           [&] {
                               char16_t text[qvpreslayer::detail::kLongestReal];
                               std::size_t units = 0;
                               for (const double real : reals) {
                                   units += static_cast<std::size_t>(qvpreslayer::detail::WriteReal(text, real) - text);
                               }
                               return units;
                           },
                           [&] {
                               char text[64];
                               std::size_t units = 0;
                               for (const double real : reals) {
                                   units += static_cast<std::size_t>(std::to_chars(text, text + 64, real).ptr - text);
                               }
                               return units;
                           }),
                       0.25});
    const std::vector<int> integers = MakeIntegers();
    figures.push_back(
        {"the text of an `int`, UTF-16", "`std::to_chars` and widening",
         Duel(
             kNumbers,
             [&] {
                 char16_t text[qvpreslayer::detail::kLongestInteger];
                 std::size_t units = 0;
                 for (const int integer : integers) {
                     units += static_cast<std::size_t>(qvpreslayer::detail::WriteInteger(text, integer) - text);
                 }
                 return units;
             },
             [&] {
                 char text[16];
                 char16_t wide[16];
                 std::size_t units = 0;
                 for (const int integer : integers) {
                     const char* const end = std::to_chars(text, text + 16, integer).ptr;
                     units += static_cast<std::size_t>(std::copy(text, const_cast<char*>(end), wide) - wide);
                     s_sink = wide[0];
                 }
                 return units;
             }),
         0.5});
}

}  // namespace figures

// All 2^32 floats and all 2^32 ints, once: the text of each as the rule says, worked out in integers, and what it reads
// back as. Run by scripts/oracles; not part of the tests.
//
//   oracle_every_float_and_int [SHARE]    looks at every SHAREth number only (1, all of them, without it)
#include <atomic>
#include <bit>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "support/RealTextExact.h"

namespace {

using real_text_exact::Wide;

constexpr std::uint64_t kNumbers = std::uint64_t{1} << 32;
constexpr std::uint64_t kBlock = std::uint64_t{1} << 22;

std::atomic<std::uint64_t> s_failures{0};
std::mutex s_outputMutex;

void Report(const char* what, std::uint32_t bits, const std::string& got, const std::string& expected) {
    if (++s_failures > 20) {
        return;
    }
    const std::lock_guard lock(s_outputMutex);
    std::printf("%s, bits %08x: got %s, expected %s\n", what, bits, got.c_str(), expected.c_str());
}

// Decimal digits into a buffer; answers their start.
char* WriteWhole(char* end, Wide value) {
    do {
        const auto low = static_cast<std::uint64_t>(value % 1000000000000000000U);
        value /= 1000000000000000000U;
        std::uint64_t rest = low;
        for (int i = 0; i < 18 && (value != 0 || rest != 0); ++i, rest /= 10) {
            *--end = static_cast<char>('0' + rest % 10);
        }
    } while (value != 0);
    return end;
}

// What real_text_exact::TextOf answers, without its slow parts: floats are below 2^128.
std::string_view FloatText(float number, char (&buffer)[80]) {
    const auto value = static_cast<double>(number);
    if (!std::isfinite(number)) {
        static const std::string kNull = real_text_exact::TextOf(std::nan(""), 7);
        static const std::string kPlus = real_text_exact::TextOf(HUGE_VAL, 7);
        static const std::string kMinus = real_text_exact::TextOf(-HUGE_VAL, 7);
        return std::isnan(number) ? kNull : number > 0 ? kPlus : kMinus;
    }
    const real_text_exact::Digits digits = real_text_exact::DigitsOf(value, 7);
    const Wide whole = digits.exponent >= 0 ? Wide{digits.mantissa} << digits.exponent : Wide{digits.whole};
    char* end = buffer + 60;
    char* begin = whole == 0 ? end - 1 : WriteWhole(end, whole);
    if (whole == 0) {
        *begin = '0';
    }
    if (digits.negative && (whole != 0 || digits.fraction != 0)) {
        *--begin = '-';
    }
    if (digits.fraction != 0) {
        *end++ = '.';
        std::uint64_t rest = digits.fraction;
        for (int place = 6; place >= 0; --place, rest /= 10) {
            end[place] = static_cast<char>('0' + rest % 10);
        }
        end += 7;
        while (end[-1] == '0') {
            --end;
        }
    }
    return {begin, static_cast<std::size_t>(end - begin)};
}

bool Same(const TString& text, std::string_view expected) {
    if (text.size() != expected.size()) {
        return false;
    }
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (text[i] != static_cast<unsigned char>(expected[i])) {
            return false;
        }
    }
    return true;
}

void CheckFloat(std::uint32_t bits) {
    const auto number = std::bit_cast<float>(bits);
    char buffer[80];
    const std::string_view expected = FloatText(number, buffer);
    const TString text = ParameterTypeSerializer<float>::TypeToString(number);
    if (!Same(text, expected)) {
        Report("float to text", bits, text.ToUtf8(), std::string(expected));
    }
    const float back = ParameterTypeSerializer<float>::TypeFromString(text);
    float nearest = std::nanf("");
    std::from_chars(expected.data(), expected.data() + expected.size(), nearest);
    const bool same = back == nearest || (std::isnan(back) && std::isnan(nearest) && std::isnan(number));
    // From 1 on seven digits tell all floats apart; below, what is lost is half of the last digit.
    const bool near = !(std::fabs(number) <= 3.4028235e38F) || std::fabs(number) >= 1
                          ? back == number || !std::isfinite(number)
                          : std::fabs(static_cast<double>(back) - static_cast<double>(number)) <= 0.5e-7 + 3e-8;
    if (!same || !near) {
        Report("text to float", bits, std::to_string(back), std::string(expected));
    }
}

void CheckInt(std::uint32_t bits) {
    const auto number = static_cast<std::int32_t>(bits);
    char buffer[16];
    char* const end = buffer + sizeof(buffer);
    const std::uint64_t magnitude = number < 0 ? static_cast<std::uint64_t>(-static_cast<std::int64_t>(number)) : bits;
    char* begin = end;
    std::uint64_t rest = magnitude;
    do {
        *--begin = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (number < 0) {
        *--begin = '-';
    }
    const std::string_view expected(begin, static_cast<std::size_t>(end - begin));
    const TString text = ParameterTypeSerializer<int>::TypeToString(number);
    if (!Same(text, expected)) {
        Report("int to text", bits, text.ToUtf8(), std::string(expected));
    }
    if (ParameterTypeSerializer<int>::TypeFromString(text) != number) {
        Report("text to int", bits, text.ToUtf8(), std::string(expected));
    }
    if (!Same(ParameterTypeSerializer<unsigned int>::TypeToString(bits),
              number < 0 ? std::to_string(bits) : expected)) {
        Report("unsigned to text", bits, ParameterTypeSerializer<unsigned int>::TypeToString(bits).ToUtf8(),
               std::to_string(bits));
    }
}

// Calls check for every share-th number, on as many threads as there are processors.
template <class Check>
void ForAll(const char* what, std::uint64_t share, Check check) {
    const auto started = std::chrono::steady_clock::now();
    std::atomic<std::uint64_t> next{0};
    std::atomic<std::uint64_t> looked{0};
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < std::max(1U, std::thread::hardware_concurrency()); ++i) {
        threads.emplace_back([&] {
            for (std::uint64_t block = next++; block * kBlock < kNumbers; block = next++) {
                std::uint64_t count = 0;
                const std::uint64_t first = (block * kBlock + share - 1) / share * share;
                for (std::uint64_t bits = first; bits < (block + 1) * kBlock; bits += share, ++count) {
                    check(static_cast<std::uint32_t>(bits));
                }
                looked += count;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - started).count();
    std::printf("%s: %llu of %llu, %llu failures so far, %lld s\n", what,
                static_cast<unsigned long long>(looked.load()), static_cast<unsigned long long>(kNumbers),
                static_cast<unsigned long long>(s_failures.load()), static_cast<long long>(seconds));
    std::fflush(stdout);
}

}  // namespace

int main(int count, char** arguments) {
    const std::uint64_t share = count > 1 ? static_cast<std::uint64_t>(std::atoll(arguments[1])) : 1;
    if (share == 0) {
        std::fprintf(stderr, "usage: oracle_every_float_and_int [SHARE]\n");
        return 2;
    }
    ForAll("floats", share, CheckFloat);
    ForAll("ints", share, CheckInt);
    return s_failures == 0 ? 0 : 1;
}

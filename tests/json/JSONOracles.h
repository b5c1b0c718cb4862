// Other JSON parsers, as oracles: what they make of a text, in one shape for all.
//
// Included by JSONDifferentialTest.cpp.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace json_oracles {

// A value of another parser. The members of an object stand in the order of the text, names may repeat.
struct Value {
    enum Kind { Null, Bool, Integer, Real, String, Array, Object };

    Kind kind = Null;
    bool boolean = false;
    std::int64_t integer = 0;  // of 64 bits, signed or not: its bits
    double real = 0;
    std::u16string text;
    std::vector<Value> elements;        // of an array or object
    std::vector<std::u16string> names;  // of an object, one for each element
};

// What the other parser is to let pass.
struct Leniency {
    bool comments = false;
    bool textBehind = false;  // after the first value
};

class Oracle {
public:
    virtual ~Oracle() = default;

    virtual const char* Name() const = 0;

    // The first value of the text; nothing when the parser refuses. Surrogates without a partner may become U+FFFD.
    virtual std::optional<Value> Parse(const std::u16string& text, Leniency leniency) const = 0;

    // How far a real may be from the right one, as a part of it.
    virtual double RealTolerance() const { return 0; }
};

const Oracle& BoostJSON();
const Oracle& RapidJSON();
const Oracle& Nlohmann();

}  // namespace json_oracles

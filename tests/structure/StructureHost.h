// A published registry with one identifier of each kind, for the tests of the stream and its scopes.
#pragma once

#include <qvpreslayer/qvpreslayer.h>

#include "support/TestHost.h"

namespace view {

inline constexpr int kTitle = 101;         // text
inline constexpr int kCount = 102;         // number
inline constexpr int kVisible = 103;       // truth value
inline constexpr int kLabels = 104;        // list of texts
inline constexpr int kSizes = 105;         // list of reals
inline constexpr int kFlags = 106;         // list of truth values
inline constexpr int kNames = 107;         // map of texts
inline constexpr int kLimits = 108;        // map of integers
inline constexpr int kStyle = 109;         // nested bag
inline constexpr int kAxis = 110;          // structure
inline constexpr int kPlainAxis = 111;     // structure without a serializer
inline constexpr int kAxes = 112;          // structure list
inline constexpr int kAxesByName = 113;    // structure map
inline constexpr int kLongNameOnly = 114;  // text without a short name
inline constexpr int kListWithoutSerializer = 115;
inline constexpr int kNotRegistered = 150;  // inside the range
inline constexpr int kNowhere = 999;        // in no range

inline void Register(AbstractParamAdder& adder) {
    adder.AddSimple(kTitle, L"main-title", L"ti", new TStringSerializer);
    adder.AddSimple(kCount, L"count", L"co", new ParameterTypeSerializer<int>);
    adder.AddSimple(kVisible, L"visible", L"vi", new ParameterTypeSerializer<bool>);
    adder.AddList(kLabels, L"labels", L"la", new TStringSerializer);
    adder.AddList(kSizes, L"sizes", L"si", new ParameterTypeSerializer<double>);
    adder.AddList(kFlags, L"flags", L"fl", new ParameterTypeSerializer<bool>);
    adder.AddMap(kNames, L"names", L"na", new TStringSerializer);
    adder.AddMap(kLimits, L"limits", L"li", new ParameterTypeSerializer<int>);
    adder.AddBag(kStyle, L"style", L"st");
    adder.AddStructure(kAxis, L"axis", L"ax", new BagStructureSerializer);
    adder.AddStructure(kPlainAxis, L"plain-axis", L"pa", nullptr);
    adder.AddStructureList(kAxes, L"axes", L"as", new BagStructureSerializer);
    adder.AddStructureMap(kAxesByName, L"axes-by-name", L"an", new BagStructureSerializer);
    adder.AddSimple(kLongNameOnly, L"long-name-only", L"", new TStringSerializer);
    adder.AddList(kListWithoutSerializer, L"untyped", L"un", nullptr);
}

// The registry, published as long as it lives.
class Host : public TestRegistry {
public:
    Host() { Add(L"view", 100, 199, Register); }
};

}  // namespace view

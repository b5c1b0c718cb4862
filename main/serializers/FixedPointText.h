// The text of reals. Included by NumberSerializers.cpp.
#pragma once

#include <qvcore/TString.h>

// How many digits stand behind the point at most.
inline constexpr int kFloatFractionDigits = 7;
inline constexpr int kDoubleFractionDigits = 14;

// Fixed-point decimal, never an exponent:
//
//   "null"                            a NaN
//   ["-"] "1" and 37 times "0"        an infinity: a plain number, so that every reader takes it
//   ["-"] digits ["." digits]         anything else: all integer digits, then up to fractionDigits digits of the
//                                     fraction, rounded half up, without zeros at the end
//
// The rounding is that of IEEE 754 double arithmetic, step by step: the fraction is scaled by a power of ten, one half
// is added, the floor is taken. "-" stands only before a text with a digit other than 0.
TString FixedPointText(double value, int fractionDigits);

// Doubles as integers, defined for every value.

#pragma once

#include <limits>

// `value` cut towards zero; what the type does not hold becomes its nearest number,
// and not a number 0.
template <class Integer>
constexpr Integer saturated(double value) {
    using Limits = std::numeric_limits<Integer>;
    // A power of two, so exact; the largest number itself may not be one.
    constexpr double kBound = -static_cast<double>(Limits::min());
    if (value >= kBound) return Limits::max();
    if (value <= -kBound) return Limits::min();
    return value == value ? static_cast<Integer>(value) : Integer{0};
}

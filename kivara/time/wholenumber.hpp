#pragma once
/// \file
/// Doubles as integers. Internal.

#include <cmath>
#include <limits>

namespace kivara {

/// The number without its fraction. What the type does not hold, and what is no number, gives its smallest value, as the
/// processor does it.
template <class Integer> Integer wholeNumber(double number) {
  constexpr Integer smallest = std::numeric_limits<Integer>::min();
  constexpr double lowest = smallest;
  double const whole = std::trunc(number);
  return whole >= lowest && whole < -lowest ? static_cast<Integer>(whole) : smallest;
}

} // namespace kivara

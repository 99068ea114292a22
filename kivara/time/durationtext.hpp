#pragma once
/// \file
/// The text form of durations, `Y:DDD:HH:MM:SS`, without the object. Internal.

#include <cstddef>

namespace kivara {

/// The most digits of the year that are read.
inline constexpr std::size_t kMostYearDigits = 300;

/// The largest double as a year has 309 digits and may have a sign; each of the other fields is at most the smallest int.
struct DurationText {
  char text[309 + 1 + 4 * (sizeof ":-2147483648" - 1) + 1];

  char const * c_str() const { return text; }
};

/// KivCoreTime::isTime.
bool isDuration(char const * text);

/// The seconds of a text that isDuration accepts. Without a colon, or with one after more than 300 characters, it is an
/// internal error and 0.
double secondsOf(char const * text, double daysPerYear, double hoursPerDay);

/// Rounded to the nearest second.
DurationText textOf(double seconds, double daysPerYear, double hoursPerDay);

} // namespace kivara

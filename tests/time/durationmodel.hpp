#pragma once
/// \file
/// The text of a duration as its fields say it, in whole numbers.

#include <cstdint>
#include <cstdio>
#include <string>

namespace kivtest {

/// Y:DDD:HH:MM:SS
inline std::string durationText(std::uint64_t years, unsigned days, unsigned hours, unsigned minutes,
                                unsigned seconds) {
  char fields[32];
  std::snprintf(fields, sizeof fields, ":%03u:%02u:%02u:%02u", days, hours, minutes, seconds);
  std::string const year = std::to_string(years);
  return (year.size() < 2 ? "0" + year : year) + fields;
}

/// The text of whole seconds in a calendar of whole days and hours.
inline std::string modelText(std::uint64_t seconds, std::uint64_t daysPerYear, std::uint64_t hoursPerDay) {
  std::uint64_t const day = hoursPerDay * 3600;
  std::uint64_t const year = day * daysPerYear;
  std::uint64_t const inYear = seconds % year;
  std::uint64_t const inDay = inYear % day;
  return durationText(seconds / year, static_cast<unsigned>(inYear / day), static_cast<unsigned>(inDay / 3600),
                      static_cast<unsigned>(inDay % 3600 / 60), static_cast<unsigned>(inDay % 60));
}

} // namespace kivtest

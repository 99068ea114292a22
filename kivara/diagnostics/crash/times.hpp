#pragma once
/// \file
/// Times in crash reports: of the crash, of the program's file, of the process and of the system. Internal.

#include <cstdint>

namespace kivara::crash {

/// A length of time in whole units, the days without limit.
struct TimeParts {
  unsigned days;
  unsigned hours;
  unsigned minutes;
  unsigned seconds;
  unsigned milliseconds;
};

constexpr TimeParts partsOf(std::uint64_t milliseconds) {
  std::uint64_t const seconds = milliseconds / 1000;
  std::uint64_t const minutes = seconds / 60;
  std::uint64_t const hours = minutes / 60;
  return {static_cast<unsigned>(hours / 24), static_cast<unsigned>(hours % 24), static_cast<unsigned>(minutes % 60),
          static_cast<unsigned>(seconds % 60), static_cast<unsigned>(milliseconds % 1000)};
}

void writeCrashTimes();
/// The name, the size and the times of the program's file.
void writeExecutable();
void writeProcessTimes();
void writeSystemUpTime();

} // namespace kivara::crash

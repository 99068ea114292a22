#include "tools/time.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <utility>

namespace SV {
namespace {

/// The largest number of hours that leaves room for any minutes, seconds and hundredths.
constexpr std::int64_t kMostHours = 2146;
constexpr std::int64_t kHundredthsPerHour = 360000;
constexpr std::int64_t kMostHundredths = (kMostHours + 1) * kHundredthsPerHour - 1;

std::int32_t packed(std::int64_t hour, std::int64_t minute, std::int64_t second, std::int64_t hundredth) {
  return static_cast<std::int32_t>(std::min(hour, kMostHours) * 1000000 + minute * 10000 + second * 100 + hundredth);
}

std::int32_t packedHundredths(std::int64_t hundredths) {
  bool const negative = hundredths < 0;
  hundredths = std::min(negative ? -hundredths : hundredths, kMostHundredths);
  std::int32_t const fields =
      packed(hundredths / kHundredthsPerHour, hundredths / 6000 % 60, hundredths / 100 % 60, hundredths % 100);
  return negative ? -fields : fields;
}

std::int64_t hundredths(std::int64_t hour, std::int64_t minute, std::int64_t second, std::int64_t hundredth) {
  return hour * kHundredthsPerHour + minute * 6000 + second * 100 + hundredth;
}

std::int64_t hundredths(Time const & time) {
  std::int64_t const size = hundredths(time.GetHour(), time.GetMin(), time.GetSec(), time.Get100Sec());
  return time.value() < 0 ? -size : size;
}

} // namespace

Time::Time() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  nTime_ = packed(now.wHour, now.wMinute, now.wSecond, now.wMilliseconds / 10);
}

Time::Time(unsigned long hour, unsigned long minute, unsigned long second, unsigned long hundredth)
    : nTime_(packedHundredths(hundredths(hour, minute, second, hundredth))) {}

unsigned long Time::change(std::int64_t hour, std::int64_t minute, std::int64_t second, unsigned long former) {
  std::int32_t const fields = packed(hour, minute % 100, second % 100, Get100Sec());
  nTime_ = nTime_ < 0 ? -fields : fields;
  return former;
}

unsigned long Time::ChangeHour(unsigned long hour) { return change(hour, GetMin(), GetSec(), GetHour()); }
unsigned long Time::ChangeMin(unsigned long minute) { return change(GetHour(), minute, GetSec(), GetMin()); }
unsigned long Time::ChangeSec(unsigned long second) { return change(GetHour(), GetMin(), second, GetSec()); }

Time operator-(Time const & a, Time const & b) {
  Time difference(0);
  difference.nTime_ = packedHundredths(hundredths(a) - hundredths(b));
  return difference;
}

} // namespace SV

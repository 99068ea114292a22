#include "time/durationtext.hpp"

#include "atrace.hpp"
#include "base/modules.hpp"
#include "time/wholenumber.hpp"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace kivara {
namespace {

constexpr unsigned kLineLongYear = 2688;
constexpr unsigned kLineNoColon = 2694;

constexpr double kSecondsPerMinute = 60.0;
constexpr double kSecondsPerHour = 3600.0;

/// Where the fields stand after the first colon.
constexpr int kDays = 1;
constexpr int kHours = 5;
constexpr int kMinutes = 8;
constexpr int kSeconds = 11;
constexpr int kEnd = 13;

constexpr int kMostDays = 364;
constexpr int kMostHours = 23;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
int valueOf(char digit) { return digit - '0'; }

bool isDays(char const * field) {
  return isDigit(field[0]) && isDigit(field[1]) && isDigit(field[2]) &&
         valueOf(field[0]) * 100 + valueOf(field[1]) * 10 + valueOf(field[2]) <= kMostDays;
}

bool isHours(char const * field) {
  return isDigit(field[0]) && isDigit(field[1]) && valueOf(field[0]) * 10 + valueOf(field[1]) <= kMostHours;
}

bool isSixtieth(char const * field) { return isDigit(field[0]) && field[0] <= '5' && isDigit(field[1]); }

/// From the first colon on. Each test stops at the end of the text.
bool isTail(char const * tail) {
  return tail[0] == ':' && isDays(tail + kDays) && tail[kHours - 1] == ':' && isHours(tail + kHours) &&
         tail[kMinutes - 1] == ':' && isSixtieth(tail + kMinutes) && tail[kSeconds - 1] == ':' &&
         isSixtieth(tail + kSeconds) && tail[kEnd] == '\0';
}

/// Takes the whole units out of the rest.
double take(double & rest, double unit) {
  double const count = std::floor(rest / unit);
  rest -= count * unit;
  return count;
}

/// With leading zeros, up to \p digits.
char * put(char * to, unsigned number, int digits) {
  char figures[10];
  int count = 0;
  for (; number > 0 || count < digits; number /= 10)
    figures[count++] = static_cast<char>('0' + number % 10);
  while (count > 0)
    *to++ = figures[--count];
  return to;
}

struct Fields {
  double years;
  int days;
  int hours;
  int minutes;
  int seconds;

  /// None is negative, and the years have nine digits at most.
  bool areOrdinary() const {
    return !std::signbit(years) && years < 1e9 && days >= 0 && hours >= 0 && minutes >= 0 && seconds >= 0;
  }
};

/// What the format gives for such fields, in a tenth of the time.
void writeOrdinary(Fields const & fields, char * to) {
  to = put(to, static_cast<unsigned>(fields.years), 2);
  *to++ = ':';
  to = put(to, static_cast<unsigned>(fields.days), 3);
  for (int const field : {fields.hours, fields.minutes, fields.seconds}) {
    *to++ = ':';
    to = put(to, static_cast<unsigned>(field), 2);
  }
  *to = '\0';
}

void write(Fields const & fields, DurationText & to) {
  if (fields.areOrdinary()) {
    writeOrdinary(fields, to.text);
    return;
  }
  _snprintf(to.text, sizeof to.text, "%02.0f:%03d:%02d:%02d:%02d", fields.years, fields.days, fields.hours,
            fields.minutes, fields.seconds);
  to.text[sizeof to.text - 1] = '\0'; // the runtime leaves a full buffer without one
}

} // namespace

bool isDuration(char const * text) {
  if (text == nullptr)
    return false;
  std::size_t years = 0;
  while (isDigit(text[years]))
    ++years;
  return years <= kMostYearDigits && isTail(text + years);
}

double secondsOf(char const * text, double daysPerYear, double hoursPerDay) {
  std::size_t years = 0;
  while (years <= kMostYearDigits && text[years] != '\0' && text[years] != ':')
    ++years;
  if (years > kMostYearDigits) {
    displayErrorMessage(modules::kAtools, kLineLongYear);
    return 0.0;
  }
  char const * const tail = text + years;
  if (*tail != ':') {
    displayErrorMessage(modules::kAtools, kLineNoColon);
    return 0.0;
  }
  return std::atol(tail + kSeconds) + std::atol(tail + kMinutes) * kSecondsPerMinute +
         std::atol(tail + kHours) * kSecondsPerHour + std::atol(tail + kDays) * hoursPerDay * kSecondsPerHour +
         std::atol(text) * hoursPerDay * kSecondsPerHour * daysPerYear;
}

DurationText textOf(double seconds, double daysPerYear, double hoursPerDay) {
  double const day = hoursPerDay * kSecondsPerHour;
  double const year = day * daysPerYear;
  double rest = seconds + 0.5;
  double const years = take(rest, year);
  int const days = wholeNumber<int>(take(rest, day));
  int const hours = wholeNumber<int>(take(rest, kSecondsPerHour));
  double const minutes = std::floor(rest / kSecondsPerMinute);
  int const secs = wholeNumber<int>(std::floor(rest - minutes * kSecondsPerMinute));
  DurationText text;
  write({years, days, hours, wholeNumber<int>(minutes), secs}, text);
  return text;
}

} // namespace kivara

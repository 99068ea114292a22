#include "adattime.hpp"

#include "base/boundedtext.hpp"
#include "time/textfields.hpp"

#include <cstdlib>

using SV::String;
using SV::Time;

namespace {

constexpr long kSecondsPerHour = 3600;
constexpr long kSecondsPerMinute = 60;

constexpr unsigned long kEndOfDay = 24;
constexpr unsigned long kHalfDay = 12;

/// What a user writes, as numbers.
struct Clock {
  unsigned long hour;
  unsigned long minute;
  unsigned long second;

  bool isWithinAnHour() const { return minute < 60 && second < 60; }
  bool isEndOfDay() const { return hour == kEndOfDay && minute == 0 && second == 0; }
};

constexpr char kPicture[] = "99:99:99";
constexpr std::int32_t kPictureLength = sizeof kPicture - 1;

bool readClock(char const * text, Clock & clock) {
  int fields[3];
  if (!kivara::readFields(text, kPicture, fields))
    return false;
  clock = {static_cast<unsigned long>(fields[0]), static_cast<unsigned long>(fields[1]),
           static_cast<unsigned long>(fields[2])};
  return true;
}

bool read24Hours(String const & text, Clock & clock) {
  return text.Len() == kPictureLength && readClock(text.c_str(), clock) &&
         ((clock.hour < kEndOfDay && clock.isWithinAnHour()) || clock.isEndOfDay());
}

bool readAmerican(String text, Clock & clock) {
  text.EraseAllChars(' ');
  if (text.charAt(1) == ':')
    text = "0" + text;
  String const half = text.substr(kPictureLength);
  bool const isAfternoon = half == "PM";
  if ((!isAfternoon && !(half == "AM")) || !readClock(text.c_str(), clock) || !clock.isWithinAnHour() ||
      clock.hour < 1 || clock.hour > kHalfDay)
    return false;
  // As getTimeInUIRep: hours 1 to 12 are AM, midnight is 12 PM.
  if (isAfternoon)
    clock.hour = clock.hour == kHalfDay ? 0 : clock.hour + kHalfDay;
  return true;
}

/// The sign is ignored, as in the fields.
long magnitude(Time const & time) { return std::abs(static_cast<long>(time.value())); }

/// Without the sign.
long hundredthsOf(Time const & time) {
  return KivTimeFunctions::getTimeInSeconds(time) * 100 + static_cast<long>(time.Get100Sec());
}

unsigned long shownHour(Time const & time) {
  bool const isEndOfDay = magnitude(time) == Time(kEndOfDay).value();
  return isEndOfDay ? kEndOfDay : time.GetHour() % kEndOfDay;
}

using ClockText = kivara::BoundedText<48>;

String clockText(unsigned long hour, Time const & time, char const * half) {
  return ClockText("%02lu:%02lu:%02lu%s", hour, time.GetMin(), time.GetSec(), half).c_str();
}

// Noon is AM and midnight PM, the reverse of common use: users and their files know it so.
String americanText(unsigned long hour, Time const & time) {
  if (hour == 0)
    return clockText(kHalfDay, time, " PM");
  return hour <= kHalfDay ? clockText(hour, time, " AM") : clockText(hour - kHalfDay, time, " PM");
}

} // namespace

bool KivTimeFunctions::bAmericanTimeFormat = false;

long KivTimeFunctions::getTimeInSeconds(Time const & time) {
  return static_cast<long>(time.GetHour()) * kSecondsPerHour + static_cast<long>(time.GetMin()) * kSecondsPerMinute +
         static_cast<long>(time.GetSec());
}

Time KivTimeFunctions::setTimeInSeconds(long seconds) {
  if (seconds < 0)
    return Time(0);
  auto const count = static_cast<unsigned long>(seconds);
  return Time(count / kSecondsPerHour, count / kSecondsPerMinute % 60, count % 60);
}

long KivTimeFunctions::getDiffTimeInSeconds(Time const & a, Time const & b) {
  return magnitude(a) > magnitude(b) ? 0 : (hundredthsOf(b) - hundredthsOf(a)) / 100;
}

String KivTimeFunctions::getTimeInUIRep(Time const & time) {
  unsigned long const hour = shownHour(time);
  return bAmericanTimeFormat ? americanText(hour, time) : clockText(hour, time, "");
}

bool KivTimeFunctions::setTimeInUIRep(String const & text, Time & time) {
  Clock clock{};
  bool const isRead = bAmericanTimeFormat ? readAmerican(text, clock) : read24Hours(text, clock);
  if (isRead)
    time = Time(clock.hour, clock.minute, clock.second);
  return isRead;
}

void KivTimeFunctions::SetAmericanTimeFormat(bool american) { bAmericanTimeFormat = american; }
bool KivTimeFunctions::IsAmericanTimeFormat() { return bAmericanTimeFormat; }

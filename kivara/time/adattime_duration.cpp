#include "adattime_duration.hpp"

#include "aebox.hpp"
#include "atools.hpp"
#include "time/durationtext.hpp"
#include "time/wholenumber.hpp"

#include <limits>

using SV::String;

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

double orDefault(double number, double fallback) { return number != 0 ? number : fallback; }

} // namespace

double KivCoreTime::defaultDaysPerYear_ = 365.0;
double KivCoreTime::defaultHoursPerDay_ = 24.0;
bool KivCoreTime::warnButtonPressed = false;

KivCoreTime::KivCoreTime()
    : value(0.0), maxValue(kLargest), daysPerYear(defaultDaysPerYear_), hoursPerDay(defaultHoursPerDay_),
      overflow(false) {}

// The text belongs to the other object's last answer: it starts empty here.
KivCoreTime::KivCoreTime(KivCoreTime const & other)
    : value(other.value), maxValue(kLargest), daysPerYear(other.daysPerYear), hoursPerDay(other.hoursPerDay),
      overflow(other.overflow) {}

KivCoreTime::KivCoreTime(double const & seconds, double const & days, double const & hours)
    : value(seconds), maxValue(kLargest), daysPerYear(orDefault(days, defaultDaysPerYear_)),
      hoursPerDay(orDefault(hours, defaultHoursPerDay_)), overflow(seconds < 0 || seconds > kLargest) {}

KivCoreTime::KivCoreTime(double const & seconds) : KivCoreTime(seconds, 0.0, 0.0) {}
KivCoreTime::KivCoreTime(long long const & seconds) : KivCoreTime(static_cast<double>(seconds)) {}
KivCoreTime::KivCoreTime(long long const & seconds, double const & days, double const & hours)
    : KivCoreTime(static_cast<double>(seconds), days, hours) {}

KivCoreTime::KivCoreTime(char const * duration, double const & days, double const & hours)
    : KivCoreTime(0.0, days, hours) {
  value = _s2d(duration);
  overflow = value < 0 || value > maxValue;
}

KivCoreTime::KivCoreTime(char const * duration) : KivCoreTime(duration, 0.0, 0.0) {}
KivCoreTime::KivCoreTime(char const * duration, char const * days, char const * hours)
    : KivCoreTime(duration, kiv_atof(days), kiv_atof(hours)) {}

long long KivCoreTime::asSeconds() const { return kivara::wholeNumber<long long>(value + 0.5); }

// A value that does not fit is 0, not a clamped number: files hold it so.
long KivCoreTime::asLong() const { return value > 2147483647.0 ? 0 : kivara::wholeNumber<long>(value + 0.5); }

String const & KivCoreTime::asString() { return _d2s(value); }
char const * KivCoreTime::asChar() { return _d2s(value).c_str(); }

void KivCoreTime::setAsChar(char const * duration) { value = _s2d(duration); }
void KivCoreTime::setTime(double const & seconds) { value = seconds; }

void KivCoreTime::setBase(long days, long hours) { setBase(static_cast<double>(days), static_cast<double>(hours)); }

void KivCoreTime::setBase(double days, double hours) {
  daysPerYear = orDefault(days, defaultDaysPerYear_);
  hoursPerDay = orDefault(hours, defaultHoursPerDay_);
}

bool KivCoreTime::isTime(char const * duration) { return kivara::isDuration(duration); }

void KivCoreTime::SetStaticTimeBase(double days, double hours) {
  defaultDaysPerYear_ = days;
  defaultHoursPerDay_ = hours;
}

double KivCoreTime::GetStaticDaysPerYear() { return defaultDaysPerYear_; }
double KivCoreTime::GetStaticHoursPerDay() { return defaultHoursPerDay_; }

bool KivCoreTime::WillBeSumOverflow(long long const & a, long long const & b) {
  auto const sum = static_cast<long long>(static_cast<unsigned long long>(a) + static_cast<unsigned long long>(b));
  return static_cast<double>(sum) > kLargest;
}

String const & KivCoreTime::_d2s(double seconds) {
  return text.Assign(kivara::textOf(seconds, daysPerYear, hoursPerDay).c_str());
}

double KivCoreTime::_s2d(char const * duration) const {
  return isTime(duration) ? kivara::secondsOf(duration, daysPerYear, hoursPerDay) : 0.0;
}

void KivCoreTime::tstOverFlow(SV::Window * parent, SV::String const & message) {
  if (!overflow)
    return;
  value = maxValue;
  if (warnButtonPressed)
    return;
  KivWarningBox(parent, SV::WB_OK, message).Execute();
  warnButtonPressed = true;
}

void KivCoreTime::ResetWarnButtonPressed() { warnButtonPressed = false; }

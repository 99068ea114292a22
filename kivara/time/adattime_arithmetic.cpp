#include "adattime_duration.hpp"

KivCoreTime & KivCoreTime::operator=(KivCoreTime const & other) { return *this = other.value; }

KivCoreTime & KivCoreTime::operator=(double seconds) {
  value = seconds;
  return *this;
}

KivCoreTime & KivCoreTime::operator=(long seconds) { return *this = static_cast<double>(seconds); }

KivCoreTime & KivCoreTime::operator=(long long const & seconds) {
  auto const number = static_cast<double>(seconds);
  bool const isTooLarge = number > maxValue;
  overflow = overflow || isTooLarge;
  return *this = isTooLarge ? 0.0 : number;
}

KivCoreTime & KivCoreTime::operator=(char const * duration) { return *this = _s2d(duration); }

KivCoreTime & KivCoreTime::operator+=(KivCoreTime const & other) {
  value += other.value;
  return *this;
}

KivCoreTime & KivCoreTime::operator+=(double seconds) {
  if (seconds < 0 || value + seconds > maxValue)
    overflow = true;
  else
    value += seconds;
  return *this;
}

KivCoreTime & KivCoreTime::operator+=(long long const & seconds) { return *this += static_cast<double>(seconds); }

KivCoreTime & KivCoreTime::operator+=(char const * duration) {
  value += _s2d(duration);
  return *this;
}

KivCoreTime & KivCoreTime::operator-=(char const * duration) {
  value -= _s2d(duration);
  if (value < 0)
    value = 0.0;
  return *this;
}

KivCoreTime & KivCoreTime::operator*=(double factor) {
  if (factor < 0)
    overflow = true;
  else
    value *= factor;
  if (value > maxValue)
    overflow = true;
  return *this;
}

KivCoreTime & KivCoreTime::operator/=(double divisor) {
  if (divisor <= 0)
    overflow = true;
  if (divisor != 0)
    value /= divisor;
  return *this;
}

KivCoreTime operator+(KivCoreTime const & a, KivCoreTime const & b) {
  return {a.value + b.value, a.daysPerYear, a.hoursPerDay};
}

#pragma once
/// \file
/// Time: a time of day, or the difference of two.

#include "tools/export.hpp"

#include <cstdint>
#include <cstdlib>

namespace SV {

/// Hours, minutes, seconds and hundredths, stored as the signed decimal number HHMMSScc; the fields are the digits of its
/// absolute value. There may be up to 2146 hours; a larger value becomes the largest one.
class Time {
public:
  /// The current local time.
  TL_API Time();

  /// Minutes, seconds and hundredths beyond their range carry over into the next field.
  TL_API explicit Time(unsigned long hour, unsigned long minute = 0, unsigned long second = 0,
                       unsigned long hundredth = 0);

  unsigned long GetHour() const { return magnitude() / 1000000; } ///< each without the sign
  unsigned long GetMin() const { return magnitude() / 10000 % 100; }
  unsigned long GetSec() const { return magnitude() / 100 % 100; }
  unsigned long Get100Sec() const { return magnitude() % 100; }

  /// Each sets one field, keeps the sign and returns the field's previous value. Minutes and seconds are taken modulo 100.
  TL_API unsigned long ChangeHour(unsigned long hour);
  TL_API unsigned long ChangeMin(unsigned long minute);
  TL_API unsigned long ChangeSec(unsigned long second);

  /// HHMMSScc with its sign.
  std::int32_t value() const { return nTime_; }

private:
  friend TL_API Time operator-(Time const & a, Time const & b);

  unsigned long change(std::int64_t hour, std::int64_t minute, std::int64_t second, unsigned long former);
  unsigned long magnitude() const { return static_cast<unsigned long>(std::abs(nTime_)); }

  std::int32_t nTime_;
};

/// The difference, negative if \p b is later.
TL_API Time operator-(Time const & a, Time const & b);

inline bool operator==(Time const & a, Time const & b) { return a.value() == b.value(); } ///< with the sign
inline bool operator<(Time const & a, Time const & b) { return a.value() < b.value(); }

} // namespace SV

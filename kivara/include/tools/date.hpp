#pragma once
/// \file
/// Date: a calendar day.

#include "tools/export.hpp"

#include <cstdint>

namespace SV {

enum DayOfWeek { MONDAY, TUESDAY, WEDNESDAY, THURSDAY, FRIDAY, SATURDAY, SUNDAY };

/// A day of the Gregorian calendar, held as the decimal number YYYYMMDD. The fields are stored as given, modulo what their
/// digits hold (day and month 100, year 10000): a 31st of February stays one.
class Date {
public:
  /// Today, in local time.
  TL_API Date();
  TL_API Date(unsigned long day, unsigned long month, unsigned long year);

  unsigned long GetDay() const { return nDate_ % 100; }
  unsigned long GetMonth() const { return nDate_ / 100 % 100; }
  unsigned long GetYear() const { return nDate_ / 10000; }

  /// Each sets one field and gives its former value.
  TL_API unsigned long ChangeDay(unsigned long day);
  TL_API unsigned long ChangeMonth(unsigned long month);
  TL_API unsigned long ChangeYear(unsigned long year);

  /// Monday is 0. A day past the end of its month counts on into the next one.
  TL_API DayOfWeek GetDayOfWeek() const;

  /// YYYYMMDD.
  std::uint32_t value() const { return nDate_; }

private:
  std::uint32_t nDate_;
};

inline bool operator==(Date const & a, Date const & b) { return a.value() == b.value(); }
inline bool operator<(Date const & a, Date const & b) { return a.value() < b.value(); }

} // namespace SV

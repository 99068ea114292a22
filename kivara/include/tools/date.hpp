#pragma once
/// \file
/// Date: a calendar day.

#include "tools/export.hpp"

#include <cstdint>

namespace SV {

enum DayOfWeek : int { MONDAY, TUESDAY, WEDNESDAY, THURSDAY, FRIDAY, SATURDAY, SUNDAY }; ///< from 0

/// A day of the Gregorian calendar, stored as the decimal number YYYYMMDD. The fields are stored as given, modulo 100 for
/// day and month and modulo 10000 for the year: the 31st of February stays the 31st of February.
class Date {
public:
  /// Today, in local time.
  TL_API Date();
  TL_API Date(unsigned long day, unsigned long month, unsigned long year);

  unsigned long GetDay() const { return nDate_ % 100; } ///< from 1
  unsigned long GetMonth() const { return nDate_ / 100 % 100; }
  unsigned long GetYear() const { return nDate_ / 10000; }

  /// Each sets one field and returns its previous value.
  TL_API unsigned long ChangeDay(unsigned long day);
  TL_API unsigned long ChangeMonth(unsigned long month);
  TL_API unsigned long ChangeYear(unsigned long year);

  /// Monday is 0. A day or month past the end continues into the next month or year; 0 is the one before the first.
  TL_API DayOfWeek GetDayOfWeek() const;

  /// Whether the year has a 29th of February. The Gregorian rule is used for all years.
  bool IsLeapYear() const { return (GetYear() % 4 == 0 && GetYear() % 100 != 0) || GetYear() % 400 == 0; }

  /// YYYYMMDD.
  std::uint32_t value() const { return nDate_; }

private:
  std::uint32_t nDate_;
};

inline bool operator==(Date const & a, Date const & b) { return a.value() == b.value(); } ///< the same day
inline bool operator<(Date const & a, Date const & b) { return a.value() < b.value(); }

} // namespace SV

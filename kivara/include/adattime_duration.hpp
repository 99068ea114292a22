#pragma once
/// \file
/// Durations in a calendar of the product's own. Part of adattime.hpp.
///
/// A year of working time is not 365 days, and a day not 24 hours: 220 days of 8 hours are usual. A duration is a number of
/// seconds that is read and shown in such a calendar, its base, as `Y:DDD:HH:MM:SS`:
///
/// \code
///   KivCoreTime time("01:000:00:00:00", 220.0, 8.0); // a working year
///   time += 1800.0;
///   double const seconds = time.asDouble();          // 6337800
///   char const * const text = time.asChar();         // "01:000:00:30:00"
///   time.setBase(0L, 0L);                            // 365 days of 24 hours, unless the product set others
///   time.asChar();                                   // "00:073:08:30:00": the same seconds
/// \endcode

#include "export.hpp"
#include "tools/string.hpp"

namespace SV {
class Window;
}

/// A duration in seconds, as a double, with its base and a flag for overflow.
///
/// The text form has four colons. The year has any number of digits up to 300, also none; days are 000 to 364, hours 00 to
/// 23, minutes and seconds 00 to 59, whatever the base: a text that is written with a longer year or day may not be readable.
/// A text that cannot be read counts as 0 seconds, without a report; use isTime to check it first.
///
/// Operations that would leave the range set the flag and mostly leave the value; each says so. No operation clears the
/// flag; only a new object starts without it. Values are not checked otherwise: a negative one, or one that is no
/// number, stays what it is, and its text is not defined. There are no comparisons: compare asDouble().
///
/// No exceptions but std::bad_alloc for a text. Any thread may use an object of its own as long as no thread changes
/// the defaults. The constructor that reads its base from text changes the locale as kiv_atof does; tstOverFlow is for
/// the main thread.
class KIV_API KivCoreTime {
public:
  /// \name Construction
  /// The base is the two numbers, days per year and hours per day, as given, otherwise the defaults; 0 stands for the
  /// default too. The flag is set when the value is negative or infinite.
  /// @{
  KivCoreTime(); ///< 0 seconds
  /// The same value, base and flag.
  KivCoreTime(KivCoreTime const & other);
  KivCoreTime(char const * duration);
  KivCoreTime(long long const & seconds);
  KivCoreTime(double const & seconds);
  /// \param days, hours  numbers as kiv_atof reads them, which leaves the process in the "C" locale
  KivCoreTime(char const * duration, char const * days, char const * hours);
  KivCoreTime(long long const & seconds, double const & days, double const & hours);
  KivCoreTime(double const & seconds, double const & days, double const & hours);
  KivCoreTime(char const * duration, double const & days, double const & hours);
  /// @}
  ~KivCoreTime() = default;

  double asDouble() const { return value; } ///< the seconds

  /// The seconds, rounded to the nearest whole one, a half upwards. What 64 bits do not hold gives the smallest number.
  long long asSeconds() const;
  /// The same in 32 bits, but 0 for more than 2147483647.
  long asLong() const;

  /// The text form, rounded to the nearest second. The text is the object's, up to the next call or its end.
  SV::String const & asString();
  char const * asChar();

  /// Changes the value alone, without a check: base and flag stay.
  void setAsChar(char const * duration);
  void setTime(double const & seconds);

  /// Changes the base; 0 stands for the default. The seconds stay, so that the text becomes another one.
  void setBase(long days, long hours);
  void setBase(double days, double hours);

  bool overFlow() const { return overflow; } ///< the flag

  /// To be called after a series of operations: when the flag is set, the value becomes the largest double, and the user is
  /// warned in a box. Only the first overflow of the process has a box, until ResetWarnButtonPressed; the flag stays set.
  /// \param parent   the window above which the box stands, or null
  /// \param message  what the box says. While dialogs are suppressed there is none, which counts as a warning
  void tstOverFlow(SV::Window * parent, SV::String const & message);

  /// Whether the text is a duration: its form alone, so the answer is the same for every base. Null is none.
  static bool isTime(char const * duration);

  /// The defaults, at first 365.0 and 24.0. Objects that exist keep theirs.
  static void SetStaticTimeBase(double days, double hours);
  static double GetStaticDaysPerYear();
  static double GetStaticHoursPerDay();

  /// Lets tstOverFlow warn once more.
  static void ResetWarnButtonPressed();

  /// Always false, since no sum of 64-bit integers is beyond a double. A sum beyond 64 bits wraps.
  static bool WillBeSumOverflow(long long const & a, long long const & b);

  /// \name Assignment
  /// Changes the value alone: base and flag stay.
  /// @{
  KivCoreTime & operator=(KivCoreTime const & other);
  KivCoreTime & operator=(double seconds);
  KivCoreTime & operator=(long seconds);
  KivCoreTime & operator=(long long const & seconds);
  KivCoreTime & operator=(char const * duration);
  /// @}

  /// \name Arithmetic
  /// @{
  KivCoreTime & operator+=(KivCoreTime const & other); ///< without a check
  /// A negative number, and a sum beyond the largest double, set the flag and leave the value.
  KivCoreTime & operator+=(double seconds);
  KivCoreTime & operator+=(long long const & seconds);
  KivCoreTime & operator+=(char const * duration); ///< without a check
  /// A negative result becomes 0; the flag stays as it is.
  KivCoreTime & operator-=(char const * duration);
  /// A negative factor sets the flag and leaves the value; a product beyond the largest double sets it too, and stays.
  KivCoreTime & operator*=(double factor);
  /// 0 sets the flag and leaves the value; a negative divisor sets it and divides.
  KivCoreTime & operator/=(double divisor);
  /// @}

private:
  friend KIV_API KivCoreTime operator+(KivCoreTime const & a, KivCoreTime const & b);

  SV::String const & _d2s(double seconds);
  double _s2d(char const * duration) const;

  double value;
  SV::String text;
  double maxValue;
  double daysPerYear;
  double hoursPerDay;
  bool overflow;

  static double defaultDaysPerYear_;
  static double defaultHoursPerDay_;
  static bool warnButtonPressed;
};

/// A new object of the sum, in the base of \p a: it has a flag of its own, whatever those of the two are.
KIV_API KivCoreTime operator+(KivCoreTime const & a, KivCoreTime const & b);

#include "adattime.hpp"

#include "tools/international.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>

using SV::Date;
using SV::String;
using SV::Time;

namespace {

/// What a format has become so far.
class Result {
public:
  void copy(char c, std::size_t count) { text_.append(count, c); }
  void add(String const & text) { text_.append(text.c_str(), static_cast<std::size_t>(text.Len())); }

  /// With leading zeros, up to \p digits.
  void add(unsigned long number, int digits) {
    char figures[20];
    auto const length = std::to_chars(std::begin(figures), std::end(figures), number).ptr - figures;
    text_.append(static_cast<std::size_t>(std::max<std::ptrdiff_t>(digits - length, 0)), '0');
    text_.append(figures, static_cast<std::size_t>(length));
  }

  String toString() const {
    auto const length = std::min(text_.size(), static_cast<std::size_t>(SV::STRING_MAXLEN));
    return {text_.data(), static_cast<std::int32_t>(length)};
  }

private:
  std::string text_;
};

/// Replaces the fields of a format.
/// \param letters  the letters that stand for fields; everything else is copied
/// \param put      called with the result, the letter and the length of its run; returns false when the run is no field
template <class Put> String formatted(String const & format, char const * letters, Put put) {
  Result result;
  char const * const end = format.c_str() + format.Len();
  for (char const * run = format.c_str(); run != end;) {
    char const letter = *run;
    char const * const next = std::find_if(run, end, [letter](char c) { return c != letter; });
    auto const length = static_cast<std::size_t>(next - run);
    bool const isLetter = letter == letters[0] || letter == letters[1] || letter == letters[2];
    if (!isLetter || !put(result, letter, length))
      result.copy(letter, length);
    run = next;
  }
  return result.toString();
}

bool putDay(Result & result, Date const & date, std::size_t length) {
  if (length == 2)
    result.add(date.GetDay(), 2);
  else if (length == 3)
    result.add(KivDate::WeekdayToStr(date.GetDayOfWeek()));
  else
    return false;
  return true;
}

bool putMonth(Result & result, Date const & date, std::size_t length) {
  if (length == 2)
    result.add(date.GetMonth(), 2);
  else if (length == 3)
    result.add(KivDate::MonthToStr(static_cast<int>(date.GetMonth()) - 1));
  else
    return false;
  return true;
}

bool putYear(Result & result, Date const & date, std::size_t length) {
  if (length == 2)
    result.add(date.GetYear() % 100, 2);
  else if (length == 4)
    result.add(date.GetYear(), 1);
  else
    return false;
  return true;
}

bool putField(Result & result, Date const & date, char letter, std::size_t length) {
  switch (letter) {
  case 'D': return putDay(result, date, length);
  case 'M': return putMonth(result, date, length);
  default: return putYear(result, date, length);
  }
}

unsigned long fieldOf(Time const & time, char letter) {
  switch (letter) {
  case 'H': return time.GetHour();
  case 'M': return time.GetMin();
  default: return time.GetSec();
  }
}

bool putField(Result & result, Time const & time, char letter, std::size_t length) {
  if (length != 2)
    return false;
  result.add(fieldOf(time, letter), 2);
  return true;
}

} // namespace

String KivDate::GetFormatedDate(Date const & date, String const & format) {
  if (format.Len() == 0)
    return SV::International().GetDate(date);
  return formatted(format, "DMY", [&date](Result & result, char letter, std::size_t length) {
    return putField(result, date, letter, length);
  });
}

String KivDate::GetFormatedTime(Time const & time, String const & format) {
  if (format.Len() == 0)
    return SV::International().GetTime(time, true, false);
  return formatted(format, "HMS", [&time](Result & result, char letter, std::size_t length) {
    return putField(result, time, letter, length);
  });
}

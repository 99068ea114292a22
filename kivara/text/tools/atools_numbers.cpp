#include "alocale.hpp"
#include "atools.hpp"
#include "atrace.hpp"
#include "base/modules.hpp"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

using SV::String;

namespace {

constexpr unsigned kLineWrittenNumber = 1294;

/// A double has no more digits after the point than this: a larger precision only adds zeros.
constexpr int kMostPrecision = 1100;

/// To printf, any negative precision means that there is none; some runtimes accept only this one.
constexpr int kNoPrecision = -1;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isSign(char c) { return c == '+' || c == '-'; }

bool isDecimalMark(char c) { return c == '.' || c == Locale::Kiv_GetDecimalSeparator().charAt(0); }

// Writers of files rely on the runtime staying in this locale after the first number was read.
void goIntoCLocaleForGood() {
  if (std::strcmp(std::setlocale(LC_ALL, nullptr), "C") != 0) // asking is faster than setting
    std::setlocale(LC_ALL, "C");
}

/// Sets the runtime's locale to "C" for its lifetime.
class CLocale {
public:
  CLocale() : former_(std::setlocale(LC_ALL, nullptr)) { change("C"); }
  ~CLocale() { change(former_.c_str()); }
  CLocale(CLocale const &) = delete;
  CLocale & operator=(CLocale const &) = delete;

private:
  void change(char const * to) const {
    if (former_ != "C")
      std::setlocale(LC_ALL, to);
  }

  std::string const former_;
};

/// \param keptDigits  number of digits after the point that are kept even if they are zeros
String numberText(double value, int precision, int keptDigits) {
  char text[512] = "";
  {
    CLocale const locale;
    _snprintf(text, sizeof text - 1, "%.*lf", std::clamp(precision, kNoPrecision, kMostPrecision), value);
  }
  char * const point = std::strchr(text, '.');
  if (point == nullptr)
    return String(text);
  char * end = point + std::strlen(point);
  while (end > point + 1 + keptDigits && end[-1] == '0')
    --end;
  if (end == point + 1)
    --end;
  return String(text, static_cast<std::int32_t>(end - text));
}

} // namespace

bool Kiv_Valid_Integer(char const * text) {
  if (text == nullptr || !(isDigit(*text) || isSign(*text)))
    return false;
  do
    ++text;
  while (isDigit(*text));
  return *text == '\0';
}

bool Kiv_Valid_Double(char const * text) {
  if (text == nullptr)
    return false;
  if (isSign(*text))
    ++text;
  bool hasDigit = false;
  bool hasMark = false;
  for (; *text != '\0'; ++text) {
    if (isDigit(*text))
      hasDigit = true;
    else if (!hasMark && isDecimalMark(*text))
      hasMark = true;
    else
      return false;
  }
  return hasDigit;
}

double kiv_atof(char const * text) {
  std::size_t const size = (text != nullptr ? std::strlen(text) : 0) + 1;
  char buffer[128];
  std::unique_ptr<char[]> const longer(size > sizeof buffer ? new char[size] : nullptr);
  char * const copy = longer != nullptr ? longer.get() : buffer;
  std::replace_copy(text, text + (size - 1), copy, ',', '.');
  copy[size - 1] = '\0';
  goIntoCLocaleForGood();
  return std::atof(copy);
}

int kiv_ltoa(long value, char * buffer, char const * format) {
  goIntoCLocaleForGood();
  int const count = buffer != nullptr && format != nullptr ? __ms_sprintf(buffer, format, value) : -1;
  // What was just written can be read, so only null and a pointer that looks poisoned are reported.
  if (format == nullptr || !Kiv_MemoryIsReadable(buffer, 0))
    displayErrorMessage(kivara::modules::kAtools, kLineWrittenNumber);
  return count;
}

String kiv_ftoa_no_locale(double value, int precision) { return numberText(value, precision, 0); }
String kiv_ftoa_period(double value, int precision) { return numberText(value, precision, 1); }

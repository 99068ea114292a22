#include "alocale.hpp"

#include "locale/localeinfo.hpp"
#include "tools/winapi.hpp"

#include <cstdlib>

using SV::String;

namespace {

constexpr LCID kUser = LOCALE_USER_DEFAULT;

/// A setting in a buffer of Size bytes, followed by a NUL. If it does not fit, the system usually leaves the buffer empty.
template <int Size> struct FixedFact {
  explicit FixedFact(LCTYPE type) { GetLocaleInfoA(kUser, type, text, Size); }
  char text[Size + 1] = {};
};

String sizedFact(LCTYPE type) {
  String text;
  kivara::localeInfo(kUser, type, text);
  return text;
}

template <class Result> Result choice(char const * text) { return static_cast<Result>(std::atol(text)); }
template <> bool choice<bool>(char const * text) { return std::atol(text) != 0; }

} // namespace

namespace Locale {

#define KIV_LOCALE_NUMBER(result, name, type, size)                                                                    \
  result name() { return choice<result>(FixedFact<size>(type).text); }
#define KIV_LOCALE_FIXED(name, type, size)                                                                             \
  String name() { return String(FixedFact<size>(type).text); }
#define KIV_LOCALE_SIZED(name, type)                                                                                   \
  String name() { return sizedFact(type); }
#include "detail/alocale_facts.inc"

} // namespace Locale

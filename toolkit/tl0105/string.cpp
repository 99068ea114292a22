#include "tools/string.hpp"

#include "tools/winapi.hpp"
#include "utf8fit.hpp"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <utility>
#include <vector>

namespace SV {
namespace {

template <class Number> String decimal(Number number) {
  char digits[24];
  auto const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  return String(digits, static_cast<std::int32_t>(end - digits));
}

/// Neither side is empty.
String joined(char const * a, std::int32_t aLength, char const * b, std::int32_t bLength) {
  bLength = std::min(bLength, STRING_MAXLEN - aLength);
  String result = String::ofLength(aLength + bLength);
  std::copy_n(a, aLength, result.writable());
  std::copy_n(b, bLength, result.writable() + aLength);
  return result;
}

/// The string in UTF-16; empty if it is not valid in the code page.
std::vector<wchar_t> wideForm(String const & text) {
  int const units = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, text.c_str(), text.Len(), nullptr, 0);
  std::vector<wchar_t> wide(static_cast<std::size_t>(units));
  MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, text.c_str(), text.Len(), wide.data(), units);
  return wide;
}

} // namespace

String::String(int number) : String(decimal(number)) {}
String::String(long number) : String(decimal(number)) {}
String::String(long long number) : String(decimal(number)) {}
String::String(unsigned short number) : String(decimal(number)) {}
String::String(unsigned int number) : String(decimal(number)) {}
String::String(unsigned long number) : String(decimal(number)) {}
String::String(unsigned long long number) : String(decimal(number)) {}

String::operator double() const { return std::atof(c_str()); }

String String::token(std::int32_t index, char separator) const {
  char const * piece = c_str();
  char const * const end = piece + Len();
  if (index < 0)
    return String();
  for (;; --index) {
    char const * const stop = std::find(piece, end, separator);
    if (index == 0)
      return substr(static_cast<std::int32_t>(piece - c_str()), static_cast<std::int32_t>(stop - piece));
    if (stop == end)
      return String();
    piece = stop + 1;
  }
}

String & String::replaceAll(char from, char to) {
  makeUnique();
  std::replace(writable(), writable() + Len(), from, to);
  return *this;
}

String & String::EraseAllChars(char c) {
  char const * const end = c_str() + Len();
  auto const erased = static_cast<std::int32_t>(std::count(c_str(), end, c));
  if (erased == 0)
    return *this;
  String kept = ofLength(Len() - erased);
  std::remove_copy(c_str(), end, kept.writable(), c);
  return *this = std::move(kept);
}

String operator+(String const & a, String const & b) {
  if (b.Len() == 0)
    return a;
  return a.Len() == 0 ? b : joined(a.c_str(), a.Len(), b.c_str(), b.Len());
}
String operator+(String const & a, char const * b) {
  std::int32_t const length = h_strlen(b);
  if (length == 0)
    return a;
  return a.Len() == 0 ? String(b, length) : joined(a.c_str(), a.Len(), b, length);
}
String operator+(char const * a, String const & b) {
  std::int32_t const length = h_strlen(a);
  if (length == 0)
    return b;
  return b.Len() == 0 ? String(a, length) : joined(a, length, b.c_str(), b.Len());
}

int ConvertStringToUTF8String(String const & text, String & utf8) {
  if (text.Len() == 0) {
    utf8 = String();
    return 1;
  }
  auto const wide = wideForm(text);
  int const units = static_cast<int>(unitsThatFit(wide.data(), wide.size(), STRING_MAXLEN));
  int const bytes = WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
  if (bytes <= 0)
    return 0;
  String result = String::ofLength(bytes);
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, result.writable(), bytes, nullptr, nullptr);
  utf8 = result;
  return 1;
}

} // namespace SV

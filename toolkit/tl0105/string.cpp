#include "tools/string.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <vector>

namespace SV {
namespace {

template <class Number> String decimal(Number number) {
  char digits[24];
  auto const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  return String(digits, static_cast<std::int32_t>(end - digits));
}

String joined(char const * a, std::int32_t aLength, char const * b, std::int32_t bLength) {
  bLength = std::min(bLength, STRING_MAXLEN - aLength);
  if (aLength + bLength == 0)
    return String();
  String result = String::ofLength(aLength + bLength);
  std::copy_n(a, aLength, result.writable());
  std::copy_n(b, bLength, result.writable() + aLength);
  return result;
}

/// Units of the text in UTF-16; empty where the code page cannot read it.
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
  if (std::memchr(c_str(), c, static_cast<std::size_t>(Len())) == nullptr)
    return *this;
  String kept = String::ofLength(Len());
  char * const end = std::copy_if(c_str(), c_str() + Len(), kept.writable(), [c](char each) { return each != c; });
  return *this = kept.substr(0, static_cast<std::int32_t>(end - kept.c_str()));
}

String operator+(String const & a, String const & b) {
  if (b.Len() == 0)
    return a;
  return a.Len() == 0 ? b : joined(a.c_str(), a.Len(), b.c_str(), b.Len());
}
String operator+(String const & a, char const * b) { return joined(a.c_str(), a.Len(), b, h_strlen(b)); }
String operator+(char const * a, String const & b) { return joined(a, h_strlen(a), b.c_str(), b.Len()); }

int ConvertStringToUTF8String(String const & text, String & utf8) {
  if (text.Len() == 0) {
    utf8 = String();
    return 1;
  }
  auto const wide = wideForm(text);
  int const units = static_cast<int>(wide.size());
  int const bytes = WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
  if (bytes <= 0 || bytes > STRING_MAXLEN)
    return 0;
  String result = String::ofLength(bytes);
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, result.writable(), bytes, nullptr, nullptr);
  utf8 = result;
  return 1;
}

} // namespace SV

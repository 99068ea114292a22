#include "picture.hpp"

#include <algorithm>

namespace SV::picture {
namespace {

bool isLetter(wchar_t c) { return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z'); }

/// The position after the quoted part that begins at \p start. A quote that is not closed reaches to the end.
std::size_t quoteEnd(std::wstring const & picture, std::size_t start) {
  std::size_t const close = picture.find(L'\'', start + 1);
  return close == std::wstring::npos ? picture.size() : close + 1;
}

} // namespace

std::wstring withRuns(std::wstring const & picture, Replace const & replace) {
  std::wstring result;
  for (std::size_t i = 0; i < picture.size();) {
    wchar_t const c = picture[i];
    std::size_t end = i + 1;
    if (c == L'\'')
      end = quoteEnd(picture, i);
    else if (isLetter(c))
      end = std::min(picture.find_first_not_of(c, i), picture.size());
    result += isLetter(c) ? replace(c, end - i) : picture.substr(i, end - i);
    i = end;
  }
  return result;
}

std::wstring run(wchar_t letter, std::size_t count) { return std::wstring(count, letter); }

std::wstring number(unsigned long value, std::size_t digits) {
  std::wstring const text = std::to_wstring(value);
  return std::wstring(digits - std::min(digits, text.size()), L'0') + text;
}

} // namespace SV::picture

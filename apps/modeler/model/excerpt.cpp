#include "excerpt.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <string>

using SV::String;

namespace modeler {
namespace {

constexpr char kMore[] = "...";

/// The bytes of the character there: two in some code pages.
std::int32_t characterLength(char const * text) {
  return IsDBCSLeadByte(static_cast<BYTE>(text[0])) && text[1] != '\0' ? 2 : 1;
}

bool isControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

} // namespace

String excerptOfWord(String const & word) {
  std::int32_t length = 0;
  while (length < word.Len()) {
    std::int32_t const next = length + characterLength(word.c_str() + length);
    if (next > kLongestWord)
      break;
    length = next;
  }
  std::string text(word.c_str(), static_cast<std::size_t>(length));
  std::replace_if(text.begin(), text.end(), isControl, '?');
  return length < word.Len() ? String(text.c_str()) + kMore : String(text.c_str());
}

String excerptOfFileName(String const & name) {
  std::int32_t start = 0;
  while (name.Len() - start > kLongestFileName)
    start += characterLength(name.c_str() + start);
  return start > 0 ? kMore + String(name.c_str() + start) : name;
}

} // namespace modeler

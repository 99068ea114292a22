#include "atools.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <cstring>
#include <string_view>

using SV::String;

namespace {

/// Whether the code page assigns a character to the byte that is not a control code.
bool isInCodePage(char c) {
  wchar_t character = 0;
  return MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &c, 1, &character, 1) == 1 && character > 0xFF;
}

/// Whether the text begins with a parenthesis that is closed by its last character and not before.
bool isOneTerm(std::string_view text) {
  if (text.empty() || text.front() != '(' || text.back() != ')')
    return false;
  int depth = 0;
  for (char const c : text.substr(0, text.size() - 1)) {
    depth += c == '(' ? 1 : c == ')' ? -1 : 0;
    if (depth == 0 && c == ')')
      return false;
  }
  return true;
}

} // namespace

bool Kiv_IsValidXMLChar(char c, bool allowEuro, bool checkCodePage) {
  auto const byte = static_cast<unsigned char>(c);
  if (allowEuro && byte == 128)
    return true;
  if (checkCodePage)
    return byte < 127 || byte > 159 || isInCodePage(c);
  return byte >= 32 || byte == '\0' || byte == '\t' || byte == '\n' || byte == '\r';
}

void kiv_charreplace(char * text, char from, char to) {
  if (text != nullptr && from != to)
    std::replace(text, text + std::strlen(text), from, to);
}

int kiv_charcount(char const * text, char c) {
  return text != nullptr ? static_cast<int>(std::count(text, text + std::strlen(text), c)) : 0;
}

void kiv_getuntil(char const * text, char stop, String & out) {
  char const * const found = stop != '\0' ? SV::h_strchr(text, stop) : nullptr;
  out = found != nullptr ? String(text, static_cast<std::int32_t>(found - text) + 1) : String(text);
}

void Kiv_MakeNextName(String & name) {
  std::string_view const text(name.c_str(), static_cast<std::size_t>(name.Len()));
  std::size_t const open = text.ends_with(')') ? text.rfind('(') : std::string_view::npos;
  if (open == std::string_view::npos) {
    name += " (2)";
    return;
  }
  auto const start = static_cast<std::int32_t>(open) + 1;
  long long const next = SV::h_atoi(name.c_str() + start) + 1LL;
  name = name.substr(0, start) + String(next) + ")";
}

String Kiv_EnsureSurroundingParentheses(String const & text) {
  std::string_view term(text.c_str(), static_cast<std::size_t>(text.Len()));
  constexpr char kBlanks[] = " \t\n\r";
  term.remove_prefix(std::min(term.find_first_not_of(kBlanks), term.size()));
  term.remove_suffix(term.size() - (term.find_last_not_of(kBlanks) + 1));
  return isOneTerm(term) ? text : "(" + text + ")";
}

#include "shared/codepage.hpp"

#include "tools/winapi.hpp"

#include <cstdio>

namespace kivtools {
namespace {

std::optional<std::wstring> toWide(std::string const & text, unsigned codePage) {
  if (text.empty())
    return std::wstring();
  int const bytes = static_cast<int>(text.size());
  int const length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, text.data(), bytes, nullptr, 0);
  if (length == 0)
    return std::nullopt;
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, text.data(), bytes, wide.data(), length);
  return wide;
}

/// With one character for a letter and the accents that follow it. The same when the system cannot compose.
std::wstring composed(std::wstring const & wide) {
  int const count = static_cast<int>(wide.size());
  std::wstring result(wide.size(), L'\0');
  int const length = FoldStringW(MAP_PRECOMPOSED, wide.data(), count, result.data(), count);
  if (length == 0)
    return wide;
  result.resize(static_cast<std::size_t>(length));
  return result;
}

bool isFirstOfPair(wchar_t c) { return c >= 0xD800 && c < 0xDC00; }

/// The first character, which may be a pair, that the code page lacks.
std::string lackingCharacter(std::wstring const & wide, unsigned codePage) {
  for (std::size_t i = 0; i < wide.size(); ++i) {
    std::size_t const length = isFirstOfPair(wide[i]) && i + 1 < wide.size() ? 2 : 1;
    std::wstring const character = wide.substr(i, length);
    if (!fromWide(character, codePage)) {
      unsigned const point =
          length == 1 ? character[0] : 0x10000u + ((character[0] - 0xD800u) << 10) + (character[1] - 0xDC00u);
      char name[16];
      std::snprintf(name, sizeof name, "U+%04X", point);
      return std::string(name) + " '" + fromWide(character, CP_UTF8).value_or("") + "'";
    }
    i += length - 1;
  }
  return "a character";
}

} // namespace

std::optional<std::string> fromWide(std::wstring const & wide, unsigned codePage) {
  if (wide.empty())
    return std::string();
  int const count = static_cast<int>(wide.size());
  bool const isUtf8 = codePage == CP_UTF8;
  DWORD const flags = isUtf8 ? 0 : WC_NO_BEST_FIT_CHARS;
  BOOL lacksOne = FALSE;
  BOOL * const lacks = isUtf8 ? nullptr : &lacksOne;
  int const length = WideCharToMultiByte(codePage, flags, wide.data(), count, nullptr, 0, nullptr, lacks);
  if (length == 0 || lacksOne != FALSE)
    return std::nullopt;
  std::string text(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(codePage, flags, wide.data(), count, text.data(), length, nullptr, lacks);
  return text;
}

bool isUsableCodePage(unsigned codePage) {
  // The lowest numbers stand for whatever code page the machine has: packed files go to other machines.
  bool const isOfTheMachine = codePage <= CP_THREAD_ACP;
  CPINFO info;
  return !isOfTheMachine && codePage != CP_UTF8 && GetCPInfo(codePage, &info) != FALSE && info.MaxCharSize <= 2;
}

std::optional<std::string> fromUtf8(std::string const & utf8, unsigned codePage, std::string & reason) {
  std::optional<std::wstring> const wide = toWide(utf8, CP_UTF8);
  if (!wide) {
    reason = "the text is not UTF-8";
    return std::nullopt;
  }
  if (std::optional<std::string> text = fromWide(*wide, codePage))
    return text;
  // Few code pages have the accents of decomposed letters, which are how some editors and file systems write them.
  std::wstring const whole = composed(*wide);
  std::optional<std::string> text = fromWide(whole, codePage);
  if (!text)
    reason = "code page " + std::to_string(codePage) + " has no " + lackingCharacter(whole, codePage);
  return text;
}

std::optional<std::string> toUtf8(std::string const & text, unsigned codePage) {
  std::optional<std::wstring> const wide = toWide(text, codePage);
  if (!wide || fromWide(*wide, codePage) != text)
    return std::nullopt;
  return fromWide(*wide, CP_UTF8);
}

} // namespace kivtools

#include "escapes.hpp"

#include "shared/codepage.hpp"

#include <cctype>
#include <cstdio>

namespace kivml {
namespace {

using kivtools::fromUtf8;
using kivtools::toUtf8;

struct Escape {
  char letter;
  char character;
};
constexpr Escape kEscapes[] = {{'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'\\', '\\'}};

/// The byte of the escape after the backslash at \p position, which then stands on its last character.
std::optional<char> readEscape(std::string const & utf8, std::size_t & position) {
  char const letter = position + 1 < utf8.size() ? utf8[position + 1] : '\0';
  for (Escape const & escape : kEscapes) {
    if (escape.letter == letter) {
      ++position;
      return escape.character;
    }
  }
  auto const isDigit = [&](std::size_t place) {
    return place < utf8.size() && std::isxdigit(static_cast<unsigned char>(utf8[place])) != 0;
  };
  if (letter != 'x' || !isDigit(position + 2) || !isDigit(position + 3))
    return std::nullopt;
  int const byte = std::stoi(utf8.substr(position + 2, 2), nullptr, 16);
  position += 3;
  return static_cast<char>(byte);
}

std::string hexadecimal(char c) {
  char text[8];
  std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
  return text;
}

/// The escape of a byte, empty when it needs none.
std::string escapeOf(char c) {
  for (Escape const & escape : kEscapes)
    if (escape.character == c)
      return {'\\', escape.letter};
  return std::iscntrl(static_cast<unsigned char>(c)) != 0 && static_cast<unsigned char>(c) < 0x80 ? hexadecimal(c)
                                                                                                  : std::string();
}

/// Plain characters, and bytes that are no characters as escapes.
std::string writtenPlain(std::string const & plain, unsigned codePage) {
  if (std::optional<std::string> whole = toUtf8(plain, codePage))
    return *whole;
  std::string written;
  for (char const c : plain)
    written += toUtf8(std::string(1, c), codePage).value_or(hexadecimal(c));
  return written;
}

} // namespace

std::optional<std::string> readWritten(std::string const & utf8, unsigned codePage, std::string & reason) {
  std::string text;
  std::string plain;
  auto const flush = [&] {
    std::optional<std::string> const converted = fromUtf8(plain, codePage, reason);
    if (converted)
      text += *converted;
    plain.clear();
    return converted.has_value();
  };
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    if (utf8[i] != '\\') {
      plain += utf8[i];
      continue;
    }
    std::optional<char> const byte = readEscape(utf8, i);
    if (!byte) {
      reason = "'\\' is followed by none of n, r, t, \\ and x with two hexadecimal digits";
      return std::nullopt;
    }
    if (!flush())
      return std::nullopt;
    text += *byte;
  }
  if (!flush())
    return std::nullopt;
  return text;
}

std::string writtenForm(std::string const & text, unsigned codePage) {
  std::string written;
  std::string plain;
  for (char const c : text) {
    std::string const escape = escapeOf(c);
    if (escape.empty()) {
      plain += c;
      continue;
    }
    written += writtenPlain(plain, codePage) + escape;
    plain.clear();
  }
  written += writtenPlain(plain, codePage);
  // An editor may cut blanks at the end of a line.
  if (!written.empty() && written.back() == ' ')
    written.replace(written.size() - 1, 1, "\\x20");
  return written;
}

} // namespace kivml

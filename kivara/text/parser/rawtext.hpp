#pragma once
/// \file
/// Internal: search for a stop character in a line, and raw text over many lines.

#include "tools/string.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace kivara {

/// Text collected from many lines, in linear time: SV::String copies itself for each piece that is appended.
class GatheredText {
public:
  void append(char const * text, std::int32_t length) {
    std::size_t const room = static_cast<std::size_t>(SV::STRING_MAXLEN) - text_.size();
    text_.append(text, std::min(static_cast<std::size_t>(length), room));
  }

  void moveTo(SV::String & target) const { target.Assign(text_.data(), static_cast<std::int32_t>(text_.size())); }

private:
  std::string text_;
};

/// Index of the first \p stop in \p length characters that is not escaped; -1 when there is none before a NUL. The first
/// character is never escaped, and a NUL there does not end the search.
inline std::int32_t findUnescaped(char const * line, std::int32_t length, char stop, char escape) {
  if (length == 0)
    return -1;
  if (line[0] == stop)
    return 0;
  bool escaped = false;
  for (std::int32_t i = 1; line[i] != '\0'; ++i) {
    escaped = line[i - 1] == escape && !escaped;
    if (line[i] == stop && !escaped)
      return i;
  }
  return -1;
}

/// Index of the first \p c in \p length characters; -1 when there is none.
inline std::int32_t findPlain(char const * line, std::int32_t length, char c) {
  void const * const found = std::memchr(line, c, static_cast<std::size_t>(length));
  return found != nullptr ? static_cast<std::int32_t>(static_cast<char const *>(found) - line) : -1;
}

} // namespace kivara

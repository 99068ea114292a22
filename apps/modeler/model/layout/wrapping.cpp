#include "model/layout/wrapping.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <cstring>

using SV::String;

namespace modeler {
namespace {

constexpr char kBlanks[] = " \t\r\n";

ISequence<String> wordsOf(String const & text) {
  ISequence<String> words;
  char const * rest = text.c_str() + std::strspn(text.c_str(), kBlanks);
  while (*rest != '\0') {
    std::size_t const length = std::strcspn(rest, kBlanks);
    words.emplace_back(rest, static_cast<std::int32_t>(length));
    rest += length;
    rest += std::strspn(rest, kBlanks);
  }
  return words;
}

} // namespace

ISequence<String> wrapped(String const & text, long width, TextSize const & textSize) {
  ISequence<String> lines;
  for (String const & word : wordsOf(text)) {
    if (!lines.empty()) {
      String const longer = lines.back() + " " + word;
      if (textSize(longer).width <= width) {
        lines.back() = longer;
        continue;
      }
    }
    lines.push_back(word);
  }
  return lines;
}

String shortened(String const & text, long width, TextSize const & textSize) {
  if (textSize(text).width <= width)
    return text;
  ISequence<std::int32_t> ends = {0}; // of the first characters, which may have two bytes
  for (std::int32_t end = 0; end < text.Len();) {
    end += IsDBCSLeadByte(static_cast<BYTE>(text.charAt(end))) && end + 1 < text.Len() ? 2 : 1;
    ends.push_back(end);
  }
  auto const cutAt = [&text](std::int32_t end) { return String(text.c_str(), end) + "..."; };
  auto const tooLong = [&](std::int32_t end) { return textSize(cutAt(end)).width > width; };
  auto const first =
      std::partition_point(ends.begin() + 1, ends.end(), [&](std::int32_t end) { return !tooLong(end); });
  return cutAt(*(first - 1));
}

} // namespace modeler

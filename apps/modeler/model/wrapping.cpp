#include "wrapping.hpp"

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

} // namespace modeler

#include "atools.hpp"

#include <string_view>

using SV::String;

namespace {

String piece(std::string_view characters) {
  return String(characters.data(), static_cast<std::int32_t>(characters.size()));
}

/// \param text       shares the block of the caller's text, which may be one of the old tokens
/// \param separator  a character, or a text that is not empty
template <class Separator>
void split(String const text, Separator separator, std::size_t separatorLength, ISequence<String> & tokens) {
  tokens.clear();
  std::string_view rest(text.c_str());
  for (std::size_t at = rest.find(separator); at != std::string_view::npos; at = rest.find(separator)) {
    tokens.push_back(piece(rest.substr(0, at)));
    rest.remove_prefix(at + separatorLength);
  }
  tokens.push_back(piece(rest));
}

} // namespace

void Kiv_SplitIntoTokens(String const & text, char const * separator, ISequence<String> & tokens) {
  if (separator == nullptr || *separator == '\0') {
    tokens.clear();
    return;
  }
  if (separator[1] == '\0') {
    split(text, *separator, 1, tokens);
    return;
  }
  String const kept(separator); // it may be a part of the old tokens
  std::string_view const characters(kept.c_str());
  split(text, characters, characters.size(), tokens);
}

void Kiv_SplitIntoTokens(String const & text, char separator, ISequence<String> & tokens) {
  if (separator == '\0')
    tokens.clear();
  else
    split(text, separator, 1, tokens);
}

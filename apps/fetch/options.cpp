#include "options.hpp"

#include <cwchar>
#include <string_view>

namespace {

/// A number from 1 to 1000.
bool readNumber(wchar_t const * word, unsigned & number) {
  wchar_t * end = nullptr;
  unsigned long const value = std::wcstoul(word, &end, 10);
  if (word[0] < L'0' || word[0] > L'9' || *end != L'\0' || value < 1 || value > 1000)
    return false;
  number = static_cast<unsigned>(value);
  return true;
}

bool readValue(std::wstring_view option, wchar_t const * value, Options & options) {
  if (option == L"-tries")
    return readNumber(value, options.tries);
  if (option == L"-timeout")
    return readNumber(value, options.seconds);
  if (option != L"-proxy")
    return false;
  options.proxy = value;
  return true;
}

} // namespace

std::optional<Options> readOptions(int count, wchar_t ** words) {
  Options options;
  int at = 1;
  for (; at < count && words[at][0] == L'-'; ++at) {
    std::wstring_view const option(words[at]);
    if (option == L"-insecure")
      options.acceptAnyCertificate = true;
    else if (option == L"-noredirects")
      options.noRedirects = true;
    else if (++at >= count || !readValue(option, words[at], options))
      return std::nullopt;
  }
  if (count - at != 2)
    return std::nullopt;
  options.url = words[at];
  options.file = words[at + 1];
  return options;
}

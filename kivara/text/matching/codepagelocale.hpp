#pragma once
/// \file
/// Internal: the runtime's character classes for a while.

#include <clocale>
#include <cstdlib>
#include <cstring>

namespace kivara {

/// While it lives, LC_CTYPE of the whole process is that of the system's code page.
class CodePageLocale {
public:
  CodePageLocale() : before_(copyOf(std::setlocale(LC_CTYPE, nullptr))) { std::setlocale(LC_CTYPE, ".ACP"); }
  CodePageLocale(CodePageLocale const &) = delete;
  CodePageLocale & operator=(CodePageLocale const &) = delete;
  ~CodePageLocale() {
    if (before_ != nullptr)
      std::setlocale(LC_CTYPE, before_);
    std::free(before_);
  }

private:
  /// The runtime's own text does not outlive the next change.
  static char * copyOf(char const * name) { return name != nullptr ? _strdup(name) : nullptr; }

  char * before_;
};

} // namespace kivara

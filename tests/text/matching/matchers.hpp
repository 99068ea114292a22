#pragma once
/// \file
/// What tests of matchers share.

#include "aregex.hpp"

#include "support/imports/import_spy.hpp"

#include <string>

/// How many expressions were compiled since it was made, and not freed yet.
class LiveExpressions {
public:
  LiveExpressions() {
    static bool const isWatching = watch();
    start_ = isWatching ? count_ : 0;
  }
  int value() const { return count_ - start_; }

private:
  static bool watch() {
    return support::spyOnImport("kivara.dll", "regcomp", [](support::SpiedCall &) { ++count_; }) &&
           support::spyOnImport("kivara.dll", "regfree", [](support::SpiedCall &) { --count_; });
  }

  static inline int count_ = 0; // spies stay as long as the process
  int start_;
};

/// "start-end" of a match, "" without one.
template <class Matcher> std::string offsets(Matcher const & matcher, char const * text) {
  int start = -7, end = -7;
  if (matcher.match(text, start, end) == 0)
    return "";
  return std::to_string(start) + "-" + std::to_string(end);
}

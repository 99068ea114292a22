// Matchers beside the bare engine, beside std::regex, and wildcards beside a matcher that is written by hand.

#include "aregex.hpp"
#include "support/ratio.hpp"

#include <cstring>
#include <regex>
#include <string>

namespace {

/// Sentences with a place for a word near their end.
std::string proseWith(std::string const & word) {
  std::string text;
  while (text.size() < 2000)
    text += "The office answers within two days, when the customer has signed the order form. ";
  return text + word + " And so on.";
}

bench::Body ours(std::string const & pattern, std::string const & text) {
  return [=](benchmark::State & state) {
    KivRegEx const matcher(pattern.c_str(), 0);
    for (auto _ : state)
      benchmark::DoNotOptimize(matcher.match(text.c_str()));
  };
}

bench::Body engine(std::string const & pattern, std::string const & text) {
  return [=](benchmark::State & state) {
    regex_t expression;
    regcomp(&expression, pattern.c_str(), REG_EXTENDED);
    for (auto _ : state)
      benchmark::DoNotOptimize(regexec(&expression, text.c_str(), 0, nullptr, 0));
    regfree(&expression);
  };
}

bench::Body standard(std::string const & pattern, std::string const & text) {
  return [=](benchmark::State & state) {
    std::regex const expression(pattern, std::regex::extended | std::regex::optimize);
    for (auto _ : state)
      benchmark::DoNotOptimize(std::regex_search(text, expression));
  };
}

bench::Pair enginePair(char const * name, std::string const & pattern, std::string const & text) {
  return {std::string("KivRegEx::match: ") + name, bench::atMost(1.05), ours(pattern, text), "the bare engine",
          engine(pattern, text)};
}

bench::Pair standardPair(char const * name, std::string const & pattern, std::string const & text) {
  return {std::string("KivRegEx::match: ") + name, bench::atMost(0.33), ours(pattern, text), "std::regex",
          standard(pattern, text)};
}

/// The usual matcher by hand: it goes back to the last star.
bool matchesByHand(char const * pattern, char const * text) {
  char const * star = nullptr;
  char const * starText = nullptr;
  while (*text != '\0') {
    if (*pattern == '*') {
      star = pattern++;
      starText = text;
    } else if (*pattern == '?' || *pattern == *text) {
      ++pattern;
      ++text;
    } else if (star != nullptr) {
      pattern = star + 1;
      text = ++starText;
    } else {
      return false;
    }
  }
  return pattern[std::strspn(pattern, "*")] == '\0';
}

bench::Pair wildcardPair(char const * name, char const * pattern, std::string const & text) {
  return {std::string("KivJokerz::match: ") + name, bench::shown(),
          [=](benchmark::State & state) {
            KivJokerz const matcher(pattern, 0);
            for (auto _ : state)
              benchmark::DoNotOptimize(matcher.match(text.c_str()));
          },
          "a matcher by hand",
          [=](benchmark::State & state) {
            for (auto _ : state) {
              benchmark::DoNotOptimize(text.c_str());
              benchmark::DoNotOptimize(matchesByHand(pattern, text.c_str()));
            }
          }};
}

bench::Pair const pairs[] = {
    enginePair("a name of 12 characters", "^[a-z]+\\.txt$", "document.txt"),
    enginePair("a text of 2,000 characters", "Model [0-9]+", proseWith("Model 12.")),
    standardPair("a word", "invoice", proseWith("The invoice.")),
    standardPair("a number", "[0-9]+", proseWith("Page 12.")),
    standardPair("a date", "[0-9]{4}-[0-9]{2}-[0-9]{2}", proseWith("On 2026-11-22.")),
    standardPair("an address", "[A-Za-z0-9._]+@[a-z]+\\.(com|org)", proseWith("Write to info@example.org.")),
    standardPair("one of some words", "(invoice|receipt|reminder)s?", proseWith("Two reminders.")),
    wildcardPair("a name of 12 characters", "*.txt", "document.txt"),
    wildcardPair("a text of 2,000 characters", "*invoice?*", proseWith("The invoice.")),
};

} // namespace

// Wildcards, and the matchers behind their interface.

#include "aregex.hpp"

#include <cstring>
#include <string>

namespace {

enum Flags : int { kIgnoreCase = 1, kAnywhere = 2, kWholeWords = 4 };

/// What a pattern is put together from.
struct Pieces {
  char const * before;
  char const * oneCharacter;
  char const * after;
};

Pieces piecesFor(int flags) {
  if ((flags & kWholeWords) != 0)
    return {"(^|[ [:punct:]])", "[^ [:cntrl:][:punct:]]", "([ [:punct:]]|$)"};
  if ((flags & kAnywhere) != 0)
    return {"", ".", ""};
  return {"^", ".", "$"};
}

std::string expressionFor(char const * pattern, Pieces const & pieces) {
  std::string expression = pieces.before;
  for (; *pattern != '\0'; ++pattern) {
    if (*pattern == '*' || *pattern == '?')
      expression += pieces.oneCharacter;
    else if (std::strchr(".$()+[\\^{|", *pattern) != nullptr)
      expression += '\\';
    if (*pattern != '?')
      expression += *pattern; // a "*" now repeats the character before it
  }
  return expression + pieces.after;
}

} // namespace

KivJokerz::KivJokerz() = default;

KivJokerz::KivJokerz(char const * pattern, int flags) {
  std::string const expression = expressionFor(pattern != nullptr ? pattern : "", piecesFor(flags));
  expression_.regComp(expression.c_str(), (flags & kIgnoreCase) != 0 ? REG_NOSUB | REG_ICASE : REG_NOSUB, 0);
}

KivJokerz::KivJokerz(KivJokerz const & other) = default;
KivJokerz::~KivJokerz() = default;

KivJokerz const & KivJokerz::operator=(KivJokerz const & other) {
  expression_ = other.expression_;
  return *this;
}

// A regular expression, though the constructor takes wildcards: callers assign expressions that they have translated already.
KivJokerz const & KivJokerz::operator=(char const * pattern) {
  expression_ = pattern;
  return *this;
}

int KivJokerz::operator!() const { return !expression_; }
KivJokerz::operator void *() const { return expression_; }
int KivJokerz::match(char const * text) const { return expression_.match(text); }
int KivJokerz::match(char const * text, int & start, int & end) const { return expression_.match(text, start, end); }

KivMatcherI::KivMatcherI() = default;
KivMatcherI::KivMatcherI(KivMatcherI const &) {}
KivMatcherI & KivMatcherI::operator=(KivMatcherI const &) { return *this; }

KivRegEx2::KivRegEx2(char const * pattern, int flags) : expression_(pattern, flags) {}
KivRegEx2::KivRegEx2(KivRegEx2 const & other) = default;
KivRegEx2::~KivRegEx2() = default;

KivRegEx2 & KivRegEx2::operator=(KivRegEx2 const & other) {
  expression_ = other.expression_;
  return *this;
}

KivRegEx2::operator void *() const { return expression_; }
int KivRegEx2::operator!() const { return !expression_; }
int KivRegEx2::match(char const * text) const { return expression_.match(text); }
int KivRegEx2::match(char const * text, int & start, int & end) const { return expression_.match(text, start, end); }

KivJokerz2::KivJokerz2(char const * pattern, int flags) : pattern_(pattern, flags) {}
KivJokerz2::KivJokerz2(KivJokerz2 const & other) = default;
KivJokerz2::~KivJokerz2() = default;

KivJokerz2 & KivJokerz2::operator=(KivJokerz2 const & other) {
  pattern_ = other.pattern_;
  return *this;
}

KivJokerz2::operator void *() const { return pattern_; }
int KivJokerz2::operator!() const { return !pattern_; }
int KivJokerz2::match(char const * text) const { return pattern_.match(text); }

#include "patterncheck.hpp"

#include "re00005.hpp"

#include <cstring>
#include <vector>

namespace re {
namespace {

constexpr int kMostRepetitions = 255;
constexpr long kItemsOfClass = 16; // "[:alpha:]" is a number of ranges
constexpr int kMostHexDigits = 31; // as many as the engine has room for

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

class Check {
public:
  Check(char const * pattern, int flags) : at_(pattern), flags_(flags), open_(1) {}

  int run() {
    while (code_ == 0 && *at_ != '\0')
      next();
    while (code_ == 0 && open_.size() > 1)
      closeGroup(); // the engine reports what is not closed
    if (code_ == 0 && (flags_ & REG_NOSUB) == 0 && groups_ * positions() > kMostGroupPositions)
      code_ = REG_ESPACE;
    return code_;
  }

private:
  /// What a group that is not closed yet needs: its last atom may still be repeated.
  struct Group {
    long before = 0;
    long lastAtom = 0;
  };

  bool extended() const { return (flags_ & REG_EXTENDED) != 0; }

  void next() {
    if (isLiteral_)
      literal();
    else if (*at_ == '\\')
      escape();
    else if (*at_ == '[')
      bracket();
    else if (extended() && std::strchr("(){", *at_) != nullptr)
      special(*at_);
    else
      plain();
  }

  /// One of "( ) {" of the extended syntax, or of the same with a backslash before it in the basic one.
  void special(char c) {
    if (c == '(')
      openGroup();
    else if (c == ')')
      closeGroup();
    else
      bound();
  }

  void plain() {
    if (std::strchr("^$", *at_) != nullptr)
      place(1);
    else
      atom(std::strchr(extended() ? "*+?|" : "*", *at_) != nullptr ? 0 : 1, 1);
  }

  /// Between \Q and \E.
  void literal() {
    if (at_[0] == '\\' && at_[1] == 'E') {
      isLiteral_ = false;
      at_ += 2;
    } else {
      atom(1, 1);
    }
  }

  void atom(long positions, int length) {
    at_ += length;
    if (positions == 0)
      return;
    Group & group = open_.back();
    group.before += group.lastAtom;
    group.lastAtom = positions;
    checkPositions();
  }

  /// What matches without a character. The engine looks at all of them for each one.
  void place(int length) {
    at_ += length;
    if (++groups_ > kMostGroups)
      code_ = REG_ESPACE;
  }

  long positions() const { return open_.back().before + open_.back().lastAtom; }

  void checkPositions() {
    if (positions() > kMostPositions)
      code_ = REG_ESPACE;
  }

  void openGroup() {
    if (extended() && at_[1] == '?') {
      options();
      return;
    }
    ++at_;
    place(0);
    open_.emplace_back();
  }

  /// "(?i)", "(?i:" or "(?#comment)".
  void options() {
    at_ += 2;
    if (*at_ == '#')
      at_ += std::strcspn(at_, ")");
    else
      at_ += std::strspn(at_, "inrU-");
    if (*at_ == ':' && ++groups_ <= kMostGroups)
      open_.emplace_back();
    else if (*at_ != ')')
      code_ = *at_ == ':' ? REG_ESPACE : REG_BADPAT;
    if (code_ == 0)
      ++at_;
  }

  void closeGroup() {
    if (open_.size() == 1) {
      atom(1, 1); // a parenthesis without its other one
      return;
    }
    long const inside = positions();
    open_.pop_back();
    at_ += *at_ != '\0' ? 1 : 0;
    Group & group = open_.back();
    group.before += group.lastAtom;
    group.lastAtom = inside;
    checkPositions();
  }

  /// A number up to a little more than the most; -1 when there is none.
  int number() {
    int value = -1;
    for (; isDigit(*at_); ++at_)
      if (value <= kMostRepetitions)
        value = (value < 0 ? 0 : value * 10) + (*at_ - '0');
    return value;
  }

  void bound() {
    ++at_;
    int const least = number();
    bool const isRange = *at_ == ',';
    at_ += isRange ? 1 : 0;
    int const most = isRange ? number() : least;
    char const * const end = extended() ? "}" : "\\}";
    bool const isOpenRange = isRange && most < 0;
    if (*at_ == '\0')
      code_ = REG_EBRACE;
    else if (std::strncmp(at_, end, std::strlen(end)) != 0 || least < 0 || least > kMostRepetitions ||
             most > kMostRepetitions || (!isOpenRange && most < least))
      code_ = REG_BADBR;
    else
      repeat(isOpenRange ? least + 1 : most);
    at_ += code_ == 0 ? std::strlen(end) : 0;
  }

  void repeat(int copies) {
    if (copies == 0)
      place(0);
    open_.back().lastAtom *= copies > 1 ? copies : 1;
    checkPositions();
  }

  void escape() {
    char const c = at_[1];
    if (!extended() && c != '\0' && std::strchr("(){", c) != nullptr) {
      ++at_;
      special(c);
    } else if (c == 'Q') {
      isLiteral_ = true;
      at_ += 2;
    } else if (c == 'x') {
      hexadecimal();
    } else if (c == '0') {
      code_ = REG_ESUBREG;
    } else {
      bool const isClass = c != '\0' && std::strchr("wWsSdD", c) != nullptr;
      if (c == '\0')
        ++at_; // the engine reports it
      else if (std::strchr("bB<>", c) != nullptr)
        place(2);
      else
        atom(isClass ? kItemsOfClass : 1, 2);
    }
  }

  /// "\x41" or "\x{41}".
  void hexadecimal() {
    at_ += 2;
    if (*at_ == '\0') {
      code_ = REG_BADPAT;
    } else if (*at_ == '{') {
      hexadecimalInBraces();
    } else {
      at_ += isHexDigit(at_[0]) ? 1 : 0;
      atom(1, isHexDigit(at_[0]) ? 1 : 0);
    }
  }

  void hexadecimalInBraces() {
    ++at_;
    int digits = 0;
    bool isByte = true;
    for (; isHexDigit(*at_); ++at_, ++digits)
      isByte = isByte && (*at_ == '0' || std::strspn(at_, "0123456789abcdefABCDEF") <= 2);
    if (*at_ != '}')
      code_ = REG_EBRACE;
    else if (!isByte || digits > kMostHexDigits)
      code_ = REG_BADPAT;
    else
      atom(1, 1);
  }

  void bracket() {
    ++at_;
    at_ += *at_ == '^' ? 1 : 0;
    char const * const first = at_;
    long items = 0;
    for (; code_ == 0 && *at_ != '\0' && (*at_ != ']' || at_ == first); ++items) {
      if (at_[1] == '-' && at_[2] != ']' && at_[2] != '\0')
        at_ += 3;
      else if (*at_ == '[' && (at_[1] == '.' || at_[1] == '='))
        code_ = REG_ECOLLATE;
      else if (*at_ == '[' && at_[1] == ':')
        items += characterClass();
      else
        ++at_;
    }
    if (code_ == 0 && *at_ == ']')
      atom(items, 1);
  }

  /// "[:alpha:]"; the engine knows the names. It would go on after the end of the pattern where the last "]" is missing.
  long characterClass() {
    char const * const end = std::strchr(at_ + 2, ':');
    if (end == nullptr)
      code_ = REG_ECTYPE;
    else if (end[1] != ']')
      code_ = end[1] == '\0' ? REG_EBRACK : REG_ECTYPE;
    else
      at_ = end + 2;
    return kItemsOfClass;
  }

  char const * at_;
  int const flags_;
  std::vector<Group> open_; // the pattern itself, and each group in which the place is
  long long groups_ = 0;
  bool isLiteral_ = false;
  int code_ = 0;
};

} // namespace

int checkPattern(char const * pattern, int flags) { return Check(pattern, flags).run(); }

} // namespace re

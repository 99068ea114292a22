#pragma once
/// \file
/// Matchers: texts against regular expressions and against wildcards.
///
/// KivRegEx takes an extended POSIX regular expression, KivJokerz a pattern with the wildcards "*" and "?". KivRegEx2 and KivJokerz2
/// are the same two behind KivMatcherI, so that a caller can hold either one.
///
/// \code
///   KivJokerz const letters("*.doc?", 1);              // not case-sensitive
///   if (letters.match("Offer.DOCX")) ...
///
///   KivRegEx const number("[0-9]+", 0);
///   int start, end;
///   if (number.match("page 12", start, end)) ...       // 5 and 7
/// \endcode
///
/// A matcher is empty or holds a compiled expression. Copies share the expression and count who holds it; nothing changes it. Patterns
/// and texts are bytes in the system's code page, whatever the runtime's locale is, and end at their NUL; null counts as empty. What
/// the syntax allows, and its limits, stand in re00005.hpp.
///
/// Lack of memory for a matcher throws std::bad_alloc; what the expression itself needs is code 12.
///
/// Threads: there are no locks. A matcher and its copies stay on one thread. Compiling changes LC_CTYPE of the whole process while it
/// runs.

#include "export.hpp"
#include "re00005.hpp"
#include "tools/string.hpp"

#include <cstdint>

/// An object that deletes itself with its last reference. The count is not locked.
class KIV_API __KivRefCounted {
public:
  __KivRefCounted(); ///< with one reference
  /// Takes over the count of the other object, too.
  __KivRefCounted(__KivRefCounted const & other);
  __KivRefCounted & operator=(__KivRefCounted const & other);

  __KivRefCounted & addRef(); ///< returns the object itself

  /// Takes a reference off. The last one deletes the object.
  void removeRef();

protected:
  virtual ~__KivRefCounted();

private:
  std::int32_t refCount_;
};

/// A compiled expression, as matchers share it.
class KIV_API KivRegExData : public __KivRefCounted {
public:
  KivRegExData(KivRegExData const &) = delete;
  KivRegExData & operator=(KivRegExData const &) = delete;

protected:
  ~KivRegExData() override;

private:
  friend class KivRegEx;
  explicit KivRegExData(int flags);

  int compileFlags;
  regex_t compiled;
};

/// A matcher for an extended POSIX regular expression.
class KIV_API KivRegEx {
public:
  /// The codes of the engine.
  enum KivRegExError : int {
    Success = 0,
    NoMatch,
    BadPattern,
    BadCollatingElement,
    BadCharacterClass,
    TrailingBackslash,
    BadBackReference,
    UnbalancedBrackets,
    UnbalancedParentheses,
    UnbalancedBraces,
    BadRepetitionCount,
    BadRange,
    OutOfMemory, ///< also an expression beyond the limits of the engine
    NothingToRepeat
  };

  KivRegEx(); ///< empty

  /// Compiles a pattern. An error is shown in a box, and leaves the matcher empty.
  /// \param flags  2: not case-sensitive; 4: no offsets, which makes matching faster. Extended syntax (1) is always on
  KivRegEx(char const * pattern, int flags);

  KivRegEx(KivRegEx const & other); ///< shares the expression
  ~KivRegEx();

  /// Shares the expression of another matcher. The expression that was held before stays in memory: assign to empty matchers.
  KivRegEx const & operator=(KivRegEx const & other);

  /// Compiles a pattern with the flags 4, as the constructor does.
  KivRegEx const & operator=(char const * pattern);

  int operator!() const;   ///< whether the matcher is empty
  operator void *() const; ///< not null when an expression is held; the pointer has no other use

  /// Compiles a pattern. The former expression is released first, so after an error the matcher is empty.
  /// \param showErrors  not 0: an error is shown in a box
  KivRegExError regComp(char const * pattern, int flags, int showErrors);

  /// Looks for the expression in a text. NoMatch for an empty matcher.
  /// \param showErrors  not 0: every other result than Success is shown in a box, NoMatch too
  KivRegExError regExec(char const * text, int showErrors) const;

  /// The same, with the place of the match.
  /// \param start       where the match starts, in bytes from 0; -1 without a match or when the expression has no offsets. An empty
  ///                    matcher leaves it and \p end unchanged
  /// \param end         one past the last byte of the match, or -1
  /// \param showErrors  not 0: every other result than Success is shown in a box, NoMatch too
  KivRegExError regExec(char const * text, int & start, int & end, int showErrors) const;

  /// Looks for the expression in a text: 1 when it is there, otherwise 0. An error other than NoMatch is shown in a box.
  /// @{
  int match(char const * text) const;
  int match(char const * text, int & start, int & end) const;
  /// @}

  /// The text of a code in the current language; that of the engine, in English, where there is none.
  SV::String fmtErrMsg(KivRegExError error) const;

private:
  void displayError(KivRegExError error) const;
  int resultOf(KivRegExError error) const;

  KivRegExData * data;
};

/// A matcher for a pattern with wildcards: "*" stands for any number of characters, "?" for one. All others stand for themselves.
class KIV_API KivJokerz {
public:
  KivJokerz(); ///< empty

  /// Takes a pattern with wildcards. One that cannot be compiled is not reported: the matcher is then empty.
  /// \param flags  the sum of
  ///               - 1: not case-sensitive;
  ///               - 2: the pattern may match anywhere in the text, otherwise the whole text has to match;
  ///               - 4: the pattern has to stand between blanks, punctuation, or the ends of the text, and its wildcards stand for no
  ///                 such character and no control character. What stands around it belongs to the match; 2 has no effect
  KivJokerz(char const * pattern, int flags);

  KivJokerz(KivJokerz const & other); ///< shares the expression
  ~KivJokerz();

  KivJokerz const & operator=(KivJokerz const & other); ///< as KivRegEx::operator=

  /// Takes a REGULAR EXPRESSION, not wildcards, as KivRegEx::operator= does, with a box for an error.
  KivJokerz const & operator=(char const * pattern);

  int operator!() const;   ///< whether the matcher is empty
  operator void *() const; ///< not null when a pattern is held

  int match(char const * text) const; ///< 1 or 0
  /// The offsets become -1, since patterns are compiled without them; an empty matcher leaves them unchanged.
  int match(char const * text, int & start, int & end) const;

private:
  KivRegEx expression_;
};

// Deleting through the interface was never allowed: it has no virtual destructor, and neither have those that implement it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// What a caller needs of a matcher. Never delete one through this interface.
class KIV_API KivMatcherI {
public:
  KivMatcherI();
  KivMatcherI(KivMatcherI const & other);
  KivMatcherI & operator=(KivMatcherI const & other); ///< does nothing

  virtual operator void *() const = 0;            ///< not null when an expression is held
  virtual int operator!() const = 0;              ///< not 0 when none is held
  virtual int match(char const * text) const = 0; ///< not 0 when the text matches
};

/// KivRegEx behind the interface.
class KIV_API KivRegEx2 : public KivMatcherI {
public:
  KivRegEx2(char const * pattern, int flags); ///< as KivRegEx
  KivRegEx2(KivRegEx2 const & other);         ///< shares the expression
  ~KivRegEx2();
  KivRegEx2 & operator=(KivRegEx2 const & other); ///< as KivRegEx::operator=

  operator void *() const override;
  int operator!() const override;
  int match(char const * text) const override;
  int match(char const * text, int & start, int & end) const; ///< as KivRegEx::match

private:
  KivRegEx expression_;
};

/// KivJokerz behind the interface.
class KIV_API KivJokerz2 : public KivMatcherI {
public:
  KivJokerz2(char const * pattern, int flags); ///< as KivJokerz
  KivJokerz2(KivJokerz2 const & other);        ///< shares the expression
  ~KivJokerz2();
  KivJokerz2 & operator=(KivJokerz2 const & other); ///< as KivRegEx::operator=

  operator void *() const override;
  int operator!() const override;
  int match(char const * text) const override;

private:
  KivJokerz pattern_;
};

#pragma GCC diagnostic pop

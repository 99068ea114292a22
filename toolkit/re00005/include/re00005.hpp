#pragma once
/// \file
/// Regular expressions as POSIX has them: the engine under the matchers of the library.
///
/// \code
///   regex_t expression;
///   if (regcomp(&expression, "[0-9]+", REG_EXTENDED) == 0) {
///     regmatch_t match;
///     if (regexec(&expression, "page 12", 1, &match, 0) == 0)
///       use(match.rm_so, match.rm_eo); // 5 and 7
///     regfree(&expression);
///   }
/// \endcode
///
/// Patterns and texts are bytes and end at their NUL. The classes of characters, and what is upper and lower case, are those of the
/// runtime's LC_CTYPE when regcomp runs. A match begins as far to the left as possible and is the longest one there.
///
/// Beyond POSIX there are the escapes of letters (\\w, \\d, \\s and their opposites, \\b, \\<, \\>, \\x41, \\Q...\\E), the shortest
/// repetition ("+?") and options of groups ("(?i)").
///
/// Limits, beyond which regcomp returns REG_ESPACE: 100,000 characters to match, with repetitions in braces multiplied
/// and each item of a bracket counted; 2,500 groups and places such as "^", nested or side by side; their product,
/// 6,250,000, without REG_NOSUB; and 256 MB of memory or a million transitions, which only patterns of many
/// alternatives in repetitions need. The time of a match is at most proportional to the length of the text times that
/// of the pattern; only back references may take time without limit.
///
/// Threads: different expressions may be used by different threads; a compiled one by several at a time.

#include "tools/winnames.hpp"

#include <cstddef>

#ifdef RE00005_EXPORTS
#define RE_API __declspec(dllexport)
#else
#define RE_API __declspec(dllimport)
#endif

/// \name Flags of regcomp
/// Other bits are ignored.
/// @{
inline constexpr int REG_EXTENDED = 1; ///< extended syntax
inline constexpr int REG_ICASE = 2;    ///< not case-sensitive
inline constexpr int REG_NOSUB = 4;    ///< only whether there is a match: regexec gives -1 for all offsets
/// @}

/// \name Flags of regexec
/// Other bits are ignored.
/// @{
inline constexpr int REG_NOTBOL = 1; ///< the text does not begin a line, so that "^" does not match there
inline constexpr int REG_NOTEOL = 2; ///< the text does not end a line
/// @}

/// Results, besides 0.
enum : int {
  REG_NOMATCH = 1, ///< of regexec alone
  REG_BADPAT,      ///< not a pattern
  REG_ECOLLATE,    ///< a collating element; there are none
  REG_ECTYPE,      ///< an unknown class of characters
  REG_EESCAPE,     ///< a backslash at the end
  REG_ESUBREG,     ///< a back reference to a group that does not exist
  REG_EBRACK,      ///< brackets do not balance
  REG_EPAREN,      ///< parentheses do not balance
  REG_EBRACE,      ///< braces do not balance
  REG_BADBR,       ///< not a number of repetitions; the largest is 255
  REG_ERANGE,      ///< not a range
  REG_ESPACE,      ///< out of memory, or beyond a limit
  REG_BADRPT       ///< a repetition of nothing
};

extern "C" {

/// A position in a text, in bytes from 0; -1 for none.
typedef int regoff_t;

/// A compiled expression.
struct regex_t {
  std::size_t re_nsub; ///< the number of its groups
  void * value;        ///< null when nothing is compiled
};

/// A part of a text: its start, and one past its end.
struct regmatch_t {
  regoff_t rm_so;
  regoff_t rm_eo;
};

/// Compiles a pattern; null counts as the empty one.
/// \return 0, or a code. \p expression then holds nothing, and regfree may still be called for it
RE_API int regcomp(regex_t * expression, char const * pattern, int flags);

/// Looks for the expression in a text; null counts as the empty one.
/// \param matches  for \p count matches: that of the whole expression, then those of its groups; -1 where there is none. Unchanged
///                 unless the result is 0
/// \return 0, REG_NOMATCH, or REG_ESPACE; REG_BADPAT when nothing is compiled
RE_API int regexec(regex_t const * expression, char const * text, std::size_t count, regmatch_t * matches, int flags);

/// Writes the English text of a code, cut to \p size characters with the NUL.
/// \param expression  may be null
/// \return the size of the whole text with the NUL
RE_API std::size_t regerror(int code, regex_t const * expression, char * buffer, std::size_t size);

/// Frees what regcomp allocated. The expression holds nothing then.
RE_API void regfree(regex_t * expression);
}

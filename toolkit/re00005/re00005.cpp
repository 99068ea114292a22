#include "re00005.hpp"

#include "patterncheck.hpp"

#include <cstring>
#include <new>

// The engine's header has its own constants by the names of ours, and macros among them.
namespace engine {
extern "C" {
int tre_regcomp(regex_t *, char const *, int);
int tre_regexec(regex_t const *, char const *, std::size_t, regmatch_t *, int);
std::size_t tre_regerror(int, regex_t const *, char *, std::size_t);
void tre_regfree(regex_t *);
}
} // namespace engine

namespace {

constexpr int kEngineNoOffsets = 8; // its 4 would match line by line

int engineFlags(int flags) {
  return (flags & (REG_EXTENDED | REG_ICASE)) | ((flags & REG_NOSUB) != 0 ? kEngineNoOffsets : 0);
}

char const * textOf(char const * text) { return text != nullptr ? text : ""; }

int checked(char const * pattern, int flags) {
  try {
    return re::checkPattern(pattern, flags);
  } catch (std::bad_alloc const &) {
    return REG_ESPACE;
  }
}

} // namespace

int regcomp(regex_t * expression, char const * pattern, int flags) {
  *expression = {};
  int code = checked(textOf(pattern), flags);
  if (code != 0)
    return code;
  code = engine::tre_regcomp(expression, textOf(pattern), engineFlags(flags));
  if (code != 0)
    *expression = {}; // the engine leaves what it has freed
  return code;
}

int regexec(regex_t const * expression, char const * text, std::size_t count, regmatch_t * matches, int flags) {
  if (expression->value == nullptr)
    return REG_BADPAT;
  return engine::tre_regexec(expression, textOf(text), count, matches, flags & (REG_NOTBOL | REG_NOTEOL));
}

std::size_t regerror(int code, regex_t const * expression, char * buffer, std::size_t size) {
  return engine::tre_regerror(code, expression, buffer, size);
}

void regfree(regex_t * expression) {
  engine::tre_regfree(expression);
  *expression = {};
}

/* What the tests of the engine's package ask for, on re00005.dll. Texts with a NUL and matching by lines are not there. */
#pragma once

#include <limits.h>
#include <stddef.h>
#include <stdlib.h>
#include <string.h>

typedef struct {
  size_t re_nsub;
  void * value;
} regex_t;

typedef struct {
  int rm_so;
  int rm_eo;
} regmatch_t;

enum {
  REG_OK,
  REG_NOMATCH,
  REG_BADPAT,
  REG_ECOLLATE,
  REG_ECTYPE,
  REG_EESCAPE,
  REG_ESUBREG,
  REG_EBRACK,
  REG_EPAREN,
  REG_EBRACE,
  REG_BADBR,
  REG_ERANGE,
  REG_ESPACE,
  REG_BADRPT
};

/* Flags without a counterpart get bits that are ignored. */
enum {
  REG_EXTENDED = 1,
  REG_ICASE = 2,
  REG_NOSUB = 4,
  REG_NEWLINE = 16,
  REG_LITERAL = 32,
  REG_RIGHT_ASSOC = 64,
  REG_UNGREEDY = 128
};
enum { REG_NOTBOL = 1, REG_NOTEOL = 2, REG_APPROX_MATCHER = 4, REG_BACKTRACKING_MATCHER = 8 };

#define REG_OK REG_OK
#define RE_DUP_MAX 255
#define TRE_VERSION "by re00005.dll"
#define elementsof(x) (sizeof(x) / sizeof(x[0]))

__declspec(dllimport) int regcomp(regex_t *, char const *, int);
__declspec(dllimport) int regexec(regex_t const *, char const *, size_t, regmatch_t *, int);
__declspec(dllimport) void regfree(regex_t *);

#define tre_regfree regfree
#define tre_have_approx(expression) 1 /* there is one way of matching alone */
#define tre_have_backrefs(expression) 1

static char * copyOf(char const * text, size_t length) {
  char * copy = malloc(length + 1);
  if (length != 0)
    memcpy(copy, text, length);
  copy[length] = '\0';
  return copy;
}

static int tre_regcomp(regex_t * expression, char const * pattern, int flags) {
  return regcomp(expression, pattern, flags);
}

static int tre_regncomp(regex_t * expression, char const * pattern, size_t length, int flags) {
  char * copy = copyOf(pattern, length);
  int const result = regcomp(expression, copy, flags);
  free(copy);
  return result;
}

static int tre_regexec(regex_t const * expression, char const * text, size_t count, regmatch_t * matches, int flags) {
  return regexec(expression, text, count, matches, flags);
}

static int tre_regnexec(regex_t const * expression, char const * text, size_t length, size_t count,
                        regmatch_t * matches, int flags) {
  char * copy = copyOf(text, length);
  int const result = regexec(expression, copy, count, matches, flags);
  free(copy);
  return result;
}

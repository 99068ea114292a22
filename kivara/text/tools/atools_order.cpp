#include "atools.hpp"
#include "atrace.hpp"
#include "base/modules.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace {

constexpr unsigned kLineCompare = 122;

int sign(int number) { return (number > 0) - (number < 0); }

char const * orEmpty(char const * text) { return text != nullptr ? text : ""; }

/// The order of strings that differ at most in case: upper case first.
int compareCase(char const * a, char const * b) {
  for (; *a != '\0' && *b != '\0'; ++a, ++b) {
    if (*a == *b || !IsCharAlphaA(*a) || !IsCharAlphaA(*b))
      continue;
    bool const isUpper = IsCharUpperA(*a) != FALSE;
    if (isUpper != (IsCharUpperA(*b) != FALSE))
      return isUpper ? -1 : 1;
  }
  return 0;
}

} // namespace

int kiv_lexcmp(char const * a, char const * b) {
  int result = CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a, -1, b, -1);
  if (result == 0) {
    displayErrorMessage(kivara::modules::kAtools, kLineCompare);
    result = CSTR_EQUAL + sign(SV::h_stricmp(a, b)); // still a total order, which sorting needs
  }
  return result != CSTR_EQUAL ? sign(result - CSTR_EQUAL) : compareCase(orEmpty(a), orEmpty(b));
}

bool Kiv_IsLexGreater(String const & a, String const & b) { return kiv_lexcmp(a.c_str(), b.c_str()) > 0; }
bool Kiv_IsLexGreaterEqual(String const & a, String const & b) { return kiv_lexcmp(a.c_str(), b.c_str()) >= 0; }

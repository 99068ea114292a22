#include "tools/assert.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <cstdio>

namespace SV {
namespace {

bool breaksLine(char c) { return c == '\n' || c == '\r'; }

} // namespace

void SV_CheckAssert(bool condition, char const * expression, char const * message, char const * file,
                    unsigned long line) {
  if (condition)
    return;
  char text[1024];
  int const length = std::snprintf(text, sizeof text - 1, "[assertion] %.300s (%lu): %.300s%s%.300s",
                                   file != nullptr ? file : "?", line, expression != nullptr ? expression : "?",
                                   message != nullptr ? ": " : "", message != nullptr ? message : "");
  std::replace_if(text, text + length, breaksLine, ' ');
  text[length] = '\n';
  text[length + 1] = '\0';
  OutputDebugStringA(text);
  std::fputs(text, stderr);
  std::fflush(stderr);
#ifdef KIVARA_DEBUG
  DebugBreak();
#endif
}

} // namespace SV

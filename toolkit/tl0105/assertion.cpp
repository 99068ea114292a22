#include "tools/assert.hpp"

#include "tools/winapi.hpp"

#include <cstdio>

namespace SV {

void SV_CheckAssert(bool condition, char const * expression, char const * message, char const * file,
                    unsigned long line) {
  if (condition)
    return;
  char text[1024];
  std::snprintf(text, sizeof text, "[assertion] %.300s (%lu): %.300s%s%.300s\n", file != nullptr ? file : "?", line,
                expression != nullptr ? expression : "?", message != nullptr ? ": " : "",
                message != nullptr ? message : "");
  OutputDebugStringA(text);
  std::fputs(text, stderr);
  std::fflush(stderr);
#ifdef KIVARA_DEBUG
  DebugBreak();
#endif
}

} // namespace SV

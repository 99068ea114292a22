#include "locale/languagelist.hpp"

#include <cctype>
#include <cstdlib>
#include <cstring>

namespace kivara {
namespace {

constexpr int kLineLimit = 100; ///< with its NUL; the rest of a longer line counts as another line

char const * withoutBlanksInFront(char const * line) {
  while (std::isspace(static_cast<unsigned char>(*line)) != 0)
    ++line;
  return line;
}

void cutLineEnd(char * line) {
  std::size_t const length = std::strlen(line);
  if (length > 0 && line[length - 1] == '\n')
    line[length - 1] = '\0';
}

} // namespace

bool nextLanguage(FILE * file, unsigned short & id) {
  char line[kLineLimit];
  while (std::fgets(line, sizeof line, file) != nullptr) {
    cutLineEnd(line);
    char const * const text = withoutBlanksInFront(line);
    if (*text == '\0' || *text == ';')
      continue;
    id = static_cast<unsigned short>(std::atoi(text));
    return true;
  }
  return false;
}

} // namespace kivara

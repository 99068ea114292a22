#pragma once
/// \file
/// Internal: the character classes of the tokeniser.

#include <cctype>

extern "C" unsigned short *(__cdecl __pctype_func)(
    void); // in parentheses: the runtime's header has a macro of that name

namespace kivara {

/// What isspace and isalnum answer under the locale in force, looked up in the runtime's own table: two calls for each byte
/// would cost more than all the rest of a token. To be made anew for each token, since the locale may change in between.
class CharClasses {
public:
  explicit CharClasses(bool commaSeparates) : commaIsWord_(!commaSeparates), table_((__pctype_func)()) {}

  bool isSpace(char c) const { return (table_[static_cast<unsigned char>(c)] & _SPACE) != 0; }

  bool isWord(char c) const {
    return (table_[static_cast<unsigned char>(c)] & (_ALPHA | _DIGIT)) != 0 || c == '+' || c == '-' || c == '.' ||
           c == '_' || (c == ',' && commaIsWord_);
  }

private:
  bool commaIsWord_;
  unsigned short const * table_;
};

} // namespace kivara

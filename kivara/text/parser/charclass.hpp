#pragma once
/// \file
/// Internal: the character classes of the tokeniser.

#include <array>
#include <cctype>

extern "C" unsigned short *(__cdecl __pctype_func)(
    void); // in parentheses: the runtime's header has a macro of that name

namespace kivara {

/// The answers of isspace and isalnum in the current locale, read from the runtime's own table: two calls for each byte would
/// cost more than the rest of a token. Construct it for each token, since the locale may change between two.
class CharClasses {
public:
  explicit CharClasses(bool commaSeparates)
      : table_((__pctype_func)()), signs_(commaSeparates ? kSigns.data() : kSignsAndComma.data()) {}

  bool isSpace(char c) const { return (table_[static_cast<unsigned char>(c)] & _SPACE) != 0; }

  /// Two look-ups without a branch between them: the processor cannot predict where a word ends, so each branch costs.
  bool isWord(char c) const {
    auto const byte = static_cast<unsigned char>(c);
    return ((table_[byte] & (_ALPHA | _DIGIT)) | signs_[byte]) != 0;
  }

private:
  using Signs = std::array<unsigned char, 256>;

  /// 1 for each character that is part of words without being a letter or digit.
  static constexpr Signs signs(bool withComma) {
    Signs table{};
    for (char const c : {'+', '-', '.', '_'})
      table[static_cast<unsigned char>(c)] = 1;
    table[','] = withComma ? 1 : 0;
    return table;
  }

  static Signs const kSigns;
  static Signs const kSignsAndComma;

  unsigned short const * table_;
  unsigned char const * signs_;
};

inline constexpr CharClasses::Signs CharClasses::kSigns = signs(false);
inline constexpr CharClasses::Signs CharClasses::kSignsAndComma = signs(true);

} // namespace kivara

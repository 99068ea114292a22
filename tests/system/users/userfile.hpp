#pragma once
/// \file
/// What a file with a database account holds, good and damaged.

#include "acrypto.hpp"
#include "support/data/damage.hpp"

#include <iterator>
#include <string>

namespace kivtest {

/// The line of the file for a text, without a line feed after it.
inline std::string encrypted(std::string text, long type = 2) {
  char * line = nullptr;
  KivEncryption::Instance().Encrypt(type, text.data(), line, -1);
  std::string const result(line);
  delete[] line;
  return result;
}

/// The bytes of a file that was good before some changes.
inline std::string damagedAccount(support::Random & random) {
  std::string const texts[] = {"\nname\npassword", "first\nn\n",
                               "\n" + std::string(40, 'n') + "\n" + std::string(900, 'p'),
                               "\n\n" + std::string(2'030, 'p')};
  return support::damaged(encrypted(texts[random() % std::size(texts)]), random,
                          {.pieces = {"0", "9", "a", "F", " ", "\n", "\r", "\x1A", std::string(32, '0')}});
}

} // namespace kivtest

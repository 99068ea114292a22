#pragma once
/// \file
/// What a file with a database account holds, good and damaged.

#include "acrypto.hpp"
#include "support/random.hpp"

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

/// One change, of a kind that the reader of the line or the cipher decides by.
inline void damage(std::string & bytes, support::Random & random) {
  constexpr char kPieces[] = "0123456789abcdefABCDEF \n\r\x1A\xFF";
  std::size_t const at = random() % (bytes.size() + 1);
  switch (random() % 6) {
  case 0: bytes.resize(at); break;
  case 1: bytes.insert(at, 1, kPieces[random() % sizeof kPieces]); break; // the NUL too
  case 2: bytes.erase(at, random() % 40); break;
  case 3: bytes.insert(at, bytes.substr(random() % (bytes.size() + 1), 32 * (random() % 4))); break;
  default:
    if (at < bytes.size())
      bytes[at] = kPieces[random() % sizeof kPieces];
  }
}

/// The bytes of a file that was good before some changes.
inline std::string damagedAccount(support::Random & random) {
  std::string const texts[] = {"\nname\npassword", "first\nn\n",
                               "\n" + std::string(40, 'n') + "\n" + std::string(900, 'p'),
                               "\n\n" + std::string(2'030, 'p')};
  std::string bytes = encrypted(texts[random() % std::size(texts)]);
  for (std::size_t changes = 1 + random() % 3; changes > 0; --changes)
    damage(bytes, random);
  return bytes;
}

} // namespace kivtest

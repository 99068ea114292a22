// Hexadecimal digits, as results of KivCryptoUtils.

#include "acrypto.hpp"

#include "crypto/cryptoresult.hpp"
#include "crypto/hexdigits.hpp"

#include <algorithm>

using namespace kivara::crypto;

namespace {

/// Bytes of so many pairs; false at the first character that is no digit.
bool readPairs(char const * text, std::size_t count, unsigned char * out) {
  for (std::size_t i = 0; i < count; ++i) {
    int const value = kivara::hex::digitAt(text[i * 2]) * 16 | kivara::hex::digitAt(text[i * 2 + 1]);
    if (value < 0)
      return false;
    out[i] = static_cast<unsigned char>(value);
  }
  return true;
}

} // namespace

std::pair<char *, int> KivCryptoUtils::HexEncode(unsigned char const * data, int length) {
  if (data == nullptr || length < 0)
    return {nullptr, kBadArgument};
  std::size_t const characters = static_cast<std::size_t>(length) * 2;
  auto text = newBuffer<char>(characters);
  if (text == nullptr)
    return {nullptr, kFailed};
  *kivara::hex::write(data, static_cast<std::size_t>(length), text.get(), kivara::hex::kUpper) = '\0';
  return result(text, characters);
}

std::pair<unsigned char *, int> KivCryptoUtils::HexDecode(char const * text) {
  std::size_t const characters = text != nullptr ? std::strlen(text) : 0;
  if (text == nullptr || characters % 2 != 0)
    return {nullptr, kBadArgument};
  std::size_t const bytes = characters / 2;
  auto data = newBuffer<unsigned char>(bytes);
  if (data == nullptr || !readPairs(text, bytes, data.get()))
    return {nullptr, kFailed};
  return result(data, bytes);
}

// The old text form of passwords: DES blocks in hexadecimal digits.

#include "ades.hpp"

#include "crypto/hexdigits.hpp"
#include "fixed_values.hpp"

#include <cstring>

namespace {

constexpr std::size_t kBlock = 8;

des_ctx fixedKey() {
  std::uint32_t const words[2] = {kivara::fixed::kDesKey.low, kivara::fixed::kDesKey.high};
  unsigned char key[sizeof words];
  std::memcpy(key, words, sizeof key);
  des_ctx ctx{};
  ades_key(&ctx, key);
  return ctx;
}

std::size_t lengthOf(char const * text) { return text != nullptr ? std::strlen(text) : 0; }

/// Characters from different parts of the text, so that the padding does not reveal where the text ends.
void fillUp(unsigned char * area, char const * text, std::size_t length, std::size_t total) {
  for (std::size_t i = length; i < total; ++i)
    area[i] = static_cast<unsigned char>(text[i * 17 % length]);
}

/// The byte for the pair at \p text; \p before if it is not a number. The runtime decides what a number is: leading white space
/// and a sign are allowed.
unsigned char pairAt(char const * text, unsigned char before) {
  int const first = kivara::hex::digitAt(text[0]);
  int const second = kivara::hex::digitAt(text[1]);
  if (first >= 0 && second >= 0)
    return static_cast<unsigned char>(first << 4 | second);
  unsigned int value = before;
  __ms_sscanf(text, "%2x", &value);
  return static_cast<unsigned char>(value);
}

} // namespace

void Kiv_Encrypt(char const * text, char * hex) {
  std::size_t const length = lengthOf(text);
  std::size_t const total = length + kBlock - 1;
  // Each call leaks this area; the contract says so.
  auto * const area = new unsigned char[total];
  if (length != 0)
    std::memcpy(area, text, length);
  if (length % kBlock != 0)
    fillUp(area, text, length, total);

  des_ctx ctx = fixedKey();
  std::size_t const blocks = total / kBlock;
  ades_enc(&ctx, area, static_cast<int>(blocks));

  *kivara::hex::write(area, blocks * kBlock, hex, kivara::hex::kLower) = '\0';
}

void Kiv_Decrypt(char * hex, unsigned char *& text) {
  std::size_t const count = lengthOf(hex) / 2;
  text = new unsigned char[count + 1];
  unsigned char byte = 0;
  for (std::size_t i = 0; i < count; ++i)
    text[i] = byte = pairAt(hex + i * 2, byte);

  des_ctx ctx = fixedKey();
  ades_dec(&ctx, text, static_cast<int>(count / kBlock));
  text[count] = '\0';
}

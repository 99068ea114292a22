// Base64 without a library, in its two forms.

#include "acrypto.hpp"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Two characters for each 12-bit value: half as many look-ups as with one for 6 bits.
using CharacterPairs = std::array<std::array<char, 2>, 4096>;

constexpr CharacterPairs characterPairs() {
  CharacterPairs pairs{};
  for (std::size_t bits = 0; bits < pairs.size(); ++bits)
    pairs[bits] = {kAlphabet[bits >> 6], kAlphabet[bits & 63]};
  return pairs;
}

constexpr CharacterPairs kCharacterPairs = characterPairs();

/// Set in the value of a character that is not in the alphabet; above the 24 bits of a group.
constexpr std::uint32_t kNoCharacter = 0x80000000;

/// What a character adds to its group, for each of the four places.
using Values = std::array<std::array<std::uint32_t, 256>, 4>;

constexpr Values characterValues() {
  Values values{};
  for (std::size_t place = 0; place < 4; ++place) {
    values[place].fill(kNoCharacter);
    for (std::uint32_t i = 0; i < 64; ++i)
      values[place][static_cast<unsigned char>(kAlphabet[i])] = i << (18 - place * 6);
  }
  return values;
}

constexpr Values kValues = characterValues();

std::uint32_t valueOf(std::size_t place, char character) {
  return kValues[place][static_cast<unsigned char>(character)];
}

std::uint32_t byteAt(char const * data) { return static_cast<unsigned char>(*data); }

char * writePair(char * out, std::uint32_t twelveBits) {
  std::memcpy(out, kCharacterPairs[twelveBits].data(), 2);
  return out + 2;
}

/// Writes the characters for all bytes; the last group may be short.
/// \return the end of what was written
char * encode(char const * data, std::size_t length, char * out) {
  char const * const wholeGroups = data + length / 3 * 3;
  for (; data != wholeGroups; data += 3) {
    std::uint32_t const group = byteAt(data) << 16 | byteAt(data + 1) << 8 | byteAt(data + 2);
    out = writePair(out, group >> 12);
    out = writePair(out, group & 4095);
  }
  if (length % 3 == 1)
    return writePair(out, byteAt(data) << 4);
  if (length % 3 == 2) {
    std::uint32_t const group = byteAt(data) << 16 | byteAt(data + 1) << 8;
    out = writePair(out, group >> 12);
    *out++ = kAlphabet[group >> 6 & 63];
  }
  return out;
}

/// The number of bytes in that many characters, without "=".
unsigned long bytesIn(unsigned long characters) {
  constexpr unsigned long kTail[4] = {0, 0, 1, 2};
  return characters / 4 * 3 + kTail[characters % 4];
}

/// The group that begins with the first \p count characters; with kNoCharacter if one is not in the alphabet.
std::uint32_t groupAt(char const * text, std::size_t count) {
  std::uint32_t group = 0;
  for (std::size_t i = 0; i < count; ++i)
    group |= valueOf(i, text[i]);
  return group;
}

/// Writes bytesIn(length) bytes and a byte 0. Stops at the first group with an invalid character; the result is then false.
bool decode(char const * text, std::size_t length, char * out) {
  for (char const * const wholeGroups = text + length / 4 * 4; text != wholeGroups; text += 4, out += 3) {
    std::uint32_t const group = valueOf(0, text[0]) | valueOf(1, text[1]) | valueOf(2, text[2]) | valueOf(3, text[3]);
    if ((group & kNoCharacter) != 0)
      return false;
    out[0] = static_cast<char>(group >> 16);
    out[1] = static_cast<char>(group >> 8);
    out[2] = static_cast<char>(group);
  }
  if (length % 4 >= 2) {
    std::uint32_t const group = groupAt(text, length % 4);
    if ((group & kNoCharacter) != 0)
      return false;
    *out++ = static_cast<char>(group >> 16);
    if (length % 4 == 3)
      *out++ = static_cast<char>(group >> 8);
  }
  *out = '\0';
  return true;
}

/// Space for that many bytes and one more; null if there is no memory.
char * newArray(std::uint64_t bytes) { return new (std::nothrow) char[static_cast<std::size_t>(bytes) + 1]; }

bool refused(char *& out, unsigned long & outLength) {
  out = nullptr;
  outLength = 0;
  return false;
}

/// Encodes into a new array of \p characters and pads it with "=".
bool encodeInto(char const * data, unsigned long length, std::uint64_t characters, char *& out,
                unsigned long & outLength) {
  if ((data == nullptr && length != 0) || characters > ULONG_MAX)
    return refused(out, outLength);
  char * const text = newArray(characters);
  if (text == nullptr)
    return refused(out, outLength);
  char * const end = text + characters;
  std::fill(encode(data, length, text), end, '=');
  *end = '\0';
  out = text;
  outLength = static_cast<unsigned long>(characters);
  return true;
}

/// Decodes into a new array; the length in the result is \p counted.
bool decodeInto(char const * text, unsigned long length, unsigned long counted, char *& out,
                unsigned long & outLength) {
  // A text without its "=", or with too many, has more bytes than are counted; they are still decoded.
  char * const bytes = newArray(std::max(counted, bytesIn(length)));
  if (bytes == nullptr)
    return refused(out, outLength);
  out = bytes;
  outLength = counted;
  return decode(text, length, bytes);
}

} // namespace

bool Kiv_OldBase64Encode(char * data, unsigned long length, char *& out, unsigned long & outLength) {
  unsigned long const tail = length % 3;
  return encodeInto(data, length, std::uint64_t{length / 3} * 4 + (tail != 0 ? tail + 1 : 0), out, outLength);
}

bool Kiv_NewBase64Encode(char const * data, unsigned long length, char *& out, unsigned long & outLength) {
  return encodeInto(data, length, (std::uint64_t{length} + 2) / 3 * 4, out, outLength);
}

bool Kiv_OldBase64Decode(char * text, unsigned long length, char *& out, unsigned long & outLength) {
  if (text == nullptr && length != 0)
    return refused(out, outLength);
  return decodeInto(text, length, bytesIn(length), out, outLength);
}

bool Kiv_NewBase64Decode(char const * text, unsigned long length, char *& out, unsigned long & outLength) {
  if (text == nullptr && length != 0)
    return refused(out, outLength);
  unsigned long bytes = length / 4 * 3;
  for (; length != 0 && text[length - 1] == '='; --length)
    bytes -= bytes != 0;
  return decodeInto(text, length, bytes, out, outLength);
}

// AES by OpenSSL.

#include "acrypto.hpp"

#include "crypto/cryptoresult.hpp"
#include "crypto/hexdigits.hpp"
#include "fixed_values.hpp"

#include <openssl/aes.h>

#include <algorithm>
#include <cstring>

using namespace kivara::crypto;

namespace {

using Bytes = std::pair<unsigned char *, int>;

constexpr std::size_t kBlock = AES_BLOCK_SIZE;

std::size_t wholeBlocks(int length) { return (static_cast<std::size_t>(length) + kBlock - 1) / kBlock * kBlock; }

/// A buffer for that many bytes, rounded up to whole blocks, and a NUL; all zeros.
std::unique_ptr<unsigned char[]> clearedBuffer(std::size_t length) {
  auto buffer = newBuffer<unsigned char>(length);
  if (buffer != nullptr)
    std::memset(buffer.get(), 0, length + 1);
  return buffer;
}

/// False for a key size that AES does not support.
bool setKey(AES_KEY & schedule, unsigned char const * key, int bits, int direction) {
  if (bits != 128 && bits != 192 && bits != 256)
    return false;
  if (direction == AES_ENCRYPT)
    AES_set_encrypt_key(key, bits, &schedule);
  else
    AES_set_decrypt_key(key, bits, &schedule);
  return true;
}

/// The cipher overwrites the vector, so it gets a copy, which is never freed; the contract says so. The copy has one byte
/// for each bit of the key, of which the first 16 are used. Null if there is no memory.
unsigned char * copyOfVector(unsigned char const * iv, int keyBits) {
  auto * const copy = new (std::nothrow) unsigned char[static_cast<std::size_t>(keyBits)];
  if (copy != nullptr)
    std::memcpy(copy, iv, kBlock);
  return copy;
}

/// When decrypting, the cipher reads whole blocks even if it writes fewer bytes, so it reads an incomplete last block from a copy.
void cipherChained(unsigned char const * data, unsigned char * out, std::size_t length, AES_KEY const & schedule,
                   unsigned char * vector, int direction) {
  std::size_t const begun = length % kBlock;
  std::size_t const whole = length - begun;
  if (whole != 0)
    AES_cbc_encrypt(data, out, whole, &schedule, vector, direction);
  if (begun != 0) {
    unsigned char last[kBlock] = {};
    std::memcpy(last, data + whole, begun);
    AES_cbc_encrypt(last, out + whole, begun, &schedule, vector, direction);
  }
}

Bytes chained(unsigned char const * data, int length, unsigned char const * key, int keyBits, unsigned char const * iv,
              int direction) {
  AES_KEY schedule;
  if (data == nullptr || key == nullptr || iv == nullptr || length < 0 || !setKey(schedule, key, keyBits, direction))
    return {nullptr, kBadArgument};
  std::size_t const padded = wholeBlocks(length);
  auto buffer = clearedBuffer(padded);
  unsigned char * const vector = buffer != nullptr ? copyOfVector(iv, keyBits) : nullptr;
  if (vector == nullptr)
    return {nullptr, kFailed};
  cipherChained(data, buffer.get(), static_cast<std::size_t>(length), schedule, vector, direction);
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the vector stays allocated
  return result(buffer, padded);
}

Bytes oneBlock(unsigned char const * data, int length, unsigned char const * key, int keyBytes, int direction) {
  AES_KEY schedule;
  bool const sizeFits = keyBytes >= 0 && keyBytes <= 32;
  if (data == nullptr || key == nullptr || length < 0 || !sizeFits || !setKey(schedule, key, keyBytes * 8, direction))
    return {nullptr, kBadArgument};
  std::size_t const padded = wholeBlocks(length);
  auto buffer = clearedBuffer(padded);
  if (buffer == nullptr)
    return {nullptr, kFailed};
  if (padded != 0)
    (direction == AES_ENCRYPT ? AES_encrypt : AES_decrypt)(data, buffer.get(), &schedule);
  return result(buffer, padded);
}

Bytes chainedWithFixedKey(unsigned char const * data, int length, int direction) {
  auto const key = kivara::fixed::kAesKey.revealed();
  auto const vector = kivara::fixed::kAesVector.revealed();
  return chained(data, length, key.data(), static_cast<int>(key.size() * 8), vector.data(), direction);
}

/// Decoding such a text can only have failed for lack of memory.
bool holdsOnlyDigits(char const * text) {
  return std::all_of(text, text + std::strlen(text), [](char c) { return kivara::hex::digitAt(c) >= 0; });
}

} // namespace

Bytes KivCryptoUtils::AESEncrypt(unsigned char const * data, int length, unsigned char const * key, int keyBits,
                                 unsigned char const * iv) {
  return chained(data, length, key, keyBits, iv, AES_ENCRYPT);
}

Bytes KivCryptoUtils::AESDecrypt(unsigned char const * data, int length, unsigned char const * key, int keyBits,
                                 unsigned char const * iv) {
  return chained(data, length, key, keyBits, iv, AES_DECRYPT);
}

Bytes KivCryptoUtils::AESEncrypt(unsigned char const * data, int length, unsigned char const * key, int keyBytes) {
  return oneBlock(data, length, key, keyBytes, AES_ENCRYPT);
}

Bytes KivCryptoUtils::AESDecrypt(unsigned char const * data, int length, unsigned char const * key, int keyBytes) {
  return oneBlock(data, length, key, keyBytes, AES_DECRYPT);
}

std::pair<char *, int> KivCryptoUtils::AESEncrypt(char const * text) {
  std::size_t const length = text != nullptr ? std::strlen(text) : 0;
  if (length > INT_MAX)
    return {nullptr, kFailed};
  auto const [data, padded] =
      chainedWithFixedKey(reinterpret_cast<unsigned char const *>(text), static_cast<int>(length), AES_ENCRYPT);
  if (data == nullptr)
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the vector stays allocated
    return {nullptr, padded};
  std::unique_ptr<unsigned char[]> const owned(data);
  return HexEncode(data, padded);
}

// Text that is not hexadecimal gives -2 for either reason, since the cipher then gets no data; callers test for that
// value.
std::pair<char *, int> KivCryptoUtils::AESDecrypt(char const * text) {
  auto const [data, length] = HexDecode(text);
  std::unique_ptr<unsigned char[]> const owned(data);
  if (length == kFailed && holdsOnlyDigits(text))
    return {nullptr, kFailed};
  auto const [plain, padded] = chainedWithFixedKey(data, length, AES_DECRYPT);
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the vector stays allocated
  return {reinterpret_cast<char *>(plain), padded};
}

void KivCryptoUtils::Free(void * buffer) { delete[] static_cast<char *>(buffer); }

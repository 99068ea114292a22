#include "acrypto.hpp"

#include "ades.hpp"

#include "crypto/cryptoresult.hpp"

#include <algorithm>
#include <cstring>

namespace {

constexpr long kFirstAesType = 2;

std::size_t lengthOf(char const * text) { return text != nullptr ? std::strlen(text) : 0; }

/// The number of characters in the old form for a text of this length, with the NUL.
std::size_t oldFormSize(std::size_t length) { return (length + 7) / 8 * 16 + 1; }

long encryptOldForm(char const * text, char *& out, long maxLength) {
  std::size_t const size = oldFormSize(lengthOf(text));
  std::unique_ptr<char[]> hex(new char[size]);
  Kiv_Encrypt(text, hex.get());
  auto length = static_cast<long>(size - 1);
  if (maxLength >= 0 && length > maxLength) {
    length = maxLength;
    hex[static_cast<std::size_t>(length)] = '\0';
  }
  out = hex.release();
  return length;
}

long decryptOldForm(char * text, char *& out) {
  // Kiv_Decrypt replaces this array by one of its own, so this one is never freed; the contract says so.
  auto * plain = new unsigned char[oldFormSize(lengthOf(text))];
  Kiv_Decrypt(text, plain);
  out = reinterpret_cast<char *>(plain);
  return static_cast<long>(std::strlen(out));
}

/// The result of the old form. Its functions throw if there is no memory; the services report that in their result.
template <class Operation> long oldFormResult(char *& out, Operation const & operation) {
  try {
    return operation();
  } catch (std::bad_alloc const &) {
    out = nullptr;
    return kivara::crypto::kFailed;
  }
}

long aesFormResult(std::pair<char *, int> const & result, char *& out) {
  out = result.first;
  return result.second;
}

constexpr std::size_t kAesBlock = 16;

/// The cipher reads a whole block, so a shorter one is padded with zeros.
std::pair<unsigned char *, int> decryptedBlock(char const * data, unsigned long length, SV::String const & key) {
  unsigned char block[kAesBlock] = {};
  std::memcpy(block, data, std::min<std::size_t>(length, kAesBlock));
  return KivCryptoUtils::AESDecrypt(block, static_cast<int>(length),
                                    reinterpret_cast<unsigned char const *>(key.c_str()), key.Len());
}

SV::String decryptedPassword(SV::String const & cipherText, SV::String const & key) {
  char * data = nullptr;
  unsigned long length = 0;
  bool const readable =
      Kiv_NewBase64Decode(cipherText.c_str(), static_cast<unsigned long>(cipherText.Len()), data, length);
  std::unique_ptr<char[]> const decoded(data);
  if (!readable)
    return SV::String();
  auto const [plain, padded] = decryptedBlock(decoded.get(), length, key);
  std::unique_ptr<unsigned char[]> const owned(plain);
  if (padded < 1)
    return SV::String();
  int const filling = plain[padded - 1];
  return SV::String(reinterpret_cast<char const *>(plain), static_cast<int>(length) - filling);
}

} // namespace

KivEncryption & KivEncryption::Instance() {
  static KivEncryption instance;
  return instance;
}

KivEncryption::~KivEncryption() = default;

long KivEncryption::Encrypt(char * text, char *& out, long maxLength) {
  return Encrypt(encryptionType, text, out, maxLength);
}

long KivEncryption::Encrypt(long type, char * text, char *& out, long maxLength) {
  return type < kFirstAesType ? oldFormResult(out, [&] { return encryptOldForm(text, out, maxLength); })
                              : aesFormResult(KivCryptoUtils::AESEncrypt(text), out);
}

long KivEncryption::Decrypt(char * text, char *& out) { return Decrypt(encryptionType, text, out); }

long KivEncryption::Decrypt(long type, char * text, char *& out) {
  return type < kFirstAesType ? oldFormResult(out, [&] { return decryptOldForm(text, out); })
                              : aesFormResult(KivCryptoUtils::AESDecrypt(text), out);
}

SV::String Kiv_DecryptPasswordForAPP(SV::String const & cipherText, SV::String const & key) {
  try {
    return decryptedPassword(cipherText, key);
  } catch (std::bad_alloc const &) {
    return SV::String();
  }
}

#include "acrypto.hpp"

#include "ades.hpp"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

constexpr long kFirstAesType = 2;

std::size_t lengthOf(char const * text) { return text != nullptr ? std::strlen(text) : 0; }

/// The old form's characters for a text of this length, and the NUL.
std::size_t oldFormSize(std::size_t length) { return (length + 7) / 8 * 16 + 1; }

long encryptOldForm(char const * text, char *& out, long maxLength) {
  std::size_t const size = oldFormSize(lengthOf(text));
  out = new char[size];
  Kiv_Encrypt(text, out);
  auto length = static_cast<long>(size - 1);
  if (maxLength >= 0 && length > maxLength) {
    length = maxLength;
    out[length] = '\0';
  }
  return length;
}

long decryptOldForm(char * text, char *& out) {
  // Kiv_Decrypt puts an array of its own in the place of this one, which thus stays allocated; the contract says so.
  auto * plain = new unsigned char[oldFormSize(lengthOf(text))];
  Kiv_Decrypt(text, plain);
  out = reinterpret_cast<char *>(plain);
  return static_cast<long>(std::strlen(out));
}

long handOver(std::pair<char *, int> const & result, char *& out) {
  out = result.first;
  return result.second;
}

constexpr std::size_t kAesBlock = 16;

/// The cipher reads a whole block, so a shorter one is completed with zeros.
std::pair<unsigned char *, int> decryptedBlock(char const * data, unsigned long length, SV::String const & key) {
  unsigned char block[kAesBlock] = {};
  std::memcpy(block, data, std::min<std::size_t>(length, kAesBlock));
  return KivCryptoUtils::AESDecrypt(block, static_cast<int>(length),
                                    reinterpret_cast<unsigned char const *>(key.c_str()), key.Len());
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
  return type < kFirstAesType ? encryptOldForm(text, out, maxLength) : handOver(KivCryptoUtils::AESEncrypt(text), out);
}

long KivEncryption::Decrypt(char * text, char *& out) { return Decrypt(encryptionType, text, out); }

long KivEncryption::Decrypt(long type, char * text, char *& out) {
  return type < kFirstAesType ? decryptOldForm(text, out) : handOver(KivCryptoUtils::AESDecrypt(text), out);
}

SV::String Kiv_DecryptPasswordForAPP(SV::String const & cipherText, SV::String const & key) {
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

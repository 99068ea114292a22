// Random texts and lengths, each directly before a page without access, and so is what the library allocates: reading or
// writing outside of either ends the test.

#include "acrypto.hpp"
#include "ades.hpp"

#include "crypto/bytes.hpp"
#include "support/allocation.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <memory>

using bytes::Bytes;
using bytes::Random;
using SV::String;

namespace {

constexpr int kRounds = 100000;

// What stays allocated with a call takes a place among the guarded blocks, of which there are some 25,000, and what allocates
// much takes long: such operations run in several processes.
constexpr int kParts = 10;
constexpr int kRoundsOfPart = kRounds / kParts;

std::string const kHexDigits = "0123456789abcdefABCDEF";
std::string const kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/==";
std::string const kBase64Lines = kBase64 + "\n\n";

/// A copy that ends where its memory does.
template <class T> std::unique_ptr<T[]> atTheEdge(void const * data, std::size_t bytes) {
  std::unique_ptr<T[]> copy(new T[bytes]);
  if (bytes != 0)
    std::memcpy(copy.get(), data, bytes);
  return copy;
}

std::unique_ptr<char[]> textAtTheEdge(std::string const & text) {
  return atTheEdge<char>(text.c_str(), text.size() + 1);
}

unsigned volatile sink;

/// Touches each byte of a result.
template <class T> void readAll(T const * data, long length) {
  unsigned sum = 0;
  for (long i = 0; data != nullptr && i < length; ++i)
    sum += static_cast<unsigned char>(data[i]);
  sink = sum;
}

template <class T> void readAndFree(std::pair<T *, int> const & result) {
  ASSERT_EQ(result.first == nullptr, result.second < 0);
  ASSERT_GE(result.second, -2);
  readAll(result.first, result.second);
  KivCryptoUtils::Free(result.first);
}

template <class Text>
void decodeRandomTexts(bool (*decode)(Text, unsigned long, char *&, unsigned long &), unsigned seed) {
  support::GuardPages const guard;
  Random random(seed);
  for (int i = 0; i < kRounds; ++i) {
    std::string const text = random.text(random.below(70), kBase64);
    auto const input = atTheEdge<char>(text.data(), text.size());
    char * out = nullptr;
    unsigned long length = 0;
    decode(input.get(), static_cast<unsigned long>(text.size()), out, length);
    ASSERT_NE(out, nullptr);
    readAll(out, static_cast<long>(length));
    delete[] out;
  }
}

/// One of the several processes that an operation runs in.
class BadInputPart : public testing::TestWithParam<unsigned> {};

} // namespace

TEST(BadInput, HexDecodeStaysInside) {
  support::GuardPages const guard;
  Random random(11);
  for (int i = 0; i < kRounds; ++i)
    readAndFree(KivCryptoUtils::HexDecode(textAtTheEdge(random.text(random.below(70), kHexDigits)).get()));
}

TEST(BadInput, OldBase64DecodeStaysInside) { decodeRandomTexts(Kiv_OldBase64Decode, 13); }

TEST(BadInput, NewBase64DecodeStaysInside) { decodeRandomTexts(Kiv_NewBase64Decode, 14); }

TEST(BadInput, KivDecryptStaysInside) {
  support::GuardPages const guard;
  Random random(15);
  for (int i = 0; i < kRounds; ++i) {
    std::string const text = random.text(random.below(70), kHexDigits + " -+x");
    auto const input = textAtTheEdge(text);
    unsigned char * out = nullptr;
    Kiv_Decrypt(input.get(), out);
    readAll(out, static_cast<long>(text.size() / 2 + 1));
    delete[] out;
  }
}

TEST(BadInput, DecryptPasswordStaysInside) {
  support::GuardPages const guard;
  Random random(16);
  for (int i = 0; i < kRounds; ++i) {
    // Texts of a block and its neighbours most of the time, keys of sizes that AES has as often as of any other.
    std::size_t const length = random.below(2) == 0 ? 20 + random.below(5) : random.below(70);
    std::string const text = random.text(length, kBase64);
    std::string const key = random.text(random.below(2) == 0 ? 16 + 8 * random.below(3) : random.below(70), kBase64);
    String const result = Kiv_DecryptPasswordForAPP(String(text.c_str()), String(key.c_str()));
    ASSERT_LE(result.Len(), static_cast<std::int32_t>(text.size() / 4 * 3));
    readAll(result.c_str(), result.Len());
  }
}

TEST_P(BadInputPart, Base64DecodeStaysInside) {
  support::GuardPages const guard;
  Random random(GetParam());
  for (int i = 0; i < kRoundsOfPart; ++i)
    readAndFree(KivCryptoUtils::Base64Decode(textAtTheEdge(random.text(random.below(300), kBase64Lines)).get()));
}

TEST_P(BadInputPart, KivEncryptionDecryptStaysInside) {
  support::GuardPages const guard;
  Random random(GetParam());
  for (int i = 0; i < kRoundsOfPart; ++i) {
    auto const input = textAtTheEdge(random.text(random.below(100), kHexDigits));
    char * out = nullptr;
    long const length = KivEncryption::Instance().Decrypt(static_cast<long>(random.below(4)), input.get(), out);
    ASSERT_EQ(out == nullptr, length < 0);
    readAll(out, length + 1);
    delete[] out;
  }
}

TEST_P(BadInputPart, AesChainsStayInsideWithEveryLengthAndKeySize) {
  support::GuardPages const guard;
  Random random(GetParam());
  constexpr int kOddSizes[] = {-1, 0, 1, 64, 127, 129, 160, 384, INT_MAX};
  Bytes const source = random.bytes(200);
  for (int i = 0; i < kRoundsOfPart; ++i) {
    std::size_t const length = random.below(100);
    int const bits = random.below(8) == 0 ? kOddSizes[random.below(std::size(kOddSizes))]
                                          : 128 + 64 * static_cast<int>(random.below(3));
    auto const data = atTheEdge<unsigned char>(source.data() + random.below(100), length);
    auto const key =
        atTheEdge<unsigned char>(source.data(), bits >= 128 && bits <= 256 ? static_cast<std::size_t>(bits) / 8 : 1);
    auto const iv = atTheEdge<unsigned char>(source.data() + 7, 16);
    int const given = static_cast<int>(length);
    readAndFree(random.below(2) == 0 ? KivCryptoUtils::AESEncrypt(data.get(), given, key.get(), bits, iv.get())
                                     : KivCryptoUtils::AESDecrypt(data.get(), given, key.get(), bits, iv.get()));
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, BadInputPart, testing::Range(100u, 100u + kParts));

TEST(BadInput, EncodersStayInside) {
  support::GuardPages const guard;
  Random random(17);
  Bytes const source = random.bytes(300);
  for (std::size_t length = 0; length <= 300; ++length) {
    auto const data = atTheEdge<unsigned char>(source.data(), length);
    int const given = static_cast<int>(length);
    readAndFree(KivCryptoUtils::HexEncode(data.get(), given));
    readAndFree(KivCryptoUtils::Base64Encode(data.get(), given));
    auto const text = atTheEdge<char>(source.data(), length);
    for (auto const encode : {+[](char *in, unsigned long size, char *&out, unsigned long &outSize) {
                                return Kiv_OldBase64Encode(in, size, out, outSize);
                              },
                              +[](char *in, unsigned long size, char *&out, unsigned long &outSize) {
                                return Kiv_NewBase64Encode(in, size, out, outSize);
                              }}) {
      char * out = nullptr;
      unsigned long outLength = 0;
      ASSERT_TRUE(encode(text.get(), static_cast<unsigned long>(length), out, outLength));
      readAll(out, static_cast<long>(outLength + 1));
      delete[] out;
    }
  }
}

TEST(BadInput, KivEncryptStaysInside) {
  support::GuardPages const guard;
  for (std::size_t length = 0; length <= 300; ++length) {
    auto const text = textAtTheEdge(std::string(length, 'x'));
    std::unique_ptr<char[]> const hex(new char[(length + 7) / 8 * 16 + 1]);
    Kiv_Encrypt(text.get(), hex.get());
    readAll(hex.get(), static_cast<long>((length + 7) / 8 * 16 + 1));
  }
}

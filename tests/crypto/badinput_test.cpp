// Random texts and lengths, each directly before a page without access, and so is what the library allocates: reading
// or writing outside of either ends the test.

#include "acrypto.hpp"
#include "ades.hpp"

#include "crypto/bytes.hpp"
#include "support/data/random.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <memory>

using bytes::Bytes;
using bytes::Random;
using SV::String;

namespace {

constexpr std::size_t kRounds = 100000;

// What stays allocated with a call takes a place among the guarded blocks, of which there are some 25,000, and what
// allocates much takes long: such operations run in several processes.
constexpr int kParts = 10;
constexpr std::size_t kRoundsOfPart = kRounds / kParts;

std::string const kHexDigits = "0123456789abcdefABCDEF";
std::string const kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/==";
std::string const kBase64Lines = kBase64 + "\n\n";

/// Memory before a page without access; made under GuardPages. Each input lies at its end, in the place of the one
/// before.
class Edge {
public:
  template <class T> T * holds(T const * data, std::size_t count) {
    T * const place = reinterpret_cast<T *>(memory_.get()) + kSize - count;
    std::copy_n(data, count, place);
    return place;
  }
  char * holds(std::string const & text) { return holds(text.c_str(), text.size() + 1); }

private:
  static constexpr std::size_t kSize = 1024;

  std::unique_ptr<char[]> memory_{new char[kSize]};
};

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
  Edge edge;
  Random random(seed);
  for (std::size_t i = 0; i < support::times(kRounds); ++i) {
    std::string const text = random.text(random.below(70), kBase64);
    char * const input = edge.holds(text.data(), text.size());
    char * out = nullptr;
    unsigned long length = 0;
    decode(input, static_cast<unsigned long>(text.size()), out, length);
    ASSERT_NE(out, nullptr);
    readAll(out, static_cast<long>(length));
    delete[] out;
  }
}

/// Lengths of some blocks; one in eight is negative, down to the least.
int randomLength(Random & random) {
  if (random.below(8) != 0)
    return static_cast<int>(random.below(100));
  constexpr int kNegative[] = {-1, -2, -15, -16, -17, -100, INT_MIN + 1, INT_MIN};
  return kNegative[random.below(std::size(kNegative))];
}

/// Every size from -9 to 590, and the ends of what an int holds.
int anyKeySize(Random & random) {
  constexpr int kEnds[] = {INT_MIN, INT_MIN + 1, INT_MAX - 1, INT_MAX};
  return random.below(20) == 0 ? kEnds[random.below(std::size(kEnds))] : static_cast<int>(random.below(600)) - 9;
}

/// The bytes of a key that an operation may read: those of a size that AES has, in bytes, and none otherwise.
std::size_t keyBytesOf(int bytes) {
  return bytes == 16 || bytes == 24 || bytes == 32 ? static_cast<std::size_t>(bytes) : 0;
}

using Chain = std::pair<unsigned char *, int> (*)(unsigned char const *, int, unsigned char const *, int,
                                                  unsigned char const *);

void chainRandomData(Chain chain, unsigned seed) {
  support::GuardPages const guard;
  Random random(seed);
  Edge dataEdge;
  Edge keyEdge;
  Edge vectorEdge;
  Bytes const source = random.bytes(200);
  for (std::size_t i = 0; i < support::times(kRoundsOfPart); ++i) {
    int const length = randomLength(random);
    int const bits = random.below(2) == 0 ? 128 + 64 * static_cast<int>(random.below(3)) : anyKeySize(random);
    bool const isSize = bits == 128 || bits == 192 || bits == 256;
    unsigned char const * const data =
        dataEdge.holds(source.data() + random.below(100), static_cast<std::size_t>(std::max(length, 0)));
    unsigned char const * const key = keyEdge.holds(source.data(), isSize ? keyBytesOf(bits / 8) : 0);
    unsigned char const * const iv = vectorEdge.holds(source.data() + 7, 16);
    auto const result = chain(data, length, key, bits, iv);
    ASSERT_EQ(result.second, isSize && length >= 0 ? (length + 15) / 16 * 16 : -2) << length << " " << bits;
    readAndFree(result);
  }
}

/// One of the several processes that an operation runs in.
class BadInputPart : public testing::TestWithParam<unsigned> {};

} // namespace

TEST(BadInput, HexDecodeStaysInside) {
  support::GuardPages const guard;
  Edge edge;
  Random random(11);
  for (std::size_t i = 0; i < support::times(kRounds); ++i)
    readAndFree(KivCryptoUtils::HexDecode(edge.holds(random.text(random.below(70), kHexDigits))));
}

TEST(BadInput, OldBase64DecodeStaysInside) { decodeRandomTexts(Kiv_OldBase64Decode, 13); }

TEST(BadInput, NewBase64DecodeStaysInside) { decodeRandomTexts(Kiv_NewBase64Decode, 14); }

TEST(BadInput, KivDecryptStaysInside) {
  support::GuardPages const guard;
  Edge edge;
  Random random(15);
  for (std::size_t i = 0; i < support::times(kRounds); ++i) {
    std::string const text = random.text(random.below(70), kHexDigits + " -+x");
    char * const input = edge.holds(text);
    unsigned char * out = nullptr;
    Kiv_Decrypt(input, out);
    readAll(out, static_cast<long>(text.size() / 2 + 1));
    delete[] out;
  }
}

TEST(BadInput, DecryptPasswordStaysInside) {
  support::GuardPages const guard;
  Random random(16);
  for (std::size_t i = 0; i < support::times(kRounds); ++i) {
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
  Edge edge;
  Random random(GetParam());
  for (std::size_t i = 0; i < support::times(kRoundsOfPart); ++i)
    readAndFree(KivCryptoUtils::Base64Decode(edge.holds(random.text(random.below(300), kBase64Lines))));
}

TEST_P(BadInputPart, KivEncryptionDecryptStaysInside) {
  support::GuardPages const guard;
  Edge edge;
  Random random(GetParam());
  for (std::size_t i = 0; i < support::times(kRoundsOfPart); ++i) {
    char * const input = edge.holds(random.text(random.below(100), kHexDigits));
    char * out = nullptr;
    long const length = KivEncryption::Instance().Decrypt(static_cast<long>(random.below(4)), input, out);
    ASSERT_EQ(out == nullptr, length < 0);
    readAll(out, length + 1);
    delete[] out;
  }
}

TEST_P(BadInputPart, AesChainEncryptionStaysInsideWithEveryLengthAndKeySize) {
  chainRandomData(KivCryptoUtils::AESEncrypt, GetParam());
}

TEST_P(BadInputPart, AesChainDecryptionStaysInsideWithEveryLengthAndKeySize) {
  chainRandomData(KivCryptoUtils::AESDecrypt, GetParam());
}

TEST_P(BadInputPart, AesBlockStaysInsideWithEveryLengthAndKeySize) {
  support::GuardPages const guard;
  Random random(GetParam());
  Edge dataEdge;
  Edge keyEdge;
  Bytes const source = random.bytes(600);
  for (std::size_t i = 0; i < support::times(kRoundsOfPart); ++i) {
    int const length = randomLength(random);
    int const size = random.below(2) == 0 ? 16 + 8 * static_cast<int>(random.below(3)) : anyKeySize(random);
    unsigned char const * const data = dataEdge.holds(source.data() + random.below(100), 16);
    unsigned char const * const key = keyEdge.holds(source.data(), keyBytesOf(size));
    bool const good = length >= 0 && (size == 16 || size == 24 || size == 32);
    auto const result = i % 2 == 0 ? KivCryptoUtils::AESEncrypt(data, length, key, size)
                                   : KivCryptoUtils::AESDecrypt(data, length, key, size);
    ASSERT_EQ(result.second, good ? (length + 15) / 16 * 16 : -2) << length << " " << size;
    readAndFree(result);
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, BadInputPart, testing::Range(100u, 100u + kParts));

TEST(BadInput, EncodersStayInside) {
  support::GuardPages const guard;
  Edge edge;
  Random random(17);
  Bytes const source = random.bytes(300);
  for (std::size_t length = 0; length <= 300; ++length) {
    unsigned char const * const data = edge.holds(source.data(), length);
    int const given = static_cast<int>(length);
    readAndFree(KivCryptoUtils::HexEncode(data, given));
    readAndFree(KivCryptoUtils::Base64Encode(data, given));
    char * const text = reinterpret_cast<char *>(edge.holds(source.data(), length));
    for (auto const encode : {+[](char *in, unsigned long size, char *&out, unsigned long &outSize) {
                                return Kiv_OldBase64Encode(in, size, out, outSize);
                              },
                              +[](char *in, unsigned long size, char *&out, unsigned long &outSize) {
                                return Kiv_NewBase64Encode(in, size, out, outSize);
                              }}) {
      char * out = nullptr;
      unsigned long outLength = 0;
      ASSERT_TRUE(encode(text, static_cast<unsigned long>(length), out, outLength));
      readAll(out, static_cast<long>(outLength + 1));
      delete[] out;
    }
  }
}

TEST(BadInput, KivEncryptStaysInside) {
  support::GuardPages const guard;
  Edge edge;
  for (std::size_t length = 0; length <= 300; ++length) {
    char const * const text = edge.holds(std::string(length, 'x'));
    std::unique_ptr<char[]> const hex(new char[(length + 7) / 8 * 16 + 1]);
    Kiv_Encrypt(text, hex.get());
    readAll(hex.get(), static_cast<long>((length + 7) / 8 * 16 + 1));
  }
}

#include "acrypto.hpp"

#include "crypto/bytes.hpp"
#include "crypto/heapuse.hpp"
#include "support/memory/allocation.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <fstream>
#include <iterator>

using bytes::Bytes;
using bytes::fromHex;
using bytes::Result;
using U = KivCryptoUtils;

namespace {

struct Vector {
  char const * key;
  char const * plain;
  char const * cipher;
};

// FIPS 197, appendix C.
constexpr Vector kBlocks[] = {
    {"000102030405060708090A0B0C0D0E0F", "00112233445566778899AABBCCDDEEFF", "69C4E0D86A7B0430D8CDB78070B4C55A"},
    {"000102030405060708090A0B0C0D0E0F1011121314151617", "00112233445566778899AABBCCDDEEFF",
     "DDA97CA4864CDFE06EAF70A0EC0D7191"},
    {"000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F", "00112233445566778899AABBCCDDEEFF",
     "8EA2B7CA516745BFEAFC49904B496089"},
};

// NIST Special Publication 800-38A, F.2.
constexpr char kChainVector[] = "000102030405060708090A0B0C0D0E0F";
constexpr char kChainPlain[] = "6BC1BEE22E409F96E93D7E117393172AAE2D8A571E03AC9C9EB76FAC45AF8E51"
                               "30C81C46A35CE411E5FBC1191A0A52EFF69F2445DF4F9B17AD2B417BE66C3710";
constexpr Vector kChains[] = {
    {"2B7E151628AED2A6ABF7158809CF4F3C", kChainPlain,
     "7649ABAC8119B246CEE98E9B12E9197D5086CB9B507219EE95DB113A917678B2"
     "73BED6B8E3C1743B7116E69E222295163FF1CAA1681FAC09120ECA307586E1A7"},
    {"8E73B0F7DA0E6452C810F32B809079E562F8EAD2522C6B7B", kChainPlain,
     "4F021DB243BC633D7178183A9FA071E8B4D9ADA9AD7DEDF4E5E738763F69145A"
     "571B242012FB7AE07FA9BAAC3DF102E008B0E27988598881D920A9E64F5615CD"},
    {"603DEB1015CA71BE2B73AEF0857D77811F352C073B6108D72D9810A30914DFF4", kChainPlain,
     "F58C4C04D6E5F1BA779EABFB5F7BFBD69CFC4E967EDB808D679F777BC6702C7D"
     "39F23369A9D9BACFA530E26304231461B2EB05E2C39BE9FCDA6C19078C6A9D1B"},
};

int bitsOf(Bytes const & key) { return static_cast<int>(key.size()) * 8; }

/// CBC without any completion, by OpenSSL's newer functions.
Bytes chainByPeer(Bytes const & data, Bytes const & key, Bytes const & iv, bool encrypt) {
  EVP_CIPHER_CTX * const context = EVP_CIPHER_CTX_new();
  EVP_CIPHER const * const cipher = key.size() == 16   ? EVP_aes_128_cbc()
                                    : key.size() == 24 ? EVP_aes_192_cbc()
                                                       : EVP_aes_256_cbc();
  EVP_CipherInit_ex(context, cipher, nullptr, key.data(), iv.data(), encrypt);
  EVP_CIPHER_CTX_set_padding(context, 0);
  Bytes result(data.size() + 16);
  int length = 0;
  EVP_CipherUpdate(context, result.data(), &length, data.data(), static_cast<int>(data.size()));
  EVP_CIPHER_CTX_free(context);
  result.resize(static_cast<std::size_t>(length));
  return result;
}

Bytes completed(Bytes data) {
  data.resize((data.size() + 15) / 16 * 16);
  return data;
}

unsigned char const * bytesOf(std::string const & text) { return reinterpret_cast<unsigned char const *>(text.data()); }

} // namespace

TEST(AesBlock, GivesThePublishedAnswers) {
  for (auto const & vector : kBlocks) {
    Bytes const key = fromHex(vector.key);
    int const keyBytes = static_cast<int>(key.size());
    EXPECT_EQ(Result(U::AESEncrypt(fromHex(vector.plain).data(), 16, key.data(), keyBytes)).hex(), vector.cipher);
    EXPECT_EQ(Result(U::AESDecrypt(fromHex(vector.cipher).data(), 16, key.data(), keyBytes)).hex(), vector.plain);
  }
}

TEST(AesBlock, TwentyBytesGive32OfWhichTheLast16AreZero) {
  Bytes const key = fromHex(kBlocks[0].key);
  Bytes data = fromHex(kBlocks[0].plain);
  data.insert(data.end(), {1, 2, 3, 4});
  EXPECT_EQ(Result(U::AESEncrypt(data.data(), 20, key.data(), 16)).hex(), kBlocks[0].cipher + std::string(32, '0'));
}

TEST(AesBlock, ExactlyOneBlockIsProcessedWhateverTheLengthSays) {
  Bytes const key = fromHex(kBlocks[0].key);
  Bytes const data = fromHex(kBlocks[0].plain);
  for (int length = 1; length <= 16; ++length) {
    Result const result = U::AESEncrypt(data.data(), length, key.data(), 16);
    EXPECT_EQ(result.hex(), kBlocks[0].cipher) << length;
  }
  EXPECT_EQ(Result(U::AESEncrypt(data.data(), 0, key.data(), 16)).length, 0);
}

TEST(AesBlock, ANullPointerANegativeLengthOrAnotherKeySizeGivesMinus2) {
  Bytes const key(33, 1);
  Bytes const data(16, 2);
  for (auto const operation :
       {static_cast<std::pair<unsigned char *, int> (*)(unsigned char const *, int, unsigned char const *, int)>(
            U::AESEncrypt),
        static_cast<std::pair<unsigned char *, int> (*)(unsigned char const *, int, unsigned char const *, int)>(
            U::AESDecrypt)}) {
    EXPECT_TRUE(Result(operation(nullptr, 16, key.data(), 16)).failedWith(-2));
    EXPECT_TRUE(Result(operation(data.data(), 16, nullptr, 16)).failedWith(-2));
    EXPECT_TRUE(Result(operation(data.data(), -1, key.data(), 16)).failedWith(-2));
    for (int const size : {-1, INT_MIN, 0, 1, 15, 17, 23, 25, 31, 33, 128, INT_MAX, 0x20000010})
      EXPECT_TRUE(Result(operation(data.data(), 16, key.data(), size)).failedWith(-2)) << size;
  }
}

TEST(AesBlock, LackOfMemoryGivesMinus1) {
  Bytes const key(16, 1);
  Bytes const data(16, 2);
  EXPECT_TRUE(Result(U::AESEncrypt(data.data(), INT_MAX, key.data(), 16)).failedWith(-1));
  EXPECT_TRUE(Result(U::AESDecrypt(data.data(), INT_MAX, key.data(), 16)).failedWith(-1));
  support::AllocationLimit const limit(5000);
  EXPECT_TRUE(Result(U::AESEncrypt(data.data(), 6000, key.data(), 16)).failedWith(-1));
  EXPECT_TRUE(Result(U::AESDecrypt(data.data(), 6000, key.data(), 16)).failedWith(-1));
}

TEST(AesChain, GivesThePublishedAnswers) {
  Bytes const iv = fromHex(kChainVector);
  for (auto const & vector : kChains) {
    Bytes const key = fromHex(vector.key);
    EXPECT_EQ(Result(U::AESEncrypt(fromHex(vector.plain).data(), 64, key.data(), bitsOf(key), iv.data())).hex(),
              vector.cipher);
    EXPECT_EQ(Result(U::AESDecrypt(fromHex(vector.cipher).data(), 64, key.data(), bitsOf(key), iv.data())).hex(),
              vector.plain);
  }
}

TEST(AesChain, EncryptionCompletesTheLastBlockWithZerosAtEveryLength) {
  bytes::Random random(8);
  Bytes const iv = random.bytes(16);
  for (std::size_t keyBytes : {16, 24, 32}) {
    Bytes const key = random.bytes(keyBytes);
    for (std::size_t length = 1; length <= 200; ++length) {
      Bytes const data = random.bytes(length);
      Result const result = U::AESEncrypt(data.data(), static_cast<int>(length), key.data(), bitsOf(key), iv.data());
      ASSERT_EQ(result.hex(), bytes::toHex(chainByPeer(completed(data), key, iv, true))) << length;
      ASSERT_EQ(result.data()[result.length], 0) << "a NUL follows";
    }
  }
}

TEST(AesChain, DecryptionGivesTheBytesOfTheLengthThenZeros) {
  bytes::Random random(9);
  Bytes const iv = random.bytes(16);
  Bytes const key = random.bytes(32);
  for (std::size_t length = 1; length <= 200; ++length) {
    Bytes const data = random.bytes(length);
    Bytes expected = chainByPeer(completed(data), key, iv, false);
    std::fill(expected.begin() + static_cast<std::ptrdiff_t>(length), expected.end(), static_cast<unsigned char>(0));
    Result const result = U::AESDecrypt(data.data(), static_cast<int>(length), key.data(), 256, iv.data());
    ASSERT_EQ(result.hex(), bytes::toHex(expected)) << length;
  }
}

TEST(AesChain, TheCallersVectorIsNotChanged) {
  Bytes const iv = fromHex(kChainVector);
  Bytes copy = iv;
  Bytes const key(16, 3);
  Bytes const data(40, 4);
  Result const result = U::AESEncrypt(data.data(), 40, key.data(), 128, copy.data());
  EXPECT_EQ(result.length, 48);
  EXPECT_EQ(copy, iv);
}

TEST(AesChain, ACopyOfTheVectorWithAByteForEachBitOfTheKeyStaysAllocated) {
  Bytes const data(40, 4);
  for (int const bits : {128, 256})
    EXPECT_NEAR(
        heapuse::growthPerCall([&] { U::Free(U::AESEncrypt(data.data(), 40, data.data(), bits, data.data()).first); }),
        bits, 64);
}

TEST(AesChain, ALengthOf0GivesNoBytes) {
  Bytes const data(32, 1);
  Result const result = U::AESEncrypt(data.data(), 0, data.data(), 128, data.data());
  ASSERT_NE(result.data(), nullptr);
  EXPECT_EQ(result.length, 0);
}

TEST(AesChain, ANullPointerANegativeLengthOrAnotherKeySizeGivesMinus2) {
  Bytes const b(64, 1);
  for (auto const operation :
       {static_cast<std::pair<unsigned char *, int> (*)(unsigned char const *, int, unsigned char const *, int,
                                                        unsigned char const *)>(U::AESEncrypt),
        static_cast<std::pair<unsigned char *, int> (*)(unsigned char const *, int, unsigned char const *, int,
                                                        unsigned char const *)>(U::AESDecrypt)}) {
    EXPECT_TRUE(Result(operation(nullptr, 16, b.data(), 128, b.data())).failedWith(-2));
    EXPECT_TRUE(Result(operation(b.data(), 16, nullptr, 128, b.data())).failedWith(-2));
    EXPECT_TRUE(Result(operation(b.data(), 16, b.data(), 128, nullptr)).failedWith(-2));
    EXPECT_TRUE(Result(operation(b.data(), -1, b.data(), 128, b.data())).failedWith(-2));
    for (int const bits : {-1, INT_MIN, 0, 16, 32, 127, 129, 160, 255, 257, 512, INT_MAX})
      EXPECT_TRUE(Result(operation(b.data(), 16, b.data(), bits, b.data())).failedWith(-2)) << bits;
  }
}

TEST(AesChain, LackOfMemoryGivesMinus1) {
  Bytes const data(6000, 1);
  EXPECT_TRUE(Result(U::AESEncrypt(data.data(), INT_MAX, data.data(), 128, data.data())).failedWith(-1));
  EXPECT_TRUE(Result(U::AESDecrypt(data.data(), INT_MAX, data.data(), 128, data.data())).failedWith(-1));
  for (std::size_t most : {std::size_t{5000}, std::size_t{0}}) {
    support::AllocationLimit const limit(most);
    EXPECT_TRUE(Result(U::AESEncrypt(data.data(), 6000, data.data(), 128, data.data())).failedWith(-1)) << most;
    EXPECT_TRUE(Result(U::AESDecrypt(data.data(), 6000, data.data(), 128, data.data())).failedWith(-1)) << most;
  }
}

TEST(AesChain, LackOfMemoryForTheCopyOfTheVectorGivesMinus1) {
  Bytes const data(32, 1);
  for (int const bits : {128, 192, 256}) {
    support::AllocationLimit const limit(static_cast<std::size_t>(bits) - 1); // the result has 17 bytes
    EXPECT_TRUE(Result(U::AESEncrypt(data.data(), 16, data.data(), bits, data.data())).failedWith(-1)) << bits;
    EXPECT_TRUE(Result(U::AESDecrypt(data.data(), 16, data.data(), bits, data.data())).failedWith(-1)) << bits;
  }
  support::AllocationLimit const limit(256);
  EXPECT_EQ(Result(U::AESEncrypt(data.data(), 16, data.data(), 256, data.data())).length, 16);
}

TEST(AesText, TwentyCharactersGive64UpperCaseDigits) {
  Result const result = U::AESEncrypt("twenty characters...");
  EXPECT_EQ(result.length, 64);
  EXPECT_EQ(std::strlen(result.data()), 64u);
  EXPECT_EQ(result.text().find_first_not_of("0123456789ABCDEF"), std::string::npos);
}

TEST(AesText, IsTheChainUnderTheConfiguredKeyAndVector) {
  Bytes const key = fromHex(KIVARA_AES_KEY);
  Bytes const iv = fromHex(KIVARA_AES_VECTOR);
  for (std::size_t length = 0; length <= 100; ++length) {
    std::string const text(length, 'q');
    Bytes const data = completed(Bytes(bytesOf(text), bytesOf(text) + length));
    ASSERT_EQ(Result(U::AESEncrypt(text.c_str())).text(), bytes::toHex(chainByPeer(data, key, iv, true))) << length;
  }
}

TEST(AesText, DecryptionKeepsTheZerosThatTerminateTheText) {
  Result const hidden = U::AESEncrypt("twenty characters...");
  Result const shown = U::AESDecrypt(hidden.data());
  EXPECT_EQ(shown.length, 32);
  EXPECT_STREQ(shown.data(), "twenty characters...");
  EXPECT_EQ(shown.text().substr(20), std::string(12, '\0'));
}

TEST(AesText, ATextThatFillsItsLastBlockIsTerminatedToo) {
  Result const hidden = U::AESEncrypt("sixteen letters.");
  EXPECT_EQ(hidden.length, 32);
  Result const shown = U::AESDecrypt(hidden.data());
  EXPECT_EQ(shown.length, 16);
  EXPECT_STREQ(shown.data(), "sixteen letters.");
}

TEST(AesText, TheEmptyTextIsTheEmptyText) {
  Result const hidden = U::AESEncrypt("");
  EXPECT_EQ(hidden.length, 0);
  EXPECT_STREQ(hidden.data(), "");
  Result const shown = U::AESDecrypt("");
  EXPECT_EQ(shown.length, 0);
  EXPECT_STREQ(shown.data(), "");
}

TEST(AesText, NullAndWhatIsNoHexadecimalTextGiveMinus2) {
  EXPECT_TRUE(Result(U::AESEncrypt(nullptr)).failedWith(-2));
  EXPECT_TRUE(Result(U::AESDecrypt(nullptr)).failedWith(-2));
  EXPECT_TRUE(Result(U::AESDecrypt("0")).failedWith(-2));
  EXPECT_TRUE(Result(U::AESDecrypt("0G")).failedWith(-2));
}

TEST(AesText, LackOfMemoryGivesMinus1) {
  std::string const text(6000, 'x');
  for (std::size_t most : {std::size_t{10000}, std::size_t{5000}}) {
    support::AllocationLimit const limit(most);
    EXPECT_TRUE(Result(U::AESEncrypt(text.c_str())).failedWith(-1)) << most;
  }
}

TEST(AesText, LackOfMemoryForAnyPartOfDecryptionGivesMinus1) {
  std::string const text(12000, 'A');
  {
    support::AllocationLimit const limit(5000); // too little for the decoded bytes
    EXPECT_TRUE(Result(U::AESDecrypt(text.c_str())).failedWith(-1));
  }
  std::string const begunBlock(6002, 'A');
  {
    support::AllocationLimit const limit(3002); // enough for those, too little for the whole blocks
    EXPECT_TRUE(Result(U::AESDecrypt(begunBlock.c_str())).failedWith(-1));
  }
  support::AllocationLimit const limit(255); // enough for both, too little for the copy of the vector
  EXPECT_TRUE(Result(U::AESDecrypt("000102030405060708090A0B0C0D0E0F")).failedWith(-1));
}

TEST(AesText, KeyAndVectorDoNotLieInTheLibraryAsTheyAre) {
  HMODULE const library = GetModuleHandleA("kivara.dll");
  char name[MAX_PATH] = "";
  GetModuleFileNameA(library, name, sizeof name);
  std::ifstream file(name, std::ios::binary);
  std::string const content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  ASSERT_GT(content.size(), 10000u);
  for (Bytes const & secret : {fromHex(KIVARA_AES_KEY), fromHex(KIVARA_AES_VECTOR)}) {
    EXPECT_EQ(std::search(content.begin(), content.end(), secret.begin(), secret.begin() + 8,
                          [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; }),
              content.end());
  }
}

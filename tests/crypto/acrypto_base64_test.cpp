#include "acrypto.hpp"

#include "crypto/bytes.hpp"
#include "support/allocation.hpp"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <cstring>

using bytes::Bytes;
using bytes::Result;

namespace {

/// OpenSSL's block encoder, cut into lines of 64 characters.
std::string linesByPeer(Bytes const & data, int length) {
  std::string text(static_cast<std::size_t>(length) * 4 / 3 + 5, '\0');
  text.resize(
      static_cast<std::size_t>(EVP_EncodeBlock(reinterpret_cast<unsigned char *>(text.data()), data.data(), length)));
  std::string lines;
  for (std::size_t i = 0; i < text.size(); i += 64)
    lines += text.substr(i, 64) + "\n";
  return lines;
}

} // namespace

TEST(Base64Encode, WritesLinesOf64CharactersAndCountsTheirLineFeeds) {
  Bytes const data(50, 'x');
  Result const result = KivCryptoUtils::Base64Encode(data.data(), 50);
  EXPECT_EQ(result.length, 70);
  EXPECT_EQ(result.data()[64], '\n');
  EXPECT_EQ(result.data()[69], '\n');
  EXPECT_EQ(result.data()[70], '\0');
}

TEST(Base64Encode, OneByteIsCompletedWithTwoEqualSigns) {
  unsigned char const byte = 77;
  EXPECT_EQ(Result(KivCryptoUtils::Base64Encode(&byte, 1)).text(), "TQ==\n");
}

TEST(Base64Encode, ALengthOf0GivesAnEmptyText) {
  unsigned char const byte = 77;
  Result const result = KivCryptoUtils::Base64Encode(&byte, 0);
  EXPECT_EQ(result.length, 0);
  EXPECT_STREQ(result.data(), "");
}

TEST(Base64Encode, ANullPointerOrANegativeLengthGivesMinus2) {
  unsigned char const byte = 77;
  EXPECT_TRUE(Result(KivCryptoUtils::Base64Encode(nullptr, 0)).failedWith(-2));
  EXPECT_TRUE(Result(KivCryptoUtils::Base64Encode(nullptr, 3)).failedWith(-2));
  EXPECT_TRUE(Result(KivCryptoUtils::Base64Encode(&byte, -1)).failedWith(-2));
}

TEST(Base64Encode, LackOfMemoryGivesMinus1) {
  Bytes const data(6000, 7);
  for (std::size_t most : {std::size_t{7500}, std::size_t{64}, std::size_t{0}}) {
    support::AllocationLimit const limit(most);
    EXPECT_TRUE(Result(KivCryptoUtils::Base64Encode(data.data(), 6000)).failedWith(-1)) << most;
  }
}

TEST(Base64Decode, ReadsWhatWasEncodedAtEveryLength) {
  bytes::Random random(6);
  for (int length = 0; length <= 1000; ++length) {
    Bytes const data = random.bytes(static_cast<std::size_t>(length) + 1);
    Result const text = KivCryptoUtils::Base64Encode(data.data(), length);
    ASSERT_EQ(text.text(), linesByPeer(data, length)) << length;
    Result const back = KivCryptoUtils::Base64Decode(text.data());
    ASSERT_EQ(back.length, length);
    ASSERT_EQ(std::memcmp(back.data(), data.data(), static_cast<std::size_t>(length)), 0) << length;
  }
}

TEST(Base64Decode, AnEmptyTextGivesNoBytes) {
  Result const result = KivCryptoUtils::Base64Decode("");
  EXPECT_NE(result.data(), nullptr);
  EXPECT_EQ(result.length, 0);
}

TEST(Base64Decode, ATextWithoutALineFeedGivesNoBytes) {
  Result const result = KivCryptoUtils::Base64Decode("TQ==");
  EXPECT_NE(result.data(), nullptr);
  EXPECT_EQ(result.length, 0);
}

TEST(Base64Decode, ANullPointerGivesMinus2) {
  EXPECT_TRUE(Result(KivCryptoUtils::Base64Decode(nullptr)).failedWith(-2));
}

TEST(Base64Decode, LackOfMemoryGivesMinus1) {
  std::string const text(6000, 'A');
  for (std::size_t most : {std::size_t{4000}, std::size_t{0}}) {
    support::AllocationLimit const limit(most);
    EXPECT_TRUE(Result(KivCryptoUtils::Base64Decode(text.c_str())).failedWith(-1)) << most;
  }
}

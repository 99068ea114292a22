#include "acrypto.hpp"

#include "crypto/bytes.hpp"
#include "support/memory/allocation.hpp"

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

TEST(Base64Decode, ReadsLinesOfUpTo1000CharactersWithWhiteSpaceAndTextBefore) {
  struct Row {
    std::string text;
    std::string bytes;
  };
  for (auto const & row : std::initializer_list<Row>{{"QUJD\nRA==\n", "ABCD"},
                                                     {"QUJD\r\nRA==\r\n", "ABCD"},
                                                     {" QU JD \n", "ABC"},
                                                     {"\nQUJD\n\n\nQUJD\n", "ABCABC"},
                                                     {"hello, world\nQUJD\n", "ABC"},
                                                     {"QUJD-QUJD\n", "ABC"},
                                                     {"QUJD\n-----\n", "ABC"}}) {
    Result const result = KivCryptoUtils::Base64Decode(row.text.c_str());
    ASSERT_NE(result.data(), nullptr) << row.text;
    EXPECT_EQ(result.text(), row.bytes) << row.text;
  }
  Result const longLine = KivCryptoUtils::Base64Decode((std::string(1000, 'A') + "\n").c_str());
  EXPECT_EQ(longLine.length, 750);
}

TEST(Base64Decode, WhatIsNoBase64IsNoFailureButGivesNoBytesOrThoseOfTheLinesBefore) {
  struct Row {
    std::string text;
    int length;
  };
  std::string const line(64, 'A');
  for (auto const & row : std::initializer_list<Row>{{"TQ==", 0},         // no line feed
                                                     {line, 0},           // nor here
                                                     {"\n", 0},           // an empty line
                                                     {"T\n", 0},          // groups that are too short
                                                     {"TQ\n", 0},         //
                                                     {"TQ=\n", 0},        //
                                                     {"QUJDRA\n", 0},     //
                                                     {"QUJD\nQUI", 0},    //
                                                     {"=\n", 0},          // "=" alone, too many, or inside of a group
                                                     {"====\n", 0},       //
                                                     {"QUJD==\n", 0},     //
                                                     {"QUJDRA===\n", 0},  //
                                                     {"=QJD\n", 0},       //
                                                     {"Q=JD\n", 0},       //
                                                     {"QU=D\n", 0},       //
                                                     {"TQ==QUJD\n", 0},   // more text behind the end
                                                     {"TQ==\nQUJD\n", 0}, //
                                                     {"!!!!\n", 0},       // characters that are not of the alphabet
                                                     {"QUJDQU!D\n", 0},   //
                                                     {"QUJD\xff\n", 0},   //
                                                     {"QUJD\n!!!!\n", 0}, //
                                                     {"-----\n", 0},      // the end before anything else
                                                     {line + "\n====\n", 0}, // a bad line behind a good one
                                                     {line + "\nQUJ", 48},   // a begun group at the end
                                                     {line + "\n=", 48}}) {  //
    Result const result = KivCryptoUtils::Base64Decode(row.text.c_str());
    EXPECT_NE(result.data(), nullptr) << row.text;
    EXPECT_EQ(result.length, row.length) << row.text;
  }
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

TEST(Base64Decode, AReaderThatCannotBeMadeGivesMinus1) {
  support::AllocationLimit const limit(1000); // enough for the result, too little for OpenSSL's filter
  EXPECT_TRUE(Result(KivCryptoUtils::Base64Decode("QUJD\n")).failedWith(-1));
}

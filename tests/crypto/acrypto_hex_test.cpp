#include "acrypto.hpp"

#include "crypto/bytes.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

using bytes::Bytes;
using bytes::Result;

TEST(HexEncode, WritesUpperCaseDigitsAndANul) {
  unsigned char const data[] = {0, 255};
  Result const result = KivCryptoUtils::HexEncode(data, 2);
  EXPECT_EQ(result.length, 4);
  EXPECT_STREQ(result.data(), "00FF");
}

TEST(HexEncode, ALengthOf0GivesAnEmptyText) {
  unsigned char const data[] = {1};
  Result const result = KivCryptoUtils::HexEncode(data, 0);
  EXPECT_EQ(result.length, 0);
  EXPECT_STREQ(result.data(), "");
}

TEST(HexEncode, ANullPointerOrANegativeLengthGivesMinus2) {
  unsigned char const data[] = {1};
  EXPECT_TRUE(Result(KivCryptoUtils::HexEncode(nullptr, 0)).failedWith(-2));
  EXPECT_TRUE(Result(KivCryptoUtils::HexEncode(nullptr, 5)).failedWith(-2));
  EXPECT_TRUE(Result(KivCryptoUtils::HexEncode(data, -1)).failedWith(-2));
  EXPECT_TRUE(Result(KivCryptoUtils::HexEncode(data, INT_MIN)).failedWith(-2));
}

TEST(HexEncode, LackOfMemoryAndAResultBeyondIntGiveMinus1) {
  Bytes const data(5000, 7);
  EXPECT_TRUE(Result(KivCryptoUtils::HexEncode(data.data(), INT_MAX)).failedWith(-1));
  support::AllocationLimit const limit(9000);
  EXPECT_TRUE(Result(KivCryptoUtils::HexEncode(data.data(), 5000)).failedWith(-1));
}

TEST(HexEncode, EachByteHasItsTwoDigits) {
  for (int i = 0; i < 256; ++i) {
    auto const byte = static_cast<unsigned char>(i);
    Result const result = KivCryptoUtils::HexEncode(&byte, 1);
    EXPECT_STREQ(result.data(), bytes::toHex(&byte, 1).c_str());
  }
}

TEST(HexDecode, ReadsDigitsOfEitherCase) {
  for (char const * text : {"00ff", "00FF", "00fF"}) {
    Result const result = KivCryptoUtils::HexDecode(text);
    ASSERT_EQ(result.length, 2) << text;
    EXPECT_EQ(result.data()[0], 0);
    EXPECT_EQ(result.data()[1], 255);
  }
}

TEST(HexDecode, ACharacterThatIsNoDigitGivesMinus1) {
  for (char const * text : {"0G", "G0", "00 0", "0x", "00zz", "\xc4\xd6", "-1", "@0", "`0", "/0", ":0"})
    EXPECT_TRUE(Result(KivCryptoUtils::HexDecode(text)).failedWith(-1)) << text;
}

TEST(HexDecode, AnOddLengthOrANullPointerGivesMinus2) {
  EXPECT_TRUE(Result(KivCryptoUtils::HexDecode("0")).failedWith(-2));
  EXPECT_TRUE(Result(KivCryptoUtils::HexDecode("00F")).failedWith(-2));
  EXPECT_TRUE(Result(KivCryptoUtils::HexDecode("0GG")).failedWith(-2));
  EXPECT_TRUE(Result(KivCryptoUtils::HexDecode(nullptr)).failedWith(-2));
}

TEST(HexDecode, AnEmptyTextGivesNoBytes) {
  Result const result = KivCryptoUtils::HexDecode("");
  EXPECT_NE(result.data(), nullptr);
  EXPECT_EQ(result.length, 0);
}

TEST(HexDecode, EveryPairOfCharactersIsReadOrRefused) {
  std::string const digits = "0123456789ABCDEFabcdef";
  for (int a = 1; a < 256; ++a)
    for (int b = 1; b < 256; ++b) {
      char const text[3] = {static_cast<char>(a), static_cast<char>(b), '\0'};
      bool const good = digits.find(text[0]) != std::string::npos && digits.find(text[1]) != std::string::npos;
      Result const result = KivCryptoUtils::HexDecode(text);
      ASSERT_EQ(result.length, good ? 1 : -1) << a << " " << b;
      if (good) {
        ASSERT_EQ(result.data()[0], std::stoi(text, nullptr, 16));
      }
    }
}

TEST(HexDecode, EveryCharacterIsReadOrRefusedAtEveryPlaceOfALongText) {
  std::string const digits = "0123456789ABCDEFabcdef";
  for (std::size_t place = 0; place < 40; ++place)
    for (int c = 1; c < 256; ++c) {
      std::string text(40, '7');
      text[place] = static_cast<char>(c);
      Result const result = KivCryptoUtils::HexDecode(text.c_str());
      bool const good = digits.find(text[place]) != std::string::npos;
      ASSERT_EQ(result.length, good ? 20 : -1) << place << " " << c;
      if (good) {
        ASSERT_EQ(result.data()[place / 2], std::stoi(text.substr(place / 2 * 2, 2), nullptr, 16)) << place << " " << c;
      }
    }
}

TEST(HexDecode, FindsTheEndOfATextOfAnyLengthAtAnyAddress) {
  std::string const digits(200, 'a');
  for (std::size_t start = 0; start < 33; ++start)
    for (std::size_t length = 0; length < 100; length += 2) {
      std::string text = digits;
      text[start + length] = '\0';
      Result const result = KivCryptoUtils::HexDecode(text.data() + start);
      ASSERT_EQ(result.length, static_cast<int>(length / 2)) << start;
    }
}

TEST(HexDecode, LackOfMemoryGivesMinus1) {
  std::string const text(20000, '0');
  support::AllocationLimit const limit(5000);
  EXPECT_TRUE(Result(KivCryptoUtils::HexDecode(text.c_str())).failedWith(-1));
}

TEST(HexCoding, IsUndoneByDecodingAtEveryLength) {
  bytes::Random random(5);
  for (int length = 0; length <= 1000; ++length) {
    Bytes const data = random.bytes(static_cast<std::size_t>(length) + 1);
    Result const text = KivCryptoUtils::HexEncode(data.data(), length);
    ASSERT_EQ(text.length, length * 2);
    ASSERT_EQ(std::strlen(text.data()), static_cast<std::size_t>(length) * 2);
    Result const back = KivCryptoUtils::HexDecode(text.data());
    ASSERT_EQ(back.length, length);
    ASSERT_EQ(std::memcmp(back.data(), data.data(), static_cast<std::size_t>(length)), 0);
  }
}

TEST(CryptoFree, NullIsAllowed) { KivCryptoUtils::Free(nullptr); }

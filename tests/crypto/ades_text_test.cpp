#include "ades.hpp"

#include "crypto/bytes.hpp"
#include "crypto/heapuse.hpp"

#include <gtest/gtest.h>
#include <openssl/des.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

using bytes::Bytes;

namespace {

std::string encrypted(std::string const & text) {
  std::string hex((text.size() + 7) / 8 * 16 + 2, '?');
  Kiv_Encrypt(text.c_str(), hex.data());
  EXPECT_EQ(hex.back(), '?') << "written behind the NUL";
  EXPECT_EQ(hex[hex.size() - 2], '\0');
  hex.resize(hex.size() - 2);
  return hex;
}

/// All bytes up to the one before the NUL that was put after them.
std::string decrypted(std::string hex) {
  unsigned char * text = nullptr;
  Kiv_Decrypt(hex.data(), text);
  std::string result(reinterpret_cast<char *>(text), hex.size() / 2);
  EXPECT_EQ(text[hex.size() / 2], '\0');
  delete[] text;
  return result;
}

/// The cipher text by the peer, from the key that the library was built with.
std::string byPeer(std::string const & padded, int direction = DES_ENCRYPT) {
  Bytes const key = bytes::fromHex(KIVARA_DES_KEY);
  DES_cblock keyBytes;
  std::copy(key.begin(), key.end(), keyBytes);
  DES_key_schedule schedule;
  DES_set_key_unchecked(&keyBytes, &schedule);
  std::string result;
  for (std::size_t i = 0; i + 8 <= padded.size(); i += 8) {
    DES_cblock in;
    DES_cblock out;
    std::memcpy(in, padded.data() + i, 8);
    DES_ecb_encrypt(&in, &out, &schedule, direction);
    result.append(reinterpret_cast<char const *>(out), 8);
  }
  return result;
}

std::string lowerHex(std::string const & data) {
  std::string digits = bytes::toHex(reinterpret_cast<unsigned char const *>(data.data()), data.size());
  std::transform(digits.begin(), digits.end(), digits.begin(),
                 [](char c) { return static_cast<char>(std::tolower(c)); });
  return digits;
}

std::string filledUp(std::string const & text) {
  std::string result = text;
  for (std::size_t i = text.size(); i % 8 != 0; ++i)
    result += text[i * 17 % text.size()];
  return result;
}

/// The bytes as a loop over the runtime's sscanf gives them, for texts shorter than a block.
std::string byRuntime(std::string const & hex) {
  std::string result;
  unsigned int value = 0;
  for (std::size_t i = 0; i + 2 <= hex.size(); i += 2) {
    __ms_sscanf(hex.c_str() + i, "%2x", &value);
    result += static_cast<char>(value);
  }
  return result;
}

} // namespace

TEST(KivEncrypt, AnEmptyTextGivesAnEmptyResult) {
  EXPECT_EQ(encrypted(""), "");
  char hex[2] = {'?', '?'};
  Kiv_Encrypt(nullptr, hex);
  EXPECT_EQ(hex[0], '\0');
  EXPECT_EQ(hex[1], '?');
}

TEST(KivEncrypt, EachBegunBlockGives16Characters) {
  EXPECT_EQ(encrypted("12345678").size(), 16u);
  EXPECT_EQ(encrypted("123456789").size(), 32u);
}

TEST(KivEncrypt, ATextOfThreeIsFilledWithItsOwnCharacters) {
  EXPECT_EQ(decrypted(encrypted("abc")), "abcacbac");
  EXPECT_EQ(filledUp("abc").substr(3, 2), "ac") << "51 modulo 3 is 0, 68 modulo 3 is 2";
}

TEST(KivEncrypt, IsDesUnderTheConfiguredKeyInLowerCaseDigits) {
  bytes::Random random(3);
  for (std::size_t length = 0; length <= 300; ++length) {
    std::string text(length, 'x');
    for (auto & c : text)
      c = static_cast<char>(1 + random.below(255));
    ASSERT_EQ(encrypted(text), lowerHex(byPeer(filledUp(text)))) << length;
  }
}

TEST(KivEncrypt, TheWorkAreaStaysAllocated) {
  std::string const text(10000, 'x');
  std::string hex(20001, '?');
  EXPECT_NEAR(heapuse::growthPerCall([&] { Kiv_Encrypt(text.c_str(), hex.data()); }), 10007, 500);
}

TEST(KivDecrypt, GivesTheTextAndItsFilling) {
  for (std::string const text : {"", "a", "12345678", "a longer password", "\xe4\xf6\xfc"})
    EXPECT_EQ(decrypted(encrypted(text)), text.empty() ? text : filledUp(text));
}

TEST(KivDecrypt, IgnoresTheLastCharacterOfAnOddLength) {
  std::string const hex = encrypted("12345678");
  EXPECT_EQ(decrypted(hex + "f"), "12345678");
  EXPECT_EQ(decrypted("f"), "");
}

TEST(KivDecrypt, ReadsUpperCaseToo) {
  std::string hex = encrypted("12345678");
  std::transform(hex.begin(), hex.end(), hex.begin(), [](char c) { return static_cast<char>(std::toupper(c)); });
  EXPECT_EQ(decrypted(hex), "12345678");
}

TEST(KivDecrypt, BytesAfterTheLastWholeBlockStayAsTheyWereRead) {
  EXPECT_EQ(decrypted("414243"), "ABC");
  EXPECT_EQ(decrypted(encrypted("12345678") + "414243"), "12345678ABC");
}

TEST(KivDecrypt, APairThatIsNoNumberRepeatsTheByteBeforeIt) {
  EXPECT_EQ(decrypted("41zz42"), "AAB");
  EXPECT_EQ(decrypted("zz41"), std::string("\0A", 2));
}

TEST(KivDecrypt, APairIsReadAsTheRuntimeReadsANumber) {
  // One digit and something else is that digit; leading white space is passed over, into the pairs that follow; a sign
  // counts.
  EXPECT_EQ(decrypted("4z"), "\x04");
  EXPECT_EQ(decrypted("  41"), "AA");
  EXPECT_EQ(decrypted("-1"), "\xff");
  EXPECT_EQ(decrypted("+1"), "\x01");
  // "0x" begins a number and has no digit within the width: a number or none, as the runtime has it.
  for (std::string const hex : {"0x41", "0X41", "410x42", "0x", "7e0x"})
    EXPECT_EQ(decrypted(hex), byRuntime(hex)) << hex;
}

TEST(KivDecrypt, EveryPairIsReadAsTheRuntimeReadsIt) {
  for (int a = 1; a < 256; ++a)
    for (int b = 1; b < 256; ++b) {
      std::string const hex = {'7', 'e', static_cast<char>(a), static_cast<char>(b), '4', '2'};
      ASSERT_EQ(decrypted(hex), byRuntime(hex)) << a << " " << b;
    }
}

TEST(KivDecrypt, ANullPointerIsTheEmptyText) {
  unsigned char * text = nullptr;
  Kiv_Decrypt(nullptr, text);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text[0], '\0');
  delete[] text;
}

TEST(KivDecrypt, IsDesUnderTheConfiguredKey) {
  bytes::Random random(4);
  for (std::size_t length = 0; length <= 300; ++length) {
    Bytes const data = random.bytes(length);
    std::string const raw(data.begin(), data.end());
    std::size_t const whole = length / 8 * 8;
    ASSERT_EQ(decrypted(lowerHex(raw)), byPeer(raw.substr(0, whole), DES_DECRYPT) + raw.substr(whole)) << length;
  }
}

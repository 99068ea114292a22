#include "acrypto.hpp"

#include "ades.hpp"
#include "crypto/bytes.hpp"
#include "crypto/heapuse.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <type_traits>

using bytes::Bytes;
using SV::String;

namespace {

/// A text that is released at the end, and the result beside it.
struct Outcome {
  long length;
  std::unique_ptr<char[]> text;
};

template <class Operation> Outcome outcomeOf(Operation const & operation) {
  char * out = nullptr;
  long const length = operation(out);
  return {length, std::unique_ptr<char[]>(out)};
}

KivEncryption & service() { return KivEncryption::Instance(); }

Outcome encrypted(long type, std::string text, long maxLength = -1) {
  return outcomeOf([&](char *& out) { return service().Encrypt(type, text.data(), out, maxLength); });
}
Outcome decrypted(long type, std::string text) {
  return outcomeOf([&](char *& out) { return service().Decrypt(type, text.data(), out); });
}

std::string oldForm(std::string const & text) {
  std::string hex((text.size() + 7) / 8 * 16 + 1, '\0');
  Kiv_Encrypt(text.c_str(), hex.data());
  return hex.c_str();
}

/// The bytes as one AES block under the key, in the new Base64 form.
String cipherTextOf(Bytes const & data, std::string const & key, int length = 16) {
  bytes::Result const block = KivCryptoUtils::AESEncrypt(
      data.data(), 16, reinterpret_cast<unsigned char const *>(key.data()), static_cast<int>(key.size()));
  std::string cipher(reinterpret_cast<char const *>(block.data()), 16);
  cipher.resize(static_cast<std::size_t>(length), '\x77');
  char * out = nullptr;
  unsigned long characters = 0;
  Kiv_NewBase64Encode(cipher.data(), static_cast<unsigned long>(cipher.size()), out, characters);
  std::unique_ptr<char[]> const owned(out);
  return String(out);
}

/// The password filled up to a block as in PKCS#7, with any count.
Bytes filledUp(std::string const & password, int count) {
  Bytes data(password.begin(), password.end());
  data.resize(16, static_cast<unsigned char>(count));
  return data;
}

std::string const key16 = "a key of 16 char";

} // namespace

TEST(KivEncryption, IsOneInstanceWithAVirtualDestructorOnly) {
  EXPECT_EQ(&KivEncryption::Instance(), &KivEncryption::Instance());
  static_assert(std::is_base_of_v<KivObject, KivEncryption>);
  static_assert(std::has_virtual_destructor_v<KivEncryption>);
  static_assert(!std::is_default_constructible_v<KivEncryption>);
  static_assert(!std::is_copy_constructible_v<KivEncryption> && !std::is_copy_assignable_v<KivEncryption>);
}

TEST(KivEncryption, HoldsTheTypeAloneWhichIs0UntilItIsSet) {
  static_assert(sizeof(KivEncryption) == sizeof(void *) * 2);
  auto const type = [] {
    long value = 0;
    std::memcpy(&value, reinterpret_cast<char const *>(&service()) + sizeof(KivObject), sizeof value);
    return value;
  };
  EXPECT_EQ(type(), 0);
  for (long const value : {1L, 2L, -2147483647L - 1, 2147483647L}) {
    service().SetEncryptionType(value);
    EXPECT_EQ(type(), value);
  }
  service().SetEncryptionType(0);
}

TEST(KivEncryption, TheFormsWithoutATypeUseTheOneThatWasSet) {
  char text[] = "password";
  Outcome const before = outcomeOf([&](char *& out) { return service().Encrypt(text, out, -1); });
  ASSERT_NE(before.text, nullptr);
  EXPECT_EQ(before.length, 16);
  EXPECT_STREQ(before.text.get(), oldForm("password").c_str());
  Outcome const beforeBack = outcomeOf([&](char *& out) { return service().Decrypt(before.text.get(), out); });
  ASSERT_NE(beforeBack.text, nullptr);
  EXPECT_STREQ(beforeBack.text.get(), "password");
  EXPECT_EQ(outcomeOf([&](char *& out) { return service().Encrypt(text, out, 5); }).length, 5);
  service().SetEncryptionType(2);
  Outcome const after = outcomeOf([&](char *& out) { return service().Encrypt(text, out, -1); });
  bytes::Result const aes = KivCryptoUtils::AESEncrypt("password");
  ASSERT_NE(after.text, nullptr);
  EXPECT_STREQ(after.text.get(), aes.data());
  EXPECT_EQ(after.length, 32);
  Outcome const back = outcomeOf([&](char *& out) { return service().Decrypt(after.text.get(), out); });
  EXPECT_STREQ(back.text.get(), "password");
  EXPECT_EQ(back.length, 16);
  service().SetEncryptionType(0);
}

TEST(KivEncryption, TypesBelow2AreTheOldFormAndOthersAes) {
  bytes::Result const aes = KivCryptoUtils::AESEncrypt("password");
  ASSERT_EQ(aes.length, 32);
  std::string const old = oldForm("password");
  ASSERT_EQ(old.size(), 16u);
  for (long const type : {-2147483647L - 1, -1L, 0L, 1L, 2L, 3L, 2147483647L}) {
    Outcome const hidden = encrypted(type, "password");
    ASSERT_NE(hidden.text, nullptr) << type;
    EXPECT_STREQ(hidden.text.get(), type < 2 ? old.c_str() : aes.data()) << type;
    EXPECT_EQ(hidden.length, type < 2 ? 16 : 32) << type;
    Outcome const shown = decrypted(type, hidden.text.get());
    ASSERT_NE(shown.text, nullptr) << type;
    EXPECT_STREQ(shown.text.get(), "password") << type;
    EXPECT_EQ(shown.length, type < 2 ? 8 : 16) << type << ": up to the first byte 0, or of the blocks";
  }
}

TEST(KivEncryption, OldFormIsCutAtTheMostCharacters) {
  Outcome const cut = encrypted(1, "12345678", 5);
  EXPECT_EQ(cut.length, 5);
  EXPECT_EQ(std::string(cut.text.get()), oldForm("12345678").substr(0, 5));
  EXPECT_EQ(encrypted(1, "12345678", 0).length, 0);
  EXPECT_STREQ(encrypted(1, "12345678", 0).text.get(), "");
}

TEST(KivEncryption, OldFormIsNotCutByANegativeOrSufficientLimit) {
  for (long const limit : {-1L, -2147483647L, 16L, 17L, 1000L})
    EXPECT_EQ(encrypted(1, "12345678", limit).length, 16) << limit;
  EXPECT_EQ(encrypted(1, "12345678", 15).length, 15);
}

TEST(KivEncryption, AesFormTakesNoNoticeOfTheLimit) {
  Outcome const whole = encrypted(2, "12345678", 5);
  EXPECT_EQ(whole.length, 32);
  EXPECT_EQ(std::strlen(whole.text.get()), 32u);
}

TEST(KivEncryption, OldFormDecryptsWithTheFillingOnTheEnd) {
  Outcome const plain = decrypted(0, oldForm("abc"));
  EXPECT_EQ(plain.length, 8);
  EXPECT_EQ(std::string(plain.text.get(), 3), "abc");
}

TEST(KivEncryption, OldFormsLengthEndsAtTheFirstByte0) {
  // After the last whole block the bytes stay as they were read.
  Outcome const plain = decrypted(0, "41420043");
  EXPECT_EQ(plain.length, 2);
  EXPECT_STREQ(plain.text.get(), "AB");
}

TEST(KivEncryption, AesFormDecryptsToTheLengthOfTheBlocks) {
  Outcome const plain = decrypted(2, encrypted(2, "twenty characters...").text.get());
  EXPECT_EQ(plain.length, 32);
  EXPECT_STREQ(plain.text.get(), "twenty characters...");
}

TEST(KivEncryption, AFailedAesOperationGivesNullAndANegativeLength) {
  char * out = &*std::make_unique<char>('x').release();
  std::unique_ptr<char> const kept(out);
  EXPECT_EQ(service().Encrypt(2, nullptr, out, -1), -2);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(decrypted(2, "no hexadecimal text").length, -2);
  EXPECT_EQ(decrypted(2, "no hexadecimal text").text, nullptr);
}

TEST(KivEncryption, LackOfMemoryGivesNullAndMinus1) {
  std::string const hex(20000, '0');
  char before = 'x';
  auto const check = [&](char const * name, std::size_t most, auto const & operation) {
    char * out = &before;
    support::AllocationLimit const limit(most);
    EXPECT_NO_THROW(EXPECT_EQ(operation(out), -1) << name) << name;
    EXPECT_EQ(out, nullptr) << name;
  };
  std::string text(8000, 'x');
  std::string digits = hex;
  check("old form, the result", 9000, [&](char *& out) { return service().Encrypt(0, text.data(), out, -1); });
  check("old form, anything", 100, [&](char *& out) { return service().Encrypt(0, text.data(), out, -1); });
  check("old form, the first array", 30000, [&](char *& out) { return service().Decrypt(0, digits.data(), out); });
  check("old form, anything", 100, [&](char *& out) { return service().Decrypt(0, digits.data(), out); });
  check("AES form", 5000, [&](char *& out) { return service().Encrypt(2, text.data(), out, -1); });
  check("AES form", 5000, [&](char *& out) { return service().Decrypt(2, digits.data(), out); });
}

TEST(KivEncryption, OldFormTakesANullPointerAsTheEmptyText) {
  Outcome const hidden = outcomeOf([](char *& out) { return service().Encrypt(0, nullptr, out, -1); });
  EXPECT_EQ(hidden.length, 0);
  EXPECT_STREQ(hidden.text.get(), "");
  Outcome const shown = outcomeOf([](char *& out) { return service().Decrypt(0, nullptr, out); });
  EXPECT_EQ(shown.length, 0);
}

TEST(KivEncryption, DecryptingTheOldFormLosesAnArrayOfTheEncryptedSize) {
  std::string const hex = oldForm(std::string(8000, 'x'));
  ASSERT_EQ(hex.size(), 16000u);
  EXPECT_NEAR(heapuse::growthPerCall([&] { decrypted(0, hex); }), 32001, 500);
}

TEST(DecryptPassword, GivesThePasswordWithoutItsFilling) {
  for (std::string const & key : {key16, key16 + "8 more..", key16 + key16})
    for (std::string const password : {"secret", "x", "fifteen letters"}) {
      int const count = 16 - static_cast<int>(password.size());
      EXPECT_TRUE(Kiv_DecryptPasswordForAPP(cipherTextOf(filledUp(password, count), key), String(key.c_str())) ==
                  password.c_str());
    }
}

TEST(DecryptPassword, TheFillingIsTheLastBytesValueWithoutACheck) {
  Bytes data = filledUp("sixteen letters.", 0);
  for (int count = 0; count < 256; ++count) {
    data[15] = static_cast<unsigned char>(count);
    String const result = Kiv_DecryptPasswordForAPP(cipherTextOf(data, key16), String(key16.c_str()));
    ASSERT_EQ(result.Len(), count < 16 ? 16 - count : 0) << count;
    ASSERT_EQ(std::memcmp(result.c_str(), data.data(), static_cast<std::size_t>(result.Len())), 0) << count;
  }
}

TEST(DecryptPassword, WhatIsLongerThanABlockComesBackAsZeros) {
  String const result =
      Kiv_DecryptPasswordForAPP(cipherTextOf(filledUp("sixteen letters.", 0), key16, 20), String(key16.c_str()));
  EXPECT_TRUE(result == String("sixteen letters.\0\0\0\0", 20));
}

TEST(DecryptPassword, ADecodedTextShorterThanABlockIsCompletedWithZeros) {
  Bytes cipher(16);
  cipher[0] = 'M';
  // Only under a key that makes the last byte, the count of the filling, 0 does anything come out of one byte.
  std::string key = key16;
  unsigned char first = 0;
  bool found = false;
  for (int i = 0; !found && i < 65536; ++i) {
    key[0] = static_cast<char>(i >> 8);
    key[1] = static_cast<char>(i);
    bytes::Result const plain =
        KivCryptoUtils::AESDecrypt(cipher.data(), 16, reinterpret_cast<unsigned char const *>(key.data()), 16);
    found = plain.data()[15] == 0;
    first = plain.data()[0];
  }
  ASSERT_TRUE(found);
  String const result = Kiv_DecryptPasswordForAPP(String("TQ=="), String(key.data(), 16));
  ASSERT_EQ(result.Len(), 1) << "one byte less no filling";
  EXPECT_EQ(static_cast<unsigned char>(result.charAt(0)), first);
}

TEST(DecryptPassword, LackOfMemoryGivesTheEmptyText) {
  String const cipher = cipherTextOf(filledUp("sixteen letters.", 0), key16, 6000);
  String const key(key16.c_str());
  ASSERT_EQ(Kiv_DecryptPasswordForAPP(cipher, key).Len(), 6000);
  for (std::size_t const most : {std::size_t{6008}, std::size_t{5000}, std::size_t{0}}) {
    support::AllocationLimit const limit(most);
    EXPECT_NO_THROW(EXPECT_EQ(Kiv_DecryptPasswordForAPP(cipher, key).Len(), 0) << most) << most;
  }
}

TEST(DecryptPassword, BadTextsAndKeysGiveTheEmptyText) {
  String const good = cipherTextOf(filledUp("secret", 10), key16);
  EXPECT_EQ(Kiv_DecryptPasswordForAPP(String(), String(key16.c_str())).Len(), 0);
  EXPECT_EQ(Kiv_DecryptPasswordForAPP(String("!!!!"), String(key16.c_str())).Len(), 0);
  EXPECT_EQ(Kiv_DecryptPasswordForAPP(String("===="), String(key16.c_str())).Len(), 0);
  EXPECT_EQ(Kiv_DecryptPasswordForAPP(good, String()).Len(), 0);
  EXPECT_EQ(Kiv_DecryptPasswordForAPP(good, String("short")).Len(), 0);
  EXPECT_EQ(Kiv_DecryptPasswordForAPP(good, String((key16 + "x").c_str())).Len(), 0);
}

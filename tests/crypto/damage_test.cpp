// Encoded and encrypted texts and files that were damaged: what can be decoded is decoded, within its bounds.
#include "acrypto.hpp"
#include "ades.hpp"

#include "crypto/bytes.hpp"
#include "support/data/damage.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <memory>

using bytes::Bytes;
using SV::String;

namespace {

constexpr std::size_t kTexts = 1'000;

// What stays allocated with a call takes a place among the guarded blocks: such an operation runs for this long under them.
constexpr std::size_t kGuardedTexts = 5'000;

unsigned char const * unsignedOf(std::string const & text) {
  return reinterpret_cast<unsigned char const *>(text.data());
}

std::string const kPlain = "The order of Müller & Söhne, 5 pieces, \"urgent\".\r\n";

/// A block's text with each byte touched: past its end it would fault.
template <class T> void readAll(T const * data, std::size_t length) {
  unsigned volatile sum = 0;
  for (std::size_t i = 0; data != nullptr && i < length; ++i)
    sum = sum + static_cast<unsigned char>(data[i]);
}

/// A text and an error exclude each other, and more than the digits hold never comes out.
template <class T> void expectDecoded(std::pair<T *, int> const & result, std::size_t most) {
  ASSERT_EQ(result.first == nullptr, result.second < 0);
  ASSERT_LE(result.second, static_cast<int>(most));
  readAll(result.first, static_cast<std::size_t>(std::max(result.second, 0)));
  KivCryptoUtils::Free(result.first);
}

template <class Decode> void decodeDamaged(unsigned seed, std::string const & sound, Decode const & decode) {
  support::Random random(seed);
  auto guard = std::make_unique<support::GuardPages>();
  for (std::size_t i = 0; i < support::times(kTexts); ++i) {
    if (i == kGuardedTexts)
      guard.reset();
    ASSERT_NO_FATAL_FAILURE(
        decode(support::damagedText(sound, random, {.pieces = {"=", "==", "\n", "\r\n", "0", "F", " ", "-"}})))
        << i;
  }
}

} // namespace

TEST(EncodingDamage, OfHexadecimalDigitsGivesBytesOrAnError) {
  bytes::Result const sound(KivCryptoUtils::HexEncode(unsignedOf(kPlain), static_cast<int>(kPlain.size())));
  decodeDamaged(71, sound.text(), [](std::string const & text) {
    expectDecoded(KivCryptoUtils::HexDecode(support::ownBlock(text).get()), text.size() / 2);
  });
}

TEST(EncodingDamage, OfBase64GivesBytesOrAnError) {
  bytes::Result const sound(KivCryptoUtils::Base64Encode(unsignedOf(kPlain), static_cast<int>(kPlain.size())));
  decodeDamaged(72, sound.text(), [](std::string const & text) {
    expectDecoded(KivCryptoUtils::Base64Decode(support::ownBlock(text).get()), text.size());
  });
}

using OwnBase64 = bool (*)(char *, unsigned long, char *&, unsigned long &);

void decodeOwnBase64(unsigned seed, OwnBase64 encode, OwnBase64 decode) {
  std::string plain = kPlain;
  char * text = nullptr;
  unsigned long length = 0;
  ASSERT_TRUE(encode(plain.data(), static_cast<unsigned long>(plain.size()), text, length));
  std::string const sound(text, length);
  delete[] text;
  decodeDamaged(seed, sound, [decode](std::string const & damaged) {
    char * out = nullptr;
    unsigned long count = 0;
    decode(support::ownBlock(damaged).get(), static_cast<unsigned long>(damaged.size()), out, count);
    ASSERT_NE(out, nullptr);
    ASSERT_LE(count, damaged.size());
    readAll(out, count);
    delete[] out;
  });
}

TEST(EncodingDamage, OfTheOldOwnBase64GivesBytes) {
  decodeOwnBase64(
      73,
      [](char * in, unsigned long size, char *& out, unsigned long & count) {
        return Kiv_OldBase64Encode(in, size, out, count);
      },
      [](char * in, unsigned long size, char *& out, unsigned long & count) {
        return Kiv_OldBase64Decode(in, size, out, count);
      });
}

TEST(EncodingDamage, OfTheNewOwnBase64GivesBytes) {
  decodeOwnBase64(
      74,
      [](char * in, unsigned long size, char *& out, unsigned long & count) {
        return Kiv_NewBase64Encode(in, size, out, count);
      },
      [](char * in, unsigned long size, char *& out, unsigned long & count) {
        return Kiv_NewBase64Decode(in, size, out, count);
      });
}

TEST(CipherDamage, OfADesTextGivesAsManyBytes) {
  char hex[256] = "";
  Kiv_Encrypt("a password of some length", hex);
  decodeDamaged(75, hex, [](std::string const & text) {
    std::unique_ptr<char[]> const input = support::ownBlock(text);
    unsigned char * out = nullptr;
    Kiv_Decrypt(input.get(), out);
    ASSERT_EQ(out[text.size() / 2], 0);
    readAll(out, text.size() / 2 + 1);
    delete[] out;
  });
}

TEST(CipherDamage, OfAnEncryptedLineGivesATextOrNone) {
  std::string plain = kPlain;
  for (long const type : {0L, 1L, 2L, 3L}) {
    char * line = nullptr;
    if (KivEncryption::Instance().Encrypt(type, plain.data(), line, -1) < 0)
      continue;
    std::string const sound(line);
    delete[] line;
    decodeDamaged(76 + static_cast<unsigned>(type), sound, [type](std::string const & text) {
      char * out = nullptr;
      long const length = KivEncryption::Instance().Decrypt(type, support::ownBlock(text).get(), out);
      ASSERT_EQ(out == nullptr, length < 0);
      readAll(out, static_cast<std::size_t>(length + 1));
      delete[] out;
    });
  }
}

TEST(CipherDamage, OfAStoredPasswordGivesATextOrNone) {
  std::string const keyText = "0123456789abcdef0123456789abcdef";
  std::string const block = "secret word" + std::string(5, '\5');
  bytes::Result const encrypted(KivCryptoUtils::AESEncrypt(unsignedOf(block), 16, unsignedOf(keyText), 32));
  char * sound = nullptr;
  unsigned long length = 0;
  ASSERT_TRUE(Kiv_NewBase64Encode(reinterpret_cast<char *>(encrypted.data()), 16, sound, length));
  std::unique_ptr<char[]> const owner(sound);
  String const key(keyText.c_str());
  ASSERT_EQ(Kiv_DecryptPasswordForAPP(String(sound), key), "secret word");
  decodeDamaged(81, sound, [&key](std::string const & text) {
    String const result = Kiv_DecryptPasswordForAPP(String(text.c_str()), key);
    ASSERT_LE(result.Len(), static_cast<std::int32_t>(text.size()));
    readAll(result.c_str(), static_cast<std::size_t>(result.Len()));
  });
}

/// In one file that is written anew for each.
TEST(CipherDamage, OfADesFileGivesItsWholeBlocks) {
  des_ctx ctx;
  unsigned char const key[8] = {0x13, 0x34, 0x57, 0x79, 0x9b, 0xbc, 0xdf, 0xf1};
  ades_key(&ctx, key);
  std::string sound = kPlain + std::string(8 - kPlain.size() % 8, ' ');
  ades_enc(&ctx, reinterpret_cast<unsigned char *>(sound.data()), static_cast<int>(sound.size() / 8));
  support::Random random(82);
  for (std::size_t i = 0; i < support::times(200); ++i) {
    std::string const bytes = support::damaged(sound, random);
    FILE * const file = std::fopen("damaged.des", "w+b");
    ASSERT_NE(file, nullptr);
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::rewind(file);
    std::string expected = bytes.substr(0, bytes.size() / 8 * 8);
    ades_dec(&ctx, reinterpret_cast<unsigned char *>(expected.data()), static_cast<int>(expected.size() / 8));
    des_reader reader(file, &ctx);
    std::string content;
    for (int byte = reader.get(); byte != -1; byte = reader.get())
      content += static_cast<char>(byte);
    std::fclose(file);
    ASSERT_EQ(content, expected) << i;
  }
}

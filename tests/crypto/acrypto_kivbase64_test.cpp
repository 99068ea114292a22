#include "acrypto.hpp"

#include "crypto/bytes.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <cstring>
#include <memory>

using bytes::Bytes;

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// What an operation gave: the bytes that it counts, and those that it wrote up to the byte 0 of the decoders' end.
struct Outcome {
  bool good;
  std::string counted;
  std::string written;
};

template <class Text>
Outcome outcomeOf(bool (*operation)(Text, unsigned long, char *&, unsigned long &), std::string text) {
  char * out = nullptr;
  unsigned long length = 12345;
  bool const good = operation(text.data(), static_cast<unsigned long>(text.size()), out, length);
  std::unique_ptr<char[]> const owned(out);
  if (!good)
    return {false, "", ""};
  return {true, std::string(out, length), std::string(out)};
}

Outcome oldEncode(std::string const & data) { return outcomeOf(Kiv_OldBase64Encode, data); }
Outcome newEncode(std::string const & data) { return outcomeOf(Kiv_NewBase64Encode, data); }
Outcome oldDecode(std::string const & text) { return outcomeOf(Kiv_OldBase64Decode, text); }
Outcome newDecode(std::string const & text) { return outcomeOf(Kiv_NewBase64Decode, text); }

std::string randomBytes(bytes::Random & random, std::size_t length) {
  Bytes const data = random.bytes(length);
  return std::string(data.begin(), data.end());
}

std::string byPeer(std::string const & data) {
  std::string text(data.size() * 4 / 3 + 5, '\0');
  text.resize(static_cast<std::size_t>(EVP_EncodeBlock(reinterpret_cast<unsigned char *>(text.data()),
                                                       reinterpret_cast<unsigned char const *>(data.data()),
                                                       static_cast<int>(data.size()))));
  return text;
}

} // namespace

TEST(KivBase64, OneByteOf77IsTQAndWithEqualSignsInTheNewForm) {
  EXPECT_EQ(oldEncode("M").counted, "TQ");
  EXPECT_EQ(newEncode("M").counted, "TQ==");
}

TEST(KivBase64, TheTailDiffersByTheEqualSigns) {
  EXPECT_EQ(oldEncode("ABC").counted, "QUJD");
  EXPECT_EQ(newEncode("ABC").counted, "QUJD");
  EXPECT_EQ(oldEncode("ABCD").counted, "QUJDRA");
  EXPECT_EQ(newEncode("ABCD").counted, "QUJDRA==");
  EXPECT_EQ(oldEncode("ABCDE").counted, "QUJDREU");
  EXPECT_EQ(newEncode("ABCDE").counted, "QUJDREU=");
}

TEST(KivBase64, NothingEncodesToNothing) {
  for (auto const & outcome : {oldEncode(""), newEncode("")}) {
    EXPECT_TRUE(outcome.good);
    EXPECT_EQ(outcome.counted, "");
  }
}

TEST(KivBase64, BothFormsEqualThePeerAtEveryLengthAndDecodeBack) {
  bytes::Random random(7);
  for (std::size_t length = 0; length <= 1000; ++length) {
    std::string const data = randomBytes(random, length);
    std::string const padded = byPeer(data);
    std::string const bare = padded.substr(0, padded.find('='));
    Outcome const oldForm = oldEncode(data);
    Outcome const newForm = newEncode(data);
    ASSERT_TRUE(oldForm.good && newForm.good);
    ASSERT_EQ(oldForm.counted, bare) << length;
    ASSERT_EQ(oldForm.written, bare) << length << ": not terminated behind what is counted";
    ASSERT_EQ(newForm.counted, padded) << length;
    ASSERT_EQ(newForm.written, padded) << length;
    ASSERT_EQ(oldForm.counted.size(), length / 3 * 4 + (length % 3 == 0 ? 0 : length % 3 + 1));
    ASSERT_EQ(newForm.counted.size(), (length + 2) / 3 * 4);
    Outcome const oldBack = oldDecode(bare);
    ASSERT_TRUE(oldBack.good);
    ASSERT_EQ(oldBack.counted, data) << length;
    if (length > 0) {
      Outcome const newBack = newDecode(padded);
      ASSERT_TRUE(newBack.good);
      ASSERT_EQ(newBack.counted, data) << length;
    }
  }
}

TEST(KivBase64, EveryGroupOfThreeBytesIsUndone) {
  // All values of two bytes at each place: every character meets every neighbour.
  for (unsigned i = 0; i < 65536; ++i)
    for (int const place : {0, 1}) {
      std::string data(3, '\x5a');
      data[static_cast<std::size_t>(place)] = static_cast<char>(i >> 8);
      data[static_cast<std::size_t>(place) + 1] = static_cast<char>(i);
      ASSERT_EQ(oldDecode(oldEncode(data).counted).counted, data);
    }
}

TEST(KivBase64, OldFormDecodesTQToOneByteAndRefusesTheEqualSign) {
  EXPECT_EQ(oldDecode("TQ").counted, "M");
  EXPECT_FALSE(oldDecode("TQ==").good);
}

TEST(KivBase64, NewFormDecodesTQWithEqualSignsToOneByte) {
  Outcome const outcome = newDecode("TQ==");
  EXPECT_TRUE(outcome.good);
  EXPECT_EQ(outcome.counted, "M");
}

TEST(KivBase64, NewFormLeavesTheTailOfATextWithoutEqualSignsOutOfItsLength) {
  Outcome const two = newDecode("QUJDRA");
  EXPECT_TRUE(two.good);
  EXPECT_EQ(two.counted, "ABC");
  EXPECT_EQ(two.written, "ABCD") << "decoded, but not counted";
  Outcome const three = newDecode("QUJDREU");
  EXPECT_EQ(three.counted, "ABC");
  EXPECT_EQ(three.written, "ABCDE");
  EXPECT_EQ(newDecode("TQ").counted, "");
}

TEST(KivBase64, NewFormCountsAByteLessForEachEqualSignTooMany) {
  struct Row {
    char const * text;
    char const * counted;
    char const * written;
  };
  for (auto const & row : std::initializer_list<Row>{{"QUJD=", "AB", "ABC"},
                                                     {"QUJD==", "A", "ABC"},
                                                     {"QUJD===", "", "ABC"},
                                                     {"QUJD====", "AB", "ABC"},
                                                     {"QUJDQUJD==", "ABCA", "ABCABC"},
                                                     {"TQ===", "", "M"},
                                                     {"QUJDRA=", "AB", "ABCD"},
                                                     {"QUJDREU==", "ABCD", "ABCDE"}}) {
    Outcome const outcome = newDecode(row.text);
    EXPECT_TRUE(outcome.good) << row.text;
    EXPECT_EQ(outcome.counted, row.counted) << row.text;
    EXPECT_EQ(outcome.written, row.written) << row.text << ": all is decoded and terminated behind its last byte";
  }
}

TEST(KivBase64, EachFormReadsTheOthersTextsOfWholeGroups) {
  EXPECT_EQ(newDecode(oldEncode("ABCDEF").counted).counted, "ABCDEF");
  EXPECT_EQ(oldDecode(newEncode("ABCDEF").counted).counted, "ABCDEF");
}

TEST(KivBase64, ASingleCharacterAfterTheLastGroupIsDropped) {
  for (std::string const tail : {"R", "=", "\xff"}) {
    EXPECT_TRUE(oldDecode("QUJD" + tail).good) << tail;
    EXPECT_EQ(oldDecode("QUJD" + tail).counted, "ABC") << tail;
  }
  EXPECT_EQ(newDecode("QUJDR").counted, "ABC");
}

TEST(KivBase64, EveryCharacterOutsideTheAlphabetIsRefusedAtEveryPlace) {
  for (std::size_t length : {4, 6, 7, 8})
    for (std::size_t place = 0; place < length; ++place)
      for (int c = 0; c < 256; ++c) {
        std::string text(length, 'A');
        text[place] = static_cast<char>(c);
        bool const known = c != 0 && std::strchr(kAlphabet, c) != nullptr;
        ASSERT_EQ(oldDecode(text).good, known) << length << " " << place << " " << c;
        bool const takenOff = c == '=' && place == length - 1;
        ASSERT_EQ(newDecode(text).good, known || takenOff) << length << " " << place << " " << c;
      }
}

TEST(KivBase64, ARefusedTextLeavesAnArrayToRelease) {
  char text[] = "QUJD!UJD";
  char * out = nullptr;
  unsigned long length = 0;
  EXPECT_FALSE(Kiv_OldBase64Decode(text, 8, out, length));
  ASSERT_NE(out, nullptr);
  EXPECT_EQ(length, 6u);
  EXPECT_EQ(std::memcmp(out, "ABC", 3), 0) << "what stood before the bad character is decoded";
  delete[] out;
}

TEST(KivBase64, TheEmptyTextAndEqualSignsAloneAreNoBytes) {
  for (std::string const text : {"", "=", "==", "===", "====", "========", "A=", "A===", "A====="}) {
    Outcome const outcome = newDecode(text);
    EXPECT_TRUE(outcome.good) << text;
    EXPECT_EQ(outcome.counted, "") << text;
  }
  EXPECT_EQ(oldDecode("").counted, "");
}

TEST(KivBase64, ANullTextOfSomeLengthIsRefused) {
  char * out = &*new char;
  std::unique_ptr<char> const kept(out);
  unsigned long length = 7;
  EXPECT_FALSE(Kiv_OldBase64Encode(nullptr, 3, out, length));
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(length, 0u);
  EXPECT_FALSE(Kiv_NewBase64Encode(nullptr, 3, out, length));
  EXPECT_FALSE(Kiv_OldBase64Decode(nullptr, 4, out, length));
  EXPECT_FALSE(Kiv_NewBase64Decode(nullptr, 4, out, length));
  EXPECT_EQ(out, nullptr);
}

TEST(KivBase64, AResultBeyond4GiBIsRefusedWithoutReadingTheData) {
  char data[] = "x";
  char * out = nullptr;
  unsigned long length = 7;
  EXPECT_FALSE(Kiv_OldBase64Encode(data, 0xffffffff, out, length));
  EXPECT_FALSE(Kiv_NewBase64Encode(data, 0xffffffff, out, length));
  EXPECT_FALSE(Kiv_NewBase64Encode(data, 0xbffffffe, out, length));
  EXPECT_EQ(out, nullptr);
}

TEST(KivBase64, LackOfMemoryGivesFalseANullTextAndNoLength) {
  std::string data(9000, 'A');
  char before = 'x';
  auto const check = [&](char const * name, auto const & operation) {
    char * out = &before;
    unsigned long length = 7;
    support::AllocationLimit const limit(5000);
    EXPECT_NO_THROW(EXPECT_FALSE(operation(data.data(), 9000, out, length)) << name) << name;
    EXPECT_EQ(out, nullptr) << name;
    EXPECT_EQ(length, 0u) << name;
  };
  check("old encoding", Kiv_OldBase64Encode);
  check("new encoding", Kiv_NewBase64Encode);
  check("old decoding", Kiv_OldBase64Decode);
  check("new decoding", Kiv_NewBase64Decode);
}

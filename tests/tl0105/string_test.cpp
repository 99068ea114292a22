#include "tools/string.hpp"

#include "support/memory/allocation.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>

using SV::String;

namespace {

std::string bytes(String const & text) { return {text.c_str(), static_cast<std::size_t>(text.Len())}; }

String withNul() { return String("ab\0cd", 5); }

} // namespace

TEST(String, BuiltFromNothingFromNullAndFromNoLengthIsTheEmptyString) {
  char const * const null = nullptr;
  for (String const & text : {String(), String(null), String(null, 5), String(""), String("text", 0),
                              String("text", -1), String("text", INT_MIN), String::ofLength(0), String::ofLength(-1)}) {
    EXPECT_EQ(text.block(), SV::GetEmptyStrData());
    EXPECT_EQ(text.Len(), 0);
    EXPECT_STREQ(text.c_str(), "");
  }
}

TEST(String, BuiltFromASingleNulCharacterIsTheEmptyString) {
  EXPECT_EQ(String('\0').block(), SV::GetEmptyStrData());
  EXPECT_EQ(bytes(String('x')), "x");
  EXPECT_EQ(bytes(String('\xFF')), "\xFF");
}

TEST(String, BuiltFromAPointerEndsAtTheNulAndFromALengthGoesPastIt) {
  EXPECT_EQ(bytes(String("ab\0cd")), "ab");
  EXPECT_EQ(bytes(withNul()), std::string("ab\0cd", 5));
  EXPECT_EQ(bytes(String("abcd", 2)), "ab");
  EXPECT_EQ(bytes(String("abcd", SV::STRING_LEN_TO_NUL)), "abcd");
}

TEST(String, TheTextEndsWithANul) {
  for (std::int32_t length : {1, 20, 21, 244, 245, 1000})
    EXPECT_EQ(String::ofLength(length).c_str()[length], '\0');
}

TEST(String, NumbersGiveDecimalText) {
  EXPECT_EQ(bytes(String(0)), "0");
  EXPECT_EQ(bytes(String(INT_MIN)), "-2147483648");
  EXPECT_EQ(bytes(String(INT_MAX)), "2147483647");
  EXPECT_EQ(bytes(String(LONG_MIN)), "-2147483648");
  EXPECT_EQ(bytes(String(LONG_MAX)), "2147483647");
  EXPECT_EQ(bytes(String(0ul)), "0");
  EXPECT_EQ(bytes(String(ULONG_MAX)), "4294967295");
  EXPECT_EQ(bytes(String(UINT_MAX)), "4294967295");
  EXPECT_EQ(bytes(String(static_cast<unsigned short>(0))), "0");
  EXPECT_EQ(bytes(String(static_cast<unsigned short>(USHRT_MAX))), "65535");
  EXPECT_EQ(bytes(String(LLONG_MIN)), "-9223372036854775808");
  EXPECT_EQ(bytes(String(LLONG_MAX)), "9223372036854775807");
  EXPECT_EQ(bytes(String(ULLONG_MAX)), "18446744073709551615");
  EXPECT_EQ(bytes(String(static_cast<short>(-1))), "-1");
}

TEST(String, ReadsANumberAsTheRuntimesAtofDoes) {
  for (char const * text : {"", "x", "12", "-0.5", "  7.25 and more", "1e3", "1e", "+4", "- 4", ".5", "0x10", "1e-320"})
    EXPECT_EQ(static_cast<double>(String(text)), std::atof(text)) << text;
  EXPECT_EQ(static_cast<double>(String("-0.5")), -0.5);
  EXPECT_EQ(static_cast<double>(String("1e999")), HUGE_VAL);
  EXPECT_EQ(static_cast<double>(String("12\0"
                                       "34",
                                       5)),
            12.0);
}

TEST(String, AssignsCharactersByLengthOrUpToTheNul) {
  String text("before");
  EXPECT_EQ(&text.Assign("ab\0cd", 5), &text);
  EXPECT_EQ(bytes(text), std::string("ab\0cd", 5));
  text.Assign("ab\0cd", 0x7FFFFFFF);
  EXPECT_EQ(bytes(text), "ab");
  text = "C text";
  EXPECT_EQ(bytes(text), "C text");
  char const * const null = nullptr;
  text = null;
  EXPECT_EQ(text.block(), SV::GetEmptyStrData());
}

TEST(String, CharactersAreReadByPosition) {
  String const text("abc");
  EXPECT_EQ(text.charAt(0), 'a');
  EXPECT_EQ(text.charAt(2), 'c');
  for (std::int32_t outside : {3, 4, -1, INT_MAX, INT_MIN})
    EXPECT_EQ(text.charAt(outside), '\0');
  EXPECT_EQ(String().charAt(0), '\0');
  EXPECT_EQ(text.lastChar(), 'c');
#ifndef KIVARA_DEBUG
  EXPECT_EQ(String().lastChar(), '\0');
#endif
}

TEST(String, AppendsStringsTextsAndCharacters) {
  String text;
  text += "one";
  text += ' ';
  text += String("two");
  EXPECT_EQ(bytes(text), "one two");
  char const * const null = nullptr;
  text += null;
  text += "";
  text += '\0';
  text += String();
  EXPECT_EQ(bytes(text), "one two");
  text += withNul();
  text += 'x';
  EXPECT_EQ(bytes(text), std::string("one twoab\0cdx", 13));
}

TEST(String, MayBeAppendedToItself) {
  String text("abc");
  text += text;
  EXPECT_EQ(bytes(text), "abcabc");
  std::string expected = "abcabc";
  while (text.Len() < 2000) {
    text += text;
    expected += expected;
    ASSERT_EQ(bytes(text), expected);
  }
}

TEST(String, PartsOfItsOwnTextMayBeAppendedAndAssigned) {
  String text("0123456789");
  text += text.c_str() + 5;
  EXPECT_EQ(bytes(text), "012345678956789");
  text += text.c_str() + 5; // into a new block
  EXPECT_EQ(bytes(text), "0123456789567895678956789");
  text += text.charAt(1);
  text.Assign(text.c_str() + 1, 4);
  EXPECT_EQ(bytes(text), "1234");
  text.Assign(text.c_str() + 1, 4); // in place: the NUL becomes the last character
  EXPECT_EQ(bytes(text), std::string("234\0", 4));
}

TEST(String, JoinsStringsAndTextsInEitherOrder) {
  String const a("left"), b("right"), none;
  char const * const null = nullptr;
  EXPECT_EQ(bytes(a + b), "leftright");
  EXPECT_EQ(bytes(a + "right"), "leftright");
  EXPECT_EQ(bytes("left" + b), "leftright");
  EXPECT_EQ(bytes(none + "right"), "right");
  EXPECT_EQ(bytes("left" + none), "left");
  EXPECT_EQ((none + none).block(), SV::GetEmptyStrData());
  EXPECT_EQ((none + "").block(), SV::GetEmptyStrData());
  EXPECT_EQ((null + none).block(), SV::GetEmptyStrData());
  EXPECT_EQ(bytes(a + withNul()), std::string("leftab\0cd", 9));
  EXPECT_EQ(bytes(withNul() + "x"), std::string("ab\0cdx", 6));
}

TEST(String, SubstringsAreClippedToWhatRemains) {
  struct {
    std::int32_t start, count;
    char const * expected;
  } const rows[] = {
      {0, 3, "abc"},    {1, 2, "bc"},     {2, 1, "c"},      {1, 99, "bcdef"}, {1, INT_MAX, "bcdef"},
      {5, 1, "f"},      {5, 2, "f"},      {6, 1, ""},       {7, 1, ""},       {INT_MAX, 1, ""},
      {0, 0, ""},       {3, 0, ""},       {0, -1, ""},      {-1, 2, ""},      {INT_MIN, 2, ""},
      {0, INT_MIN, ""}, {0, 6, "abcdef"}, {0, 7, "abcdef"},
  };
  String const text("abcdef");
  for (auto const & row : rows) {
    EXPECT_EQ(bytes(text.substr(row.start, row.count)), row.expected) << row.start << ", " << row.count;
    EXPECT_EQ(text.substr(row.start, row.count).block() == SV::GetEmptyStrData(), *row.expected == '\0');
  }
  EXPECT_EQ(bytes(text.substr(4)), "ef");
  EXPECT_EQ(bytes(withNul().substr(1, 3)), std::string("b\0c", 3));
  EXPECT_EQ(String().substr(0).block(), SV::GetEmptyStrData());
}

TEST(String, TokensAreThePiecesBetweenSeparators) {
  struct {
    char const * text;
    std::int32_t index;
    char const * expected;
  } const rows[] = {
      {"a;bc;d", 0, "a"}, {"a;bc;d", 1, "bc"},   {"a;bc;d", 2, "d"},    {"a;bc;d", 3, ""},  {"a;bc;d", INT_MAX, ""},
      {"a;bc", -1, ""},   {"a;bc", INT_MIN, ""}, {";a;;b;", 0, ""},     {";a;;b;", 1, "a"}, {";a;;b;", 2, ""},
      {";a;;b;", 3, "b"}, {";a;;b;", 4, ""},     {";a;;b;", 5, ""},     {"", 0, ""},        {"", 1, ""},
      {";", 0, ""},       {";", 1, ""},          {"whole", 0, "whole"}, {"whole", 1, ""},
  };
  for (auto const & row : rows)
    EXPECT_EQ(bytes(String(row.text).token(row.index, ';')), row.expected) << row.text << ", " << row.index;
  EXPECT_EQ(bytes(withNul().token(1, '\0')), "cd");
  EXPECT_EQ(bytes(withNul().token(0, 'd')), std::string("ab\0c", 4));
  EXPECT_EQ(bytes(String("a\xE4z").token(1, '\xE4')), "z");
}

TEST(String, ReplacesAllOfOneCharacter) {
  String text("a.b..c\0.", 8);
  EXPECT_EQ(&text.replaceAll('.', '/'), &text);
  EXPECT_EQ(bytes(text), std::string("a/b//c\0/", 8));
  text.replaceAll('\0', '-').replaceAll('x', 'y');
  EXPECT_EQ(bytes(text), "a/b//c-/");
  text.replaceAll('/', '\0');
  EXPECT_EQ(bytes(text), std::string("a\0b\0\0c-\0", 8));
  EXPECT_EQ(String().replaceAll('\0', 'x').block(), SV::GetEmptyStrData());
}

TEST(String, ErasesAllOfOneCharacter) {
  String text("..a.b..c\0.", 10);
  EXPECT_EQ(&text.EraseAllChars('.'), &text);
  EXPECT_EQ(bytes(text), std::string("abc\0", 4));
  EXPECT_EQ(bytes(text.EraseAllChars('\0')), "abc");
  EXPECT_EQ(bytes(text.EraseAllChars('x')), "abc");
  EXPECT_EQ(String("xxx").EraseAllChars('x').block(), SV::GetEmptyStrData());
  EXPECT_EQ(String().EraseAllChars('x').block(), SV::GetEmptyStrData());
}

TEST(String, IsLoweredAndRaisedInAllItsLength) {
  String text("aBc\0XyZ 1", 9);
  EXPECT_EQ(bytes(text.toLower()), std::string("abc\0xyz 1", 9));
  EXPECT_EQ(bytes(text.toUpper()), std::string("ABC\0XYZ 1", 9));
  EXPECT_EQ(String().toLower().block(), SV::GetEmptyStrData());
}

TEST(String, EqualMeansLengthAndBytes) {
  String const text("abc");
  EXPECT_TRUE(text == String("abc"));
  EXPECT_TRUE(text == text);
  EXPECT_TRUE(text == "abc");
  EXPECT_TRUE("abc" == text);
  EXPECT_TRUE(text != String("abd"));
  EXPECT_TRUE(text != "ab");
  EXPECT_TRUE(text != "abcd");
  EXPECT_TRUE(withNul() != String("ab"));
  EXPECT_TRUE(withNul() != String("ab\0cx", 5));
  EXPECT_TRUE(withNul() != "ab");
  EXPECT_TRUE(String() == "");
  EXPECT_TRUE(String() == static_cast<char const *>(nullptr));
  EXPECT_TRUE(text != static_cast<char const *>(nullptr));
}

TEST(String, TheOrderIsThatOfStrcmp) {
  std::string const common(40, 'x');
  std::string const nul(1, '\0');
  std::string const texts[] = {"",
                               "a",
                               "A",
                               "b",
                               "ab",
                               "abc",
                               "x",
                               "\x7F",
                               "\x80",
                               "\xFF",
                               "a" + nul + "b",
                               "a" + nul + "c",
                               common,
                               common + "a",
                               common + "\xE4",
                               common + "ab",
                               common + nul + common,
                               common + nul + "y",
                               std::string(16, 'x'),
                               std::string(17, 'x'),
                               std::string(15, 'x') + "a",
                               std::string(16, '\0') + "a",
                               std::string(16, '\0') + "b"};
  for (std::string const & a : texts)
    for (std::string const & b : texts) {
      String const left(a.data(), static_cast<std::int32_t>(a.size()));
      String const right(b.data(), static_cast<std::int32_t>(b.size()));
      EXPECT_EQ(left < right, SV::h_strcmp(a.c_str(), b.c_str()) < 0) << a << " < " << b;
      EXPECT_EQ(std::less<String>()(left, right), left < right);
    }
}

TEST(String, AFailedAllocationLeavesEverythingAsItWas) {
  String const longText(std::string(3000, 'x').c_str());
  String text("text");
  auto const * const block = text.block();
  {
    support::AllocationLimit const limit(1000);
    EXPECT_THROW(text += longText, std::bad_alloc);
    EXPECT_THROW(text += longText.c_str(), std::bad_alloc);
    EXPECT_THROW(text.Assign(longText.c_str()), std::bad_alloc);
    EXPECT_THROW(text = longText + text, std::bad_alloc);
    EXPECT_THROW(text = longText.substr(1), std::bad_alloc);
    EXPECT_THROW(SV::ConvertStringToUTF8String(longText, text), std::bad_alloc);
    String shared(longText);
    EXPECT_THROW(shared.makeUnique(), std::bad_alloc);
    EXPECT_THROW(shared.replaceAll('x', 'y'), std::bad_alloc);
    EXPECT_EQ(shared.block(), longText.block());
  }
  EXPECT_EQ(text.block(), block);
  EXPECT_EQ(bytes(text), "text");
  EXPECT_EQ(longText.block()->nRefCount, 0u);
}

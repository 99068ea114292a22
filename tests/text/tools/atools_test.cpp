#include "atools.hpp"

#include "support/data/random.hpp"
#include "support/imports/import_hook.hpp"
#include "support/memory/allocation.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <utility>

using SV::String;

namespace {

// Characters of a text.

TEST(CharReplace, ReplacesEachInPlace) {
  char text[] = "a.b..c";
  kiv_charreplace(text, '.', ',');
  EXPECT_STREQ(text, "a,b,,c");
  kiv_charreplace(text, 'x', 'y');
  EXPECT_STREQ(text, "a,b,,c");
}

TEST(CharReplace, LeavesNullAlone) { kiv_charreplace(nullptr, 'a', 'b'); }

TEST(CharReplace, OfEqualCharactersDoesNotTouchTheText) {
  char const * const text = "in memory for reading only";
  kiv_charreplace(const_cast<char *>(text), 'o', 'o');
  EXPECT_STREQ(text, "in memory for reading only");
}

TEST(CharReplace, CanEndTheText) {
  char text[] = "a.b";
  kiv_charreplace(text, '.', '\0');
  EXPECT_STREQ(text, "a");
}

TEST(CharReplace, NeverReplacesTheNUL) {
  char text[] = "a";
  kiv_charreplace(text, '\0', 'x');
  EXPECT_EQ(text[1], '\0');
}

TEST(CharCount, CountsAndIs0ForNull) {
  EXPECT_EQ(kiv_charcount("a.b..c", '.'), 3);
  EXPECT_EQ(kiv_charcount("a.b..c", 'x'), 0);
  EXPECT_EQ(kiv_charcount("", '.'), 0);
  EXPECT_EQ(kiv_charcount("abc", '\0'), 0);
  EXPECT_EQ(kiv_charcount(nullptr, '.'), 0);
}

String until(char const * text, char stop) {
  String out("before");
  kiv_getuntil(text, stop, out);
  return out;
}

TEST(GetUntil, GivesTheTextWithTheFirstStop) {
  EXPECT_STREQ(until("a=b=c", '=').c_str(), "a=");
  EXPECT_STREQ(until("=", '=').c_str(), "=");
}

TEST(GetUntil, WithoutAStopGivesAllOfTheText) {
  EXPECT_STREQ(until("abc", '=').c_str(), "abc");
  EXPECT_EQ(until("abc", '\0').Len(), 3);
  EXPECT_EQ(until("", '=').Len(), 0);
  EXPECT_EQ(until(nullptr, '=').Len(), 0);
}

TEST(GetUntil, CanWriteIntoTheTextItself) {
  String text("a=b");
  kiv_getuntil(text.c_str(), '=', text);
  EXPECT_STREQ(text.c_str(), "a=");
}

// Names and terms.

struct Row {
  char const * text;
  char const * result;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << '"' << row.text << '"'; }

class NextName : public testing::TestWithParam<Row> {};
TEST_P(NextName, CountsOn) {
  String name(GetParam().text);
  Kiv_MakeNextName(name);
  EXPECT_STREQ(name.c_str(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Names, NextName,
                         testing::Values(Row{"Model", "Model (2)"}, Row{"Model (2)", "Model (3)"},
                                         Row{"Model (x)", "Model (1)"}, Row{"Model (9)", "Model (10)"},
                                         Row{"Model ()", "Model (1)"}, Row{"Model (2) ", "Model (2)  (2)"},
                                         Row{"Model(-1)", "Model(0)"}, Row{"(7)", "(8)"}, Row{"a (b) (4)", "a (b) (5)"},
                                         Row{"a (b (4))", "a (b (5)"}, Row{"a (12x)", "a (13)"}, Row{"", " (2)"},
                                         Row{"a (2147483647)", "a (2147483648)"}));

TEST(NextNameWithoutOpeningParenthesis, TakesTheClosingOneForAPartOfTheName) {
  support::GuardPages const guard;
  for (auto const & row : {Row{")", ") (2)"}, Row{"Model 2)", "Model 2) (2)"}}) {
    String name(row.text);
    Kiv_MakeNextName(name);
    EXPECT_STREQ(name.c_str(), row.result);
  }
}

TEST(NextNameOfACopy, LeavesTheOriginal) {
  String const name("Model (2)");
  String next(name);
  Kiv_MakeNextName(next);
  EXPECT_EQ(name, "Model (2)");
}

class Surrounded : public testing::TestWithParam<Row> {};
TEST_P(Surrounded, ByOnePairAroundAllOfIt) {
  EXPECT_STREQ(Kiv_EnsureSurroundingParentheses(GetParam().text).c_str(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Terms, Surrounded,
                         testing::Values(Row{"(a)", "(a)"}, Row{"(a) or (b)", "((a) or (b))"}, Row{"a", "(a)"},
                                         Row{"((a) or (b))", "((a) or (b))"},
                                         Row{" \t\r\n(a) \t\r\n", " \t\r\n(a) \t\r\n"}, Row{"", "()"}, Row{" ", "( )"},
                                         Row{"()", "()"}, Row{"(", "(()"}, Row{")", "())"}, Row{"(a", "((a)"},
                                         Row{"a)", "(a))"}, Row{")(", "()()"}, Row{"((a)", "((a)"},
                                         Row{"(a))", "((a)))"}, Row{"(a)b", "((a)b)"}, Row{"a(b)", "(a(b))"},
                                         Row{"\v(a)", "(\v(a))"}));

TEST(SurroundedText, IsSharedWhenItComesBackUnchanged) {
  String const text("(a)");
  EXPECT_EQ(Kiv_EnsureSurroundingParentheses(text).block(), text.block());
}

// Bad input.

TEST(TextHelpers, OfRandomBytesStayWithinThem) {
  support::GuardPages const guard;
  support::Random random(5);
  for (std::size_t i = 0; i < support::times(3000); ++i) {
    std::size_t const length = random() % 24;
    auto const text = std::make_unique<char[]>(length + 1); // ends at a page without access
    bool const any = random() % 2 == 0;
    for (std::size_t at = 0; at < length; ++at)
      text[at] = any ? static_cast<char>(1 + random() % 255) : "C1:\\/.,+-()N"[random() % 12];
    for (auto const check :
         {Kiv_Valid_Integer, Kiv_Valid_Double, Kiv_Valid_Filename, Kiv_Valid_DBFilename, Kiv_FileIsInUse})
      check(text.get());
    kiv_atof(text.get());
    kiv_lexcmp(text.get(), "C1");
    kiv_charreplace(text.get(), '/', ':');
    String name(text.get());
    Kiv_MakeNextName(name);
    EXPECT_EQ(name.lastChar(), ')');
    EXPECT_GE(Kiv_EnsureSurroundingParentheses(text.get()).Len(), 2);
    Kiv_GetVirtualKeyFromString(text.get());
  }
}

// Characters of XML.

TEST(XMLChar, WithoutTheCodePageExcludesControlCharacters) {
  for (int byte = 0; byte < 256; ++byte) {
    bool const wanted = byte >= 32 || byte == 0 || byte == 9 || byte == 10 || byte == 13;
    EXPECT_EQ(Kiv_IsValidXMLChar(static_cast<char>(byte), false, false), wanted) << byte;
    EXPECT_EQ(Kiv_IsValidXMLChar(static_cast<char>(byte), true, false), wanted) << byte;
  }
}

bool hasCharacter(int byte) {
  char const c = static_cast<char>(byte);
  wchar_t character = 0;
  return MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &c, 1, &character, 1) == 1 && character >= 0x100;
}

TEST(XMLChar, WithTheCodePageExcludesBytesWithoutACharacter) {
  for (int byte = 0; byte < 256; ++byte) {
    bool const wanted = byte < 127 || byte > 159 || hasCharacter(byte);
    EXPECT_EQ(Kiv_IsValidXMLChar(static_cast<char>(byte), false, true), wanted) << byte;
  }
  EXPECT_FALSE(Kiv_IsValidXMLChar('\x7F', true, true));
}

TEST(XMLChar, OfTheWesternCodePageHasItsHoles) {
  if (GetACP() != 1252)
    GTEST_SKIP() << "another code page";
  for (char const c : {'\x81', '\x8D', '\x8F', '\x90', '\x9D'})
    EXPECT_FALSE(Kiv_IsValidXMLChar(c, false, true)) << static_cast<int>(c);
  for (char const c : {'\x80', '\x82', '\x99', '\x9F'})
    EXPECT_TRUE(Kiv_IsValidXMLChar(c, false, true)) << static_cast<int>(c);
}

// Most code pages assign a character to the byte 128, so the test simulates the answer of the system.
wchar_t characterTold = 0;
int countTold = 0;
int WINAPI tellCharacter(UINT page, DWORD flags, char const *, int, wchar_t * character, int) {
  EXPECT_EQ(page, static_cast<UINT>(CP_ACP));
  EXPECT_EQ(flags, static_cast<DWORD>(MB_ERR_INVALID_CHARS));
  *character = characterTold;
  return countTold;
}

class XMLCharOfACodePage : public testing::Test {
protected:
  XMLCharOfACodePage() {
    support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                            {{"MultiByteToWideChar", reinterpret_cast<void *>(tellCharacter)}});
  }
};

TEST_F(XMLCharOfACodePage, WithoutAEuroHasItWhenItIsAllowed) {
  countTold = 0;
  EXPECT_FALSE(Kiv_IsValidXMLChar('\x80', false, true));
  EXPECT_TRUE(Kiv_IsValidXMLChar('\x80', true, true));
  EXPECT_FALSE(Kiv_IsValidXMLChar('\x81', true, true));
}

TEST_F(XMLCharOfACodePage, IsThereWhenTheHighByteOfItsCharacterIsNot0) {
  countTold = 1;
  for (auto const & [character, wanted] : {std::pair{L'\x80', false}, {L'\xFF', false}, {L'\x100', true}}) {
    characterTold = character;
    for (int const byte : {127, 128, 159})
      EXPECT_EQ(Kiv_IsValidXMLChar(static_cast<char>(byte), false, true), wanted) << byte;
    for (int const byte : {126, 160})
      EXPECT_TRUE(Kiv_IsValidXMLChar(static_cast<char>(byte), false, true)) << byte;
  }
}

} // namespace

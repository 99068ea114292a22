#include "tools/ctext.hpp"

#include "support/memory/allocation.hpp"
#include "tools/string.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <clocale>
#include <cstdlib>
#include <string>
#include <vector>

using namespace SV;

namespace {

int sign(int number) { return (number > 0) - (number < 0); }

} // namespace

TEST(CText, LengthIsCountedToTheNul) {
  EXPECT_EQ(h_strlen("text"), 4);
  EXPECT_EQ(h_strlen(""), 0);
  EXPECT_EQ(h_strlen(L"w\x20AC"), 2);
  EXPECT_EQ(h_strlen(L""), 0);
}

TEST(CText, LengthOfNullIs0) {
  EXPECT_EQ(h_strlen(static_cast<char const *>(nullptr)), 0);
  EXPECT_EQ(h_strlen(static_cast<wchar_t const *>(nullptr)), 0);
}

TEST(CText, LengthIsCountedAtEachAlignmentAndNothingAfterTheNulIsRead) {
  support::GuardPages const guard;
  for (std::size_t before = 0; before < 16; ++before)
    for (std::size_t length = 0; length <= 200; ++length) {
      std::vector<char> block(before + length + 1, '\0'); // these are no end of a text that begins behind them
      std::fill_n(block.begin() + static_cast<std::ptrdiff_t>(before), length, '\x80');
      ASSERT_EQ(h_strlen(block.data() + before), static_cast<std::int32_t>(length)) << before;
    }
}

TEST(CText, LengthIsCountedFromTheFirstToTheLastByteOfAPage) {
  support::GuardPages const guard;
  std::vector<char> page(4096, 'x');
  page.back() = '\0';
  for (std::int32_t start = 0; start < 4096; ++start)
    ASSERT_EQ(h_strlen(page.data() + start), 4095 - start);
}

TEST(CText, ComparesByBytesWithThoseAbove127Last) {
  struct Row {
    char const *a, *b;
    int order;
  } const rows[] = {{"a", "b", -1},   {"b", "a", 1},     {"a", "a", 0},        {"a", "aa", -1},
                    {"A", "a", -1},   {"z", "\xE4", -1}, {"\xFF", "a", 1},     {"\x80", "\xFF", -1},
                    {"", "", 0},      {"", "a", -1},     {nullptr, "a", -1},   {"a", nullptr, 1},
                    {nullptr, "", 0}, {"", nullptr, 0},  {nullptr, nullptr, 0}};
  for (Row const & row : rows)
    EXPECT_EQ(sign(h_strcmp(row.a, row.b)), row.order)
        << (row.a ? row.a : "(null)") << ' ' << (row.b ? row.b : "(null)");
}

TEST(CText, ComparesWithoutCaseAsTheRuntimeDoes) {
  struct Row {
    char const *a, *b;
    int order;
  } const rows[] = {{"Text", "tEXT", 0}, {"a", "B", -1},    {"B", "a", 1},    {"[", "a", -1},       {"a", "ab", -1},
                    {nullptr, "A", -1},  {"A", nullptr, 1}, {nullptr, "", 0}, {nullptr, nullptr, 0}};
  EXPECT_EQ(h_stricmp("\xFF", "a"), _stricmp("\xFF", "a"));
  for (Row const & row : rows)
    EXPECT_EQ(sign(h_stricmp(row.a, row.b)), row.order)
        << (row.a ? row.a : "(null)") << ' ' << (row.b ? row.b : "(null)");
}

TEST(CText, FindsTheFirstCharacter) {
  char text[] = "abcb\xE4";
  EXPECT_EQ(h_strchr(text, 'b'), text + 1);
  EXPECT_EQ(h_strchr(text, '\xE4'), text + 4);
  EXPECT_EQ(h_strchr(text, 'x'), nullptr);
  EXPECT_EQ(h_strchr(text, '\0'), text + 5);
  EXPECT_EQ(h_strchr(static_cast<char const *>(text), 'c'), text + 2);
}

TEST(CText, NothingIsFoundInNull) {
  EXPECT_EQ(h_strchr(static_cast<char const *>(nullptr), 'a'), nullptr);
  EXPECT_EQ(h_strchr(static_cast<char *>(nullptr), '\0'), nullptr);
  EXPECT_EQ(h_strstr(static_cast<char const *>(nullptr), "a"), nullptr);
  EXPECT_EQ(h_strstr(static_cast<char *>(nullptr), ""), nullptr);
  EXPECT_EQ(h_strstr(static_cast<char *>(nullptr), nullptr), nullptr);
}

TEST(CText, FindsTheFirstPart) {
  char text[] = "one two two";
  EXPECT_EQ(h_strstr(text, "two"), text + 4);
  EXPECT_EQ(h_strstr(text, "three"), nullptr);
  EXPECT_EQ(h_strstr(static_cast<char const *>(text), "ne"), text + 1);
}

TEST(CText, AnEmptyOrNullPartIsFoundAtTheStart) {
  char text[] = "text";
  EXPECT_EQ(h_strstr(text, ""), text);
  EXPECT_EQ(h_strstr(text, nullptr), text);
}

TEST(CText, CaseChangesInPlaceForTheLengthGiven) {
  char text[] = "AbC-Def";
  EXPECT_EQ(h_strlwr(text, 3), text);
  EXPECT_STREQ(text, "abc-Def");
  EXPECT_EQ(h_strupr(text, 5), text);
  EXPECT_STREQ(text, "ABC-Def");
  h_strupr(text, 7);
  EXPECT_STREQ(text, "ABC-DEF");
}

TEST(CText, CaseChangesReachAfterANul) {
  char text[] = "AB\0CD";
  h_strlwr(text, 5);
  EXPECT_EQ(std::string(text, 5), std::string("ab\0cd", 5));
}

TEST(CText, NoLengthAndNoTextChangeNothing) {
  char text[] = "Text";
  EXPECT_EQ(h_strlwr(text, 0), text);
  EXPECT_EQ(h_strupr(text, -1), text);
  EXPECT_EQ(h_strupr(text, INT_MIN), text);
  EXPECT_STREQ(text, "Text");
  EXPECT_EQ(h_strlwr(nullptr, 5), nullptr);
  EXPECT_EQ(h_strupr(nullptr, 5), nullptr);
}

TEST(CText, BytesAbove127KeepTheirCaseInTheCLocale) {
  std::string text;
  for (int byte = 128; byte < 256; ++byte)
    text += static_cast<char>(byte);
  std::string changed = text;
  h_strlwr(changed.data(), 128);
  h_strupr(changed.data(), 128);
  EXPECT_EQ(changed, text);
}

TEST(CText, BytesAbove127FollowTheRuntimesLocale) {
  char const * const locale = std::setlocale(LC_CTYPE, ".1252");
  ASSERT_NE(locale, nullptr);
  char text[] = "\xC4\xD6\xDC\xDF\xE9";
  h_strlwr(text, 5);
  EXPECT_STREQ(text, "\xE4\xF6\xFC\xDF\xE9");
  h_strupr(text, 5);
  EXPECT_STREQ(text, "\xC4\xD6\xDC\xDF\xC9");
  EXPECT_EQ(h_stricmp("\xC4", "\xE4"), 0);
  std::setlocale(LC_CTYPE, "C");
}

TEST(CText, NumbersStandAtTheStartAfterWhiteSpace) {
  struct Row {
    char const * text;
    long number;
  } const rows[] = {{"0", 0},
                    {"42", 42},
                    {"-42", -42},
                    {"+7", 7},
                    {"  \t\r\n\v\f12", 12},
                    {"12abc", 12},
                    {"abc", 0},
                    {"", 0},
                    {"-", 0},
                    {"- 5", 0},
                    {"0x10", 0},
                    {"007", 7},
                    {"1.9", 1},
                    {"\xA0"
                     "5",
                     0},
                    {"\xFF\xFE", 0},
                    {nullptr, 0},
                    {"2147483647", LONG_MAX},
                    {"-2147483648", LONG_MIN}};
  for (Row const & row : rows) {
    EXPECT_EQ(h_atoi(row.text), row.number) << (row.text ? row.text : "(null)");
    EXPECT_EQ(h_atol(row.text), row.number) << (row.text ? row.text : "(null)");
  }
}

TEST(CText, UnsignedNumbersReachTheLargest) {
  struct Row {
    char const * text;
    unsigned long number;
  } const rows[] = {
      {"0", 0}, {" 42x", 42}, {"4294967295", ULONG_MAX}, {"2147483648", 2147483648ul}, {"-1", ULONG_MAX}, {"x", 0},
      {"", 0},  {nullptr, 0}};
  for (Row const & row : rows)
    EXPECT_EQ(h_atoul(row.text), row.number) << (row.text ? row.text : "(null)");
}

TEST(CText, NumbersOutOfRangeAreThoseOfTheRuntime) {
  std::vector<std::string> const texts = {"2147483648",           "-2147483649",           "4294967296",
                                          "99999999999999999999", "-99999999999999999999", std::string(5000, '9')};
  for (std::string const & text : texts) {
    EXPECT_EQ(h_atoi(text.c_str()), std::atoi(text.c_str())) << text;
    EXPECT_EQ(h_atol(text.c_str()), std::atol(text.c_str())) << text;
    EXPECT_EQ(h_atoul(text.c_str()), std::strtoul(text.c_str(), nullptr, 10)) << text;
  }
}

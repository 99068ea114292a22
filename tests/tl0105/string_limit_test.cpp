// Texts at STRING_MAXLEN: blocks of 2 GiB, or of 4 GiB for WString. Memory that is never written to costs nothing, so the
// texts to begin with are fresh zeros where the characters don't matter.

#include "tools/string.hpp"
#include "tools/winapi.hpp"
#include "tools/wstring.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <new>

using SV::String;
using SV::STRING_MAXLEN;
using SV::WString;

namespace {

/// Fresh pages, all zeros.
class Pages {
public:
  explicit Pages(std::size_t bytes)
      : data_(static_cast<char *>(VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE))) {
    if (data_ == nullptr)
      throw std::bad_alloc();
  }
  ~Pages() { VirtualFree(data_, 0, MEM_RELEASE); }
  Pages(Pages const &) = delete;
  Pages & operator=(Pages const &) = delete;
  char * data() { return data_; }

private:
  char * data_;
};

constexpr std::size_t kMost = 0x7FFFFFF3;

} // namespace

TEST(StringLimit, IsTwoGiBLessThirteen) { EXPECT_EQ(STRING_MAXLEN, 0x7FFFFFF3); }

TEST(StringLimit, AppendsStopThereAndReportNothing) {
  testing::internal::CaptureStderr();
  String text = String::ofLength(STRING_MAXLEN - 3);
  text += "abcdef";
  ASSERT_EQ(text.Len(), STRING_MAXLEN);
  EXPECT_STREQ(text.c_str() + STRING_MAXLEN - 3, "abc");
  auto const * const block = text.block();
  text += "x";
  text += 'x';
  text += String("x");
  text += text;
  EXPECT_EQ(text.block(), block);
  EXPECT_EQ(text.Len(), STRING_MAXLEN);
  EXPECT_STREQ(text.c_str() + STRING_MAXLEN - 3, "abc");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(StringLimit, AppendingHalfOfItToItselfStopsThere) {
  String text = String::ofLength(0x40000000);
  text.writable()[0] = 'a';
  text += text;
  ASSERT_EQ(text.Len(), STRING_MAXLEN);
  EXPECT_EQ(text.charAt(0x40000000), 'a');
  EXPECT_EQ(text.c_str()[STRING_MAXLEN], '\0');
}

TEST(StringLimit, JoiningStopsThere) {
  String const nearly = String::ofLength(STRING_MAXLEN - 2);
  {
    String const joined = nearly + String("abc");
    ASSERT_EQ(joined.Len(), STRING_MAXLEN);
    EXPECT_STREQ(joined.c_str() + STRING_MAXLEN - 2, "ab");
  }
  {
    String const joined = nearly + "abc";
    ASSERT_EQ(joined.Len(), STRING_MAXLEN);
    EXPECT_STREQ(joined.c_str() + STRING_MAXLEN - 2, "ab");
  }
  String const joined = "abc" + nearly;
  ASSERT_EQ(joined.Len(), STRING_MAXLEN);
  EXPECT_EQ(joined.substr(0, 3), "abc");
}

TEST(StringLimit, LongerCTextsAreCut) {
  Pages source(kMost + 101);
  std::memset(source.data(), 'x', kMost + 100);
  {
    String const text(source.data());
    ASSERT_EQ(text.Len(), STRING_MAXLEN);
    EXPECT_STREQ(text.c_str() + STRING_MAXLEN - 2, "xx");
  }
  String text("ab");
  text += source.data();
  ASSERT_EQ(text.Len(), STRING_MAXLEN);
  EXPECT_STREQ(text.c_str() + STRING_MAXLEN - 2, "xx");
  EXPECT_EQ(text.substr(0, 3), "abx");
}

TEST(StringLimit, LongerLengthsAreCut) {
  Pages source(kMost + 101);
  String text(source.data(), 0x7FFFFFFE);
  EXPECT_EQ(text.Len(), STRING_MAXLEN);
  auto const * const block = text.block();
  text.Assign(source.data(), 0x7FFFFFF4);
  EXPECT_EQ(text.block(), block) << "the same length, in place";
  EXPECT_EQ(String::ofLength(0x7FFFFFFF).Len(), STRING_MAXLEN);
}

TEST(StringLimit, SubstringsReachTheEnd) {
  String const text = String::ofLength(STRING_MAXLEN);
  EXPECT_EQ(text.substr(0).block(), text.block());
  EXPECT_EQ(text.substr(STRING_MAXLEN - 1, 0x7FFFFFFF).Len(), 1);
  EXPECT_EQ(text.substr(STRING_MAXLEN, 0x7FFFFFFF).Len(), 0);
  EXPECT_EQ(text.charAt(STRING_MAXLEN - 1), '\0');
}

// In code page 1252 the euro sign is 0x80, and in UTF-8 it has three bytes: of those texts, STRING_MAXLEN holds a third.
TEST(StringLimit, TheUtf8FormStopsAfterTheLastCharacterThatFits) {
  if (GetACP() != 1252)
    GTEST_SKIP() << "the texts are those of code page 1252";
  constexpr std::int32_t kFit = STRING_MAXLEN / 3;
  String euros = String::ofLength(kFit + 1);
  std::memset(euros.writable(), '\x80', kFit + 1);
  String utf8("before");
  ASSERT_NE(SV::ConvertStringToUTF8String(euros, utf8), 0);
  ASSERT_EQ(utf8.Len(), kFit * 3) << "one more byte would fit";
  EXPECT_STREQ(utf8.c_str() + utf8.Len() - 6, "\xE2\x82\xAC\xE2\x82\xAC");
  EXPECT_EQ(utf8.substr(0, 3), "\xE2\x82\xAC");
}

TEST(WStringLimit, AppendsStopThere) {
  WString text = WString::ofLength(STRING_MAXLEN - 2);
  text += L"abc";
  ASSERT_EQ(text.Len(), STRING_MAXLEN);
  EXPECT_STREQ(text.c_str() + STRING_MAXLEN - 2, L"ab");
  auto const * const block = text.block();
  text += L'x';
  text += text;
  EXPECT_EQ(text.block(), block);
}

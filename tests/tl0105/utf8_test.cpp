#include "tools/string.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <string>

using SV::ConvertStringToUTF8String;
using SV::String;

namespace {

std::string bytes(String const & text) { return {text.c_str(), static_cast<std::size_t>(text.Len())}; }

/// What a UTF-8 text is in the system's code page.
std::string backInCodePage(String const & utf8) {
  std::wstring wide(static_cast<std::size_t>(utf8.Len()), L'\0');
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.c_str(), utf8.Len(), wide.data(), utf8.Len())));
  std::string narrow(wide.size() * 2, '\0');
  narrow.resize(
      static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()), narrow.data(),
                                                   static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow;
}

} // namespace

TEST(Utf8, UmlautsGetTwoBytesAndTheEuroThree) {
  if (GetACP() != 1252)
    GTEST_SKIP() << "the texts are those of code page 1252";
  String utf8;
  EXPECT_NE(ConvertStringToUTF8String(String("\xC4\xD6\xDC \xE4\xF6\xFC \xDF \x80"), utf8), 0);
  EXPECT_EQ(bytes(utf8), "\xC3\x84\xC3\x96\xC3\x9C \xC3\xA4\xC3\xB6\xC3\xBC \xC3\x9F \xE2\x82\xAC");
}

TEST(Utf8, AsciiStaysAsItIs) {
  String utf8("before");
  EXPECT_NE(ConvertStringToUTF8String(String("plain text\r\n\t%s"), utf8), 0);
  EXPECT_EQ(bytes(utf8), "plain text\r\n\t%s");
}

TEST(Utf8, EveryByteOfTheCodePageComesBack) {
  if (GetACP() != 1252)
    GTEST_SKIP() << "the texts are those of code page 1252";
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);
  String utf8;
  ASSERT_NE(ConvertStringToUTF8String(String(all.data(), 256), utf8), 0);
  EXPECT_EQ(backInCodePage(utf8), all);
}

TEST(Utf8, NulCharactersAreConvertedToo) {
  String utf8;
  ASSERT_NE(ConvertStringToUTF8String(String("a\0\xE4", 3), utf8), 0);
  EXPECT_EQ(utf8.Len(), 4);
  EXPECT_EQ(utf8.charAt(1), '\0');
}

TEST(Utf8, TheEmptyTextGivesTheEmptyBlock) {
  String utf8("before");
  EXPECT_NE(ConvertStringToUTF8String(String(), utf8), 0);
  EXPECT_EQ(utf8.block(), SV::GetEmptyStrData());
}

TEST(Utf8, TheTargetMayBeTheSourceItself) {
  String text("\xE4");
  EXPECT_NE(ConvertStringToUTF8String(text, text), 0);
  EXPECT_EQ(bytes(text), "\xC3\xA4");
}

TEST(Utf8, OtherOwnersOfTheTargetKeepTheirText) {
  String utf8("before");
  String const other(utf8);
  EXPECT_NE(ConvertStringToUTF8String(String("after"), utf8), 0);
  EXPECT_EQ(bytes(other), "before");
}

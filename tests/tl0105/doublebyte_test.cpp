// Runs with LC_ALL=ja_JP.UTF-8: code page 932, where the second byte of a character may be that of '\\' or a letter.
#include "tools/dir.hpp"
#include "tools/international.hpp"

#include "systemanswers.hpp"
#include "testfiles.hpp"

#include <gtest/gtest.h>

#include <string>

using SV::Date;
using SV::DirEntry;
using SV::International;
using SV::String;
using testfiles::entry;

namespace {

/// U+8868: its second byte is 0x5C. U+30A2: its second byte is that of 'A'.
#define KV_TABLE "\x95\x5C"
#define KV_A "\x83\x41"

class DoubleByte : public testfiles::InOwnFolder {
protected:
  void SetUp() override {
    InOwnFolder::SetUp();
    if (GetACP() != 932)
      GTEST_SKIP() << "the system does not take the code page from LC_ALL";
  }
};

bool isOnDisk(char const * name) {
  testfiles::write(name);
  return GetFileAttributesA(name) != INVALID_FILE_ATTRIBUTES;
}

constexpr char const * kNoSuchNames = "Wine writes such file names only where the locale of LC_ALL is generated";

} // namespace

TEST_F(DoubleByte, ASecondByteIsNoSeparator) {
  DirEntry const path = entry("C:/" KV_TABLE "dir/" KV_TABLE ".txt");
  EXPECT_STREQ(path.GetName().c_str(), KV_TABLE ".txt");
  EXPECT_STREQ(path.GetBase().c_str(), KV_TABLE);
  EXPECT_STREQ(path.GetPath().GetFull().c_str(), "C:\\" KV_TABLE "dir");
  EXPECT_STREQ(entry("C:\\" KV_TABLE).GetFull().c_str(), "C:\\" KV_TABLE);
  EXPECT_STREQ(entry("C:\\" KV_TABLE).GetFull(SV::FSYS_STYLE_HOST, 1).c_str(), "C:\\" KV_TABLE "\\");
}

TEST_F(DoubleByte, FilesAreFoundMovedAndDeleted) {
  if (!isOnDisk(KV_TABLE ".txt"))
    GTEST_SKIP() << kNoSuchNames;
  testfiles::write("x.txt");
  SV::Dir const dir(entry("?.txt"), SV::FSYS_KIND_FILE);
  EXPECT_EQ(dir.Count(), 2u);
  SV::Dir const named(entry(KV_TABLE "*"), SV::FSYS_KIND_FILE);
  ASSERT_EQ(named.Count(), 1u);
  EXPECT_STREQ(named[0].GetName().c_str(), KV_TABLE ".txt");
  EXPECT_EQ(named[0].MoveTo(entry(KV_A)), 0u);
  EXPECT_EQ(entry(KV_A).Kill(), 0u);
}

TEST_F(DoubleByte, PatternsMatchWholeCharacters) {
  if (!isOnDisk(KV_A))
    GTEST_SKIP() << kNoSuchNames;
  EXPECT_EQ(SV::Dir(entry("*A"), SV::FSYS_KIND_FILE).Count(), 0u);
  EXPECT_EQ(SV::Dir(entry("*" KV_A), SV::FSYS_KIND_FILE).Count(), 1u);
  EXPECT_EQ(SV::Dir(entry("??"), SV::FSYS_KIND_FILE).Count(), 0u);
}

TEST_F(DoubleByte, LongDatesAreWrittenInTheCodePage) {
  Date const date(9, 12, 2026);
  EXPECT_EQ(International().GetLongDate(date).c_str(), systemanswers::date(LOCALE_USER_DEFAULT, date, DATE_LONGDATE));
}

TEST_F(DoubleByte, ConvertsToUtf8) {
  String utf8;
  EXPECT_NE(SV::ConvertStringToUTF8String(String(KV_TABLE KV_A "x"), utf8), 0);
  EXPECT_STREQ(utf8.c_str(), "\xE8\xA1\xA8\xE3\x82\xA2x");
}

TEST_F(DoubleByte, AFailedConversionLeavesTheTarget) {
  for (char const * broken : {"\x95", "abc\x95", "\x95\x01"}) {
    String utf8("before");
    EXPECT_EQ(SV::ConvertStringToUTF8String(String(broken), utf8), 0);
    EXPECT_STREQ(utf8.c_str(), "before");
  }
}

TEST_F(DoubleByte, ALeadByteAtTheEndIsReadNoFurther) {
  DirEntry const path = entry("C:\\dir\\x\x95");
  EXPECT_STREQ(path.GetName().c_str(), "x\x95");
  EXPECT_STREQ(path.GetBase().c_str(), "x\x95");
  EXPECT_EQ(SV::Dir(entry("*\x95"), SV::FSYS_KIND_FILE).Count(), 0u);
}

#include "locale/language_run.hpp"
#include "support/data/files.hpp"
#include "support/data/random.hpp"
#include "support/data/system_text.hpp"
#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

/// Runs of the packer in a folder of its own.
class Packer {
public:
  void write(std::string const & name, std::string_view bytes) const { support::writeFile(folder_ / name, bytes); }
  std::string read(std::string const & name) const { return support::readFile(path(name)).value_or("(none)"); }
  std::string path(std::string const & name) const { return folder_ / name; }

  support::ProgramResult run(std::string const & arguments) const {
    return support::runProgram({.program = "kivml", .arguments = arguments, .workingFolder = folder_.path()});
  }

private:
  support::TempFolder folder_;
};

TEST(Kivml, PacksALineToARecord) {
  Packer const packer;
  packer.write("list.txt", "; a comment\r\n1001 activity\r\n\r\n  ; another\n2  a  b");
  auto const result = packer.run("pack list.txt kivml.dll");
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.output, "kivml.dll: 2 texts\r\n");
  EXPECT_EQ(packer.read("kivml.dll"), packedTexts({{1001, "activity"}, {2, " a  b"}}));
}

TEST(Kivml, TakesUtf8WithAndWithoutAMarkIntoTheCodePage) {
  Packer const packer;
  packer.write("list.txt", "\xEF\xBB\xBF"
                           "1 Aktivit\xC3\xA4t \xE2\x82\xAC\n");
  EXPECT_EQ(packer.run("pack list.txt kivml.dll").exitCode, 0u);
  EXPECT_EQ(packer.read("kivml.dll"), packedTexts({{1, "Aktivit\xE4t \x80"}}));
}

TEST(Kivml, TakesAnotherCodePageByAnOption) {
  Packer const packer;
  packer.write("list.txt", "1 \xD0\x96\n");
  EXPECT_EQ(packer.run("pack list.txt kivml.dll --codepage 1251").exitCode, 0u);
  EXPECT_EQ(packer.read("kivml.dll"), packedTexts({{1, "\xC6"}}));
  EXPECT_EQ(packer.run("unpack kivml.dll back.txt --codepage 1251").exitCode, 0u);
  EXPECT_EQ(packer.read("back.txt"), "1 \xD0\x96\r\n");
}

TEST(Kivml, ReadsEscapes) {
  Packer const packer;
  packer.write("list.txt", "1 a\\nb\\r\\t\\\\\\x81\\x00\\x20\n");
  EXPECT_EQ(packer.run("pack list.txt kivml.dll").exitCode, 0u);
  EXPECT_EQ(packer.read("kivml.dll"), packedTexts({{1, std::string("a\nb\r\t\\\x81\0 ", 9)}}));
}

/// A list that is refused.
struct BadList {
  char const * name;
  std::string content;
  char const * message;
};
std::ostream & operator<<(std::ostream & out, BadList const & row) { return out << row.name; }

class KivmlList : public testing::TestWithParam<BadList> {};
TEST_P(KivmlList, ThatIsFaultyIsRefusedWithFileLineAndReason) {
  Packer const packer;
  packer.write("list.txt", GetParam().content);
  packer.write("kivml.dll", "the former one");
  auto const result = packer.run("pack list.txt kivml.dll");
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_TRUE(holds(result.errors, GetParam().message));
  EXPECT_EQ(packer.read("kivml.dll"), "the former one");
}
INSTANTIATE_TEST_SUITE_P(
    Faults, KivmlList,
    testing::Values(BadList{"not in the code page", "1 ok\n2 \xD0\x96\n",
                            "list.txt:2: code page 1252 has no U+0416 '\xD0\x96'\r\n"},
                    BadList{"not in the code page, a pair", "1 \xF0\x9F\x99\x82\n",
                            "list.txt:1: code page 1252 has no U+1F642"},
                    BadList{"not in the code page, behind others", "1 a\xC3\xA4 \xD0\x96 \xD0\x97\n",
                            "list.txt:1: code page 1252 has no U+0416 '\xD0\x96'\r\n"},
                    BadList{"not in the code page, in front of an escape", "1 \xD0\x96\\n\n",
                            "list.txt:1: code page 1252 has no U+0416 '\xD0\x96'\r\n"},
                    BadList{"no UTF-8", "1 Aktivit\xE4t\n", "list.txt:1: the text is not UTF-8\r\n"},
                    BadList{"twice", "1 a\n2 b\n1 c\n", "list.txt:3: the identifier 1 is there twice, first at 1\r\n"},
                    BadList{"empty", "1 a\n2\n", "list.txt:2: the text is empty\r\n"},
                    BadList{"empty behind a blank", "2 \n", "list.txt:1: the text is empty\r\n"},
                    BadList{"too large", "65536 a\n", "list.txt:1: the identifier 65536 is above 65535\r\n"},
                    BadList{"much too large", "99999999999999999999 a\n", "is above 65535\r\n"},
                    BadList{"no identifier", "activity\n",
                            "list.txt:1: a line begins with the decimal identifier of its text, and a blank\r\n"},
                    BadList{"identifier and more", "1a b\n", "list.txt:1: a line begins with"},
                    BadList{"bad escape", "1 a\\q\n", "list.txt:1: '\\' is followed by none of"},
                    BadList{"bad digits", "1 a\\xZ0\n", "list.txt:1: '\\' is followed by none of"},
                    BadList{"escape at the end", "1 a\\\n", "list.txt:1: '\\' is followed by none of"},
                    BadList{"empty with blanks", "2  \t\n", "list.txt:1: the text is empty\r\n"}));
// None of these is seen in an editor.
INSTANTIATE_TEST_SUITE_P(
    HiddenFaults, KivmlList,
    testing::Values(
        BadList{"carriage return within a line", "1 a\n2 b\rc\n",
                "list.txt:2: a carriage return without a line feed; write \\r where one is meant\r\n"},
        BadList{"carriage returns as line ends", "1 a\r2 b\r", "list.txt:1: a carriage return without a line feed"},
        BadList{"two carriage returns", "1 a\r\r\n", "list.txt:1: a carriage return without a line feed"},
        BadList{"blank at the end", "1 a \r\n",
                "list.txt:1: a blank at the end of the line; write \\x20 or \\t where one is meant\r\n"},
        BadList{"tab at the end", "1 a\t\n", "list.txt:1: a blank at the end of the line"},
        BadList{"NUL", std::string("1 a\0b\n", 6),
                "list.txt:1: a NUL byte: the list is not UTF-8, or damaged; write \\x00 where one is meant\r\n"},
        BadList{"an accent that no letter of the code page has", "1 q\xCC\x88\n",
                "list.txt:1: code page 1252 has no U+0308"}));

TEST(Kivml, ComposesLettersWithSeparateAccents) {
  Packer const packer;
  packer.write("list.txt", "1 Aktivita\xCC\x88t\n2 e\xCC\x81te\xCC\x81\n");
  auto const result = packer.run("pack list.txt kivml.dll");
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(packer.read("kivml.dll"), packedTexts({{1, "Aktivit\xE4t"}, {2, "\xE9t\xE9"}}));
}

// Code page 1258 writes vowels and tones apart.
TEST(Kivml, LeavesAccentsThatTheCodePageHas) {
  Packer const packer;
  packer.write("list.txt", "1 e\xCC\x80\n");
  EXPECT_EQ(packer.run("pack list.txt kivml.dll --codepage 1258").exitCode, 0u);
  EXPECT_EQ(packer.read("kivml.dll"), packedTexts({{1, "e\xCC"}}));
}

TEST(Kivml, ReportsAllFaultsInTheOrderOfTheLines) {
  Packer const packer;
  packer.write("list.txt", "1 a\n1 b\nx\n");
  EXPECT_EQ(packer.run("pack list.txt kivml.dll").errors,
            "list.txt:2: the identifier 1 is there twice, first at 1\r\n"
            "list.txt:3: a line begins with the decimal identifier of its text, and a blank\r\n");
}

std::string const kGood = packedTexts({{1, "one"}, {2, "two"}});

std::string with(std::size_t position, char byte) {
  std::string bytes = kGood;
  bytes[position] = byte;
  return bytes;
}

class KivmlPacked : public testing::TestWithParam<BadList> {};
TEST_P(KivmlPacked, ThatIsFaultyIsReportedWithFileRecordAndReason) {
  Packer const packer;
  packer.write("kivml.dll", GetParam().content);
  for (std::string const arguments : {"check kivml.dll", "unpack kivml.dll out.txt"}) {
    auto const result = packer.run(arguments);
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_TRUE(holds(result.errors, GetParam().message));
  }
  EXPECT_EQ(packer.read("out.txt"), "(none)");
}
INSTANTIATE_TEST_SUITE_P(
    Faults, KivmlPacked,
    testing::Values(BadList{"empty", "", "kivml.dll: bad magic: 0x0 instead of 0xC1B0C1B\r\n"},
                    BadList{"magic", with(0, 0x1C), "kivml.dll: bad magic: 0xC1B0C1C instead of 0xC1B0C1B\r\n"},
                    BadList{"version", with(6, 4), "kivml.dll: bad version: 0x49000 instead of 0x39000\r\n"},
                    BadList{"no end", kGood.substr(0, kGood.size() - 4),
                            "kivml.dll: record 3: missing end record: the file ends here\r\n"},
                    BadList{"cut", kGood.substr(0, kGood.size() - 6),
                            "kivml.dll: record 2: the length 3 leads beyond the end of the file\r\n"},
                    BadList{"behind the end", kGood + "more", "kivml.dll: record 3: 4 bytes after the end record\r\n"},
                    BadList{"high bits", with(8 + 4 + 2, 1),
                            "kivml.dll: record 1: the identifier 65537 is above 65535"},
                    BadList{"twice", packedTexts({{5, "a"}, {5, "b"}}),
                            "kivml.dll: record 2: the identifier 5 is there twice, first at 1\r\n"}));

TEST(Kivml, ChecksASoundFile) {
  Packer const packer;
  packer.write("kivml.dll", kGood);
  auto const result = packer.run("check kivml.dll");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.output, "kivml.dll: 2 texts, no fault\r\n");
}

TEST(Kivml, BringsBackEveryByteThatItHasUnpacked) {
  Packer const packer;
  support::Random random(7);
  std::vector<std::pair<unsigned long, std::string>> texts;
  for (unsigned long resId = 0; resId < 500; ++resId) {
    std::string text(1 + random() % 40, ' ');
    for (char & c : text)
      c = static_cast<char>(random());
    texts.emplace_back(resId * 131, text);
  }
  packer.write("kivml.dll", packedTexts(texts));
  EXPECT_EQ(packer.run("unpack kivml.dll list.txt").exitCode, 0u);
  EXPECT_EQ(packer.run("pack list.txt back.dll").exitCode, 0u);
  EXPECT_TRUE(packer.read("back.dll") == packedTexts(texts));
}

TEST(Kivml, NamesTheFileThatItCannotReadOrWrite) {
  Packer const packer;
  auto const missing = packer.run("pack missing.txt kivml.dll");
  EXPECT_EQ(missing.exitCode, 1u);
  EXPECT_TRUE(holds(missing.errors, "kivml: missing.txt: cannot be read: "));
  packer.write("list.txt", "1 a\n");
  auto const nowhere = packer.run("pack list.txt no\\folder\\kivml.dll");
  EXPECT_EQ(nowhere.exitCode, 1u);
  EXPECT_TRUE(holds(nowhere.errors, "kivml: no\\folder\\kivml.dll: cannot be written: "));
}

TEST(Kivml, LeavesAFileThatSomebodyElseHasOpen) {
  Packer const packer;
  packer.write("list.txt", "1 a\n");
  packer.write("kivml.dll", "the former one");
  {
    support::FileInUse const held(packer.path("kivml.dll"));
    auto const result = packer.run("pack list.txt kivml.dll");
    EXPECT_EQ(result.exitCode, 1u);
    ASSERT_FALSE(
        MoveFileExA(packer.path("list.txt").c_str(), packer.path("kivml.dll").c_str(), MOVEFILE_REPLACE_EXISTING));
    DWORD const code = GetLastError();
    EXPECT_EQ(result.errors, "kivml: kivml.dll: cannot be written: system error " + std::to_string(code) + " (" +
                                 support::systemText(code) + ")\r\n");
  }
  EXPECT_EQ(packer.read("kivml.dll"), "the former one");
  EXPECT_EQ(packer.read("kivml.dll.new"), "(none)");
}

TEST(Kivml, RefusesToWriteOverWhatItReads) {
  Packer const packer;
  packer.write("list.txt", "1 text\n");
  auto const packed = packer.run("pack list.txt .\\LIST.TXT");
  EXPECT_EQ(packed.exitCode, 1u);
  EXPECT_EQ(packed.errors, "kivml: .\\LIST.TXT: cannot be written: it is the file that is read\r\n");
  EXPECT_EQ(packer.read("list.txt"), "1 text\n");
  packer.write("kivml.dll", packedTexts({{1, "text"}}));
  auto const unpacked = packer.run("unpack kivml.dll kivml.dll");
  EXPECT_EQ(unpacked.exitCode, 1u);
  EXPECT_EQ(unpacked.errors, "kivml: kivml.dll: cannot be written: it is the file that is read\r\n");
  EXPECT_EQ(packer.read("kivml.dll"), packedTexts({{1, "text"}}));
}

TEST(Kivml, WritesBytesThatAreNoCharactersAsEscapes) {
  Packer const packer;
  packer.write("kivml.dll", packedTexts({{1, "\x83\x65 a\x83"}}));
  EXPECT_EQ(packer.run("unpack kivml.dll back.txt --codepage 932").exitCode, 0u);
  EXPECT_EQ(packer.read("back.txt"), "1 \\x83e a\\x83\r\n");
  EXPECT_EQ(packer.run("pack back.txt back.dll --codepage 932").exitCode, 0u);
  EXPECT_EQ(packer.read("back.dll"), packer.read("kivml.dll"));
}

TEST(Kivml, SaysHowItIsUsed) {
  Packer const packer;
  for (std::string const arguments : {"", "pack", "pack a", "check", "fold a b", "pack a b --codepage"}) {
    auto const result = packer.run(arguments);
    EXPECT_EQ(result.exitCode, 2u) << arguments;
    EXPECT_TRUE(holds(result.errors, "usage: kivml pack LIST PACKED [--codepage N]\r\n")) << arguments;
  }
}

TEST(Kivml, GivesItsHelpWhenAsked) {
  Packer const packer;
  for (std::string const arguments : {"--help", "pack --help", "--help check x"}) {
    auto const result = packer.run(arguments);
    EXPECT_EQ(result.exitCode, 0u) << arguments;
    EXPECT_EQ(result.errors, "") << arguments;
    EXPECT_TRUE(holds(result.output, "usage: kivml pack LIST PACKED [--codepage N]\r\n")) << arguments;
    EXPECT_TRUE(holds(result.output, "Exit code 0: done")) << arguments;
  }
}

// 0 and 1 are whatever code pages the machine has, on which the product does not run.
TEST(Kivml, RefusesWhatIsNoCodePageOfTexts) {
  Packer const packer;
  packer.write("list.txt", "1 a\n");
  for (std::string const codePage :
       {"99999", "65001", "65000", "1200", "0", "1", "-1", "latin", "1252x", "4294968548"}) {
    auto const result = packer.run("pack list.txt kivml.dll --codepage " + codePage);
    EXPECT_EQ(result.exitCode, 2u) << codePage;
    EXPECT_TRUE(holds(result.errors, "kivml: there is no code page " + codePage + " with 8-bit characters\r\n"));
    EXPECT_EQ(packer.read("kivml.dll"), "(none)");
  }
}

} // namespace

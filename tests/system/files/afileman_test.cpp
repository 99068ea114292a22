#include "afileman.hpp"

#include "diagnostics/internal_errors.hpp"
#include "support/imports/import_hook.hpp"
#include "system/uuid_text.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

using SV::String;
using FileManager = KivSystemFileManager;

namespace {

struct Parts {
  String directory = "old";
  String fileName = "old";
  String baseName = "old";
  String extension = "old";
};

Parts partsOf(char const * path, bool keepBackslash) {
  Parts parts;
  FileManager::splitFileName(path, parts.directory, parts.fileName, parts.baseName, parts.extension, keepBackslash);
  return parts;
}

struct Row {
  char const * path;
  char const * directory;
  char const * directoryWithBackslash;
  char const * fileName;
  char const * baseName;
  char const * extension;
};
std::ostream & operator<<(std::ostream & out, Row const & row) { return out << '"' << row.path << '"'; }

class SplitFileName : public testing::TestWithParam<Row> {};

TEST_P(SplitFileName, GivesTheParts) {
  Row const & row = GetParam();
  for (bool const keepBackslash : {false, true}) {
    Parts const parts = partsOf(row.path, keepBackslash);
    EXPECT_STREQ(parts.directory.c_str(), keepBackslash ? row.directoryWithBackslash : row.directory);
    EXPECT_STREQ(parts.fileName.c_str(), row.fileName);
    EXPECT_STREQ(parts.baseName.c_str(), row.baseName);
    EXPECT_STREQ(parts.extension.c_str(), row.extension);
  }
}

// In a path without a directory the base name is one character short, other than with one: modules count on it.
constexpr Row kRows[] = {
    // Backslash and dot
    {"c:\\dir\\abc.txt", "c:\\dir", "c:\\dir\\", "abc.txt", "abc", ".txt"},
    {"c:\\name.", "c:", "c:\\", "name.", "name", "."},
    {"c:\\a.b\\name.tar.gz", "c:\\a.b", "c:\\a.b\\", "name.tar.gz", "name.tar", ".gz"},
    {"dir\\.hidden", "dir", "dir\\", ".hidden", "", ".hidden"},
    {"dir\\.", "dir", "dir\\", ".", "", "."},
    {"\\a.b", "", "\\", "a.b", "a", ".b"},
    {"\\\\host\\share\\n.x", "\\\\host\\share", "\\\\host\\share\\", "n.x", "n", ".x"},
    {"c:\\dir/a.b/n.x", "c:", "c:\\", "dir/a.b/n.x", "dir/a.b/n", ".x"},
    // Backslash alone, a dot before it included
    {"c:\\dir\\name", "c:\\dir", "c:\\dir\\", "name", "name", ""},
    {"c:\\a.b\\name", "c:\\a.b", "c:\\a.b\\", "name", "name", ""},
    {"c:\\a.b\\", "c:\\a.b", "c:\\a.b\\", "", "", ""},
    {".\\name", ".", ".\\", "name", "name", ""},
    {"..\\", "..", "..\\", "", "", ""},
    {"\\name", "", "\\", "name", "name", ""},
    {"\\", "", "\\", "", "", ""},
    {"a\\\\", "a\\", "a\\\\", "", "", ""},
    // Dot alone
    {"abc.txt", "", "", "abc.txt", "ab", ".txt"},
    {"a.txt", "", "", "a.txt", "", ".txt"},
    {".txt", "", "", ".txt", "", ".txt"},
    {"abc.", "", "", "abc.", "ab", "."},
    {".", "", "", ".", "", "."},
    {"..", "", "", "..", "", "."},
    {"abc.tar.gz", "", "", "abc.tar.gz", "abc.ta", ".gz"},
    {"dir/abc.txt", "", "", "dir/abc.txt", "dir/ab", ".txt"},
    {"a.b/name", "", "", "a.b/name", "", ".b/name"},
    {"c:abc.txt", "", "", "c:abc.txt", "c:ab", ".txt"},
    // Neither
    {"name", "", "", "name", "name", ""},
    {"dir/name", "", "", "dir/name", "dir/name", ""},
    {"", "", "", "", "", ""},
};
INSTANTIATE_TEST_SUITE_P(Table, SplitFileName, testing::ValuesIn(kRows));

TEST(SplitFileNameInPlace, MayWriteAnyPartOverThePath) {
  String directory;
  String fileName;
  String baseName;
  String extension;
  for (String * const part : {&directory, &fileName, &baseName, &extension}) {
    *part = "c:\\dir\\abc.txt";
    FileManager::splitFileName(*part, directory, fileName, baseName, extension, false);
    EXPECT_STREQ(directory.c_str(), "c:\\dir");
    EXPECT_STREQ(fileName.c_str(), "abc.txt");
    EXPECT_STREQ(baseName.c_str(), "abc");
    EXPECT_STREQ(extension.c_str(), ".txt");
  }
}

using uuidtext::giveNoText;
using uuidtext::giveText;
using uuidtext::released;
using uuidtext::useForText;

std::string behindTheFolder(String const & name) {
  std::string const text(name.c_str());
  return text.substr(text.rfind('\\') + 1);
}

TEST(TemporaryName, HasTheSystemsTextAsItIsAndGivesItBack) {
  useForText(giveText);
  EXPECT_EQ(behindTheFolder(FileManager::fileCreateTempName("x", "tmp")),
            "x" + std::string(uuidtext::systemsText) + ".tmp");
  EXPECT_EQ(released, 1);
}

TEST(TemporaryName, OfANullPrefixBeginsWithTheSystemsText) {
  useForText(giveText);
  EXPECT_EQ(behindTheFolder(FileManager::fileCreateTempName(nullptr, nullptr)), uuidtext::systemsText);
}

TEST(TemporaryName, WithoutASystemsTextIsReportedAndEmpty) {
  kivtest::InternalErrors const errors;
  useForText(giveNoText);
  EXPECT_EQ(FileManager::fileCreateTempName("x", "tmp").Len(), 0);
  EXPECT_EQ(released, 0);
  EXPECT_EQ(errors.places(), std::vector<std::string>{"afileman.cpp (102)"});
}

/// A module of the product, as far as errors go.
class Module : public KivSystemFileManager {
public:
  using KivBasicFileManager::_appendErrorMessage;
  using KivBasicFileManager::_setErrorMessage;
};

TEST(FileManagerError, IsEmptyAtFirstThenSetAndAppendedTo) {
  EXPECT_EQ(KivBasicFileManager::getErrorMessage().Len(), 0);
  Module::_appendErrorMessage("first");
  EXPECT_STREQ(KivBasicFileManager::getErrorMessage().c_str(), "first");
  Module::_appendErrorMessage(", second");
  EXPECT_STREQ(FileManager::getErrorMessage().c_str(), "first, second");
  Module::_setErrorMessage("other");
  EXPECT_STREQ(KivBasicFileManager::getErrorMessage().c_str(), "other");
  Module::_setErrorMessage("");
  EXPECT_EQ(KivBasicFileManager::getErrorMessage().Len(), 0);
}

static_assert(std::is_empty_v<KivSystemFileManager> && std::is_base_of_v<KivBasicFileManager, KivSystemFileManager>);

TEST(FileManagerError, IsOneForAllObjects) {
  Module first;
  Module const second;
  first = second;
  first._setErrorMessage("text");
  EXPECT_STREQ(second.getErrorMessage().c_str(), "text");
}

/// The reader of a module, which answers as the test says.
struct Reader {
  long result = 0;
  String content;
  std::string calls; ///< name and flag of each
} reader;

long readNothing(String & out, String const & fileName, bool flag) {
  reader.calls += std::string(fileName.c_str()) + (flag ? " true;" : " false;");
  out = reader.content;
  return reader.result;
}

/// The memory of the last file, empty at the start of each test.
class LastFile : public testing::Test {
protected:
  LastFile() { FileManager::pReadStringFromFileFct = readNothing; }

  long read(char const * name, String const & content, long result = 0) {
    reader.content = content;
    reader.result = result;
    return FileManager::readStringFromFile(text_, name, false);
  }

  static void expectNothing() {
    EXPECT_EQ(FileManager::GetLastFileName().Len(), 0);
    EXPECT_EQ(FileManager::GetLastFileContent().Len(), 0);
    EXPECT_FALSE(FileManager::IsContentOfLastFile("content"));
    EXPECT_FALSE(FileManager::IsContentOfLastFile(""));
  }

  String text_;
};

TEST_F(LastFile, IsNoneAtFirst) {
  FileManager::pReadStringFromFileFct = nullptr;
  expectNothing();
}

TEST(ReadStringFromFile, HasNoReaderAtFirst) { EXPECT_EQ(FileManager::pReadStringFromFileFct, nullptr); }

TEST_F(LastFile, IsReadByTheFunctionOfTheModule) {
  reader.calls.clear();
  reader.content = "content";
  for (long const result : {0l, 1l, -1l, 4711l}) {
    reader.result = result;
    EXPECT_EQ(FileManager::readStringFromFile(text_, "a.txt", result == 0), result);
    EXPECT_STREQ(text_.c_str(), "content");
  }
  EXPECT_EQ(reader.calls, "a.txt true;a.txt false;a.txt false;a.txt false;");
}

TEST_F(LastFile, IsRememberedWithNameAndContent) {
  EXPECT_EQ(read("a.txt", "content"), 0);
  EXPECT_STREQ(FileManager::GetLastFileName().c_str(), "a.txt");
  EXPECT_STREQ(FileManager::GetLastFileContent().c_str(), "content");
  EXPECT_EQ(read("b.txt", "other"), 0);
  EXPECT_STREQ(FileManager::GetLastFileName().c_str(), "b.txt");
  EXPECT_STREQ(FileManager::GetLastFileContent().c_str(), "other");
}

TEST_F(LastFile, HasTheContentThatWasReadOrAnEqualOne) {
  read("a.txt", "content");
  EXPECT_EQ(FileManager::GetLastFileContent().block(), text_.block());
  EXPECT_TRUE(FileManager::IsContentOfLastFile(text_));
  String const equal("content");
  EXPECT_NE(equal.block(), text_.block());
  EXPECT_TRUE(FileManager::IsContentOfLastFile(equal));
  for (char const * const other : {"", "conten", "contents", "Content", "conteXt"})
    EXPECT_FALSE(FileManager::IsContentOfLastFile(other)) << other;
}

TEST_F(LastFile, StaysWhenTheTextThatWasReadIsChanged) {
  read("a.txt", "content");
  text_ += "s";
  EXPECT_FALSE(FileManager::IsContentOfLastFile(text_));
  EXPECT_TRUE(FileManager::IsContentOfLastFile("content"));
}

// Texts are compared up to their first NUL, with their whole length: large contents are told apart at their start.
TEST_F(LastFile, ComparesUpToTheFirstNulAndTheLength) {
  read("a.txt", String("ab\0cd", 5));
  EXPECT_TRUE(FileManager::IsContentOfLastFile(String("ab\0cd", 5)));
  EXPECT_TRUE(FileManager::IsContentOfLastFile(String("ab\0XX", 5)));
  EXPECT_FALSE(FileManager::IsContentOfLastFile(String("ab\0cde", 6)));
  EXPECT_FALSE(FileManager::IsContentOfLastFile("ab"));
}

TEST_F(LastFile, IsForgottenAfterAFailedRead) {
  for (long const result : {1l, -1l}) {
    read("a.txt", "content");
    read("b.txt", "content", result);
    expectNothing();
  }
}

TEST_F(LastFile, IsForgottenAfterAReadWithoutAReader) {
  read("a.txt", "content");
  FileManager::pReadStringFromFileFct = nullptr;
  EXPECT_EQ(FileManager::readStringFromFile(text_, "b.txt", false), -1);
  EXPECT_STREQ(text_.c_str(), "content");
  expectNothing();
}

TEST_F(LastFile, WithoutAContentHasNoneThatATextCouldBe) {
  read("a.txt", "");
  EXPECT_STREQ(FileManager::GetLastFileName().c_str(), "a.txt");
  EXPECT_FALSE(FileManager::IsContentOfLastFile(""));
}

TEST_F(LastFile, WithoutANameHasNoneEither) {
  read("", "content");
  EXPECT_STREQ(FileManager::GetLastFileContent().c_str(), "content");
  EXPECT_FALSE(FileManager::IsContentOfLastFile("content"));
}

} // namespace

#include "atools.hpp"

#include "support/data/files.hpp"
#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <ostream>
#include <string>

namespace {

struct Row {
  char const * name;
  bool valid;
};
std::ostream & operator<<(std::ostream & out, Row const & row) {
  return out << (row.name != nullptr ? row.name : "(null)");
}

class ValidFilename : public testing::TestWithParam<Row> {};
TEST_P(ValidFilename, IsKnownFromItsTextAlone) { EXPECT_EQ(Kiv_Valid_Filename(GetParam().name), GetParam().valid); }

INSTANTIATE_TEST_SUITE_P(Plain, ValidFilename,
                         testing::Values(Row{nullptr, false}, Row{"", false}, Row{"C:\\dir\\file.txt", true},
                                         Row{"file", true}, Row{"dir/file", true}, Row{"..\\file", true},
                                         Row{"\\file", true}, Row{"a b", true}, Row{"\xE4\xF6", true},
                                         Row{"C:\\dir\\", false}, Row{"dir/", false}, Row{"\\", false},
                                         Row{"C:", false}, Row{"a//b", false}, Row{"a\\/b", false}, Row{"a/\\b", false},
                                         Row{"//a", false}, Row{"ab://x", false}, Row{"http://x/y", false}));

INSTANTIATE_TEST_SUITE_P(Colon, ValidFilename,
                         testing::Values(Row{"c:file", true}, Row{"Z:/f", true}, Row{"A:f", true}, Row{"a:f", true},
                                         Row{"z:f", true}, Row{"@:f", false}, Row{"[:f", false}, Row{"`:f", false},
                                         Row{"{:f", false}, Row{"ab:c", false}, Row{":a", false}, Row{"1:a", false},
                                         Row{"C:a:b", false}, Row{"dir\\a:b", false}, Row{"C::a", false}));

INSTANTIATE_TEST_SUITE_P(Characters, ValidFilename,
                         testing::Values(Row{"a|b", false}, Row{"a*", false}, Row{"<a", false}, Row{"a>b", false},
                                         Row{"a?b", false}, Row{"a\"b", false}, Row{"C:\\di?r\\file", false}));

INSTANTIATE_TEST_SUITE_P(NoDevice, ValidFilename,
                         testing::Values(Row{"COM1x", true}, Row{"CON1", true}, Row{"COM0", true}, Row{"LPT0", true},
                                         Row{"CLOCK", true}, Row{"xCON", true}, Row{"CO", true}, Row{"C:\\CON", true},
                                         Row{"dir\\con.txt", true}, Row{"CON\\file", true}, Row{"CON ", true}));

class DeviceName : public testing::TestWithParam<char const *> {};

TEST_P(DeviceName, IsNoFileNameInAnyCaseAndWithAnyEnding) {
  std::string const upper = GetParam();
  std::string lower = upper;
  CharLowerA(lower.data());
  std::string mixed = upper;
  mixed.back() = lower.back();
  for (std::string const & name : {upper, lower, mixed}) {
    for (char const * const ending : {"", ".", ".txt", ".t.t"}) {
      EXPECT_FALSE(Kiv_Valid_Filename((name + ending).c_str())) << name << ending;
      EXPECT_FALSE(Kiv_Valid_Filename(("\\\\server\\share\\" + name + ending).c_str())) << name << ending;
    }
    for (char const * const ending : {"x", "_", "-.txt"})
      EXPECT_TRUE(Kiv_Valid_Filename((name + ending).c_str())) << name << ending;
    EXPECT_TRUE(Kiv_Valid_Filename(("dir\\" + name).c_str())) << name;
  }
}

INSTANTIATE_TEST_SUITE_P(All, DeviceName,
                         testing::Values("CON", "PRN", "AUX", "CLOCK$", "NUL", "COM1", "COM2", "COM3", "COM4", "COM5",
                                         "COM6", "COM7", "COM8", "COM9", "LPT1", "LPT2", "LPT3", "LPT4", "LPT5", "LPT6",
                                         "LPT7", "LPT8", "LPT9"));

INSTANTIATE_TEST_SUITE_P(Server, ValidFilename,
                         testing::Values(Row{"\\\\server\\share\\file", true}, Row{"\\\\server\\share/file", true},
                                         Row{"\\\\s\\s\\f", true}, Row{"\\\\", false}, Row{"\\\\server", false},
                                         Row{"\\\\server\\", false}, Row{"\\\\server\\share", false},
                                         Row{"\\\\server\\share\\", false}, Row{"\\\\\\share\\file", false},
                                         Row{"\\\\server\\\\file", false}, Row{"\\\\ser\tver\\share\\file", false},
                                         Row{"\\\\s\xE4\\share\\file", true}, Row{"\\\\server\\share\\C:file", false},
                                         Row{"\\\\server\\share\\CON", false}, Row{"\\\\s*r/v:r\\sh?re\\file", true},
                                         Row{"\\\\CON\\NUL\\file", true}, Row{"\\\\server\\share\\con.txt", false},
                                         Row{"\\\\server\\share\\\\file", true}, Row{"\\\\s\x1F\\share\\file", false},
                                         Row{"\\\\s r\\share\\file", true}, Row{"\\\\server\\share\\a//b", false},
                                         Row{"\\\\server\\share\\a*b", false}));

TEST(ValidDBFilename, BeginsWithTheDatabaseInAnyCase) {
  for (char const * name : {"DB:\\", "DB:\\x", "db:\\dir\\x", "dB:\\a*b"})
    EXPECT_TRUE(Kiv_Valid_DBFilename(name)) << name;
  for (char const * name : {"", "D", "DB:", "DB:/x", "DBx\\", " DB:\\x", "C:\\DB:\\x"})
    EXPECT_FALSE(Kiv_Valid_DBFilename(name)) << name;
  EXPECT_FALSE(Kiv_Valid_DBFilename(nullptr));
}

// Real files.

TEST(FileExists, WhenItCanBeOpened) {
  support::TempFolder const folder;
  std::string const name = folder / "file.txt";
  EXPECT_FALSE(Kiv_FileExists(name.c_str()));
  support::writeFile(name, "");
  EXPECT_TRUE(Kiv_FileExists(name.c_str()));
  support::setReadOnly(name, true);
  EXPECT_TRUE(Kiv_FileExists(name.c_str()));
}

TEST(FileExists, LeavesTheFileFree) {
  support::TempFolder const folder;
  support::writeFile(folder / "file.txt", "text");
  EXPECT_TRUE(Kiv_FileExists((folder / "file.txt").c_str()));
  EXPECT_TRUE(DeleteFileA((folder / "file.txt").c_str()));
}

TEST(FileExists, IsFalseForAllElse) {
  support::TempFolder const folder;
  EXPECT_FALSE(Kiv_FileExists(nullptr));
  EXPECT_FALSE(Kiv_FileExists(""));
  EXPECT_FALSE(Kiv_FileExists("DB:\\file.txt"));
  EXPECT_FALSE(Kiv_FileExists(folder.path().c_str()));
  support::FileInUse const inUse(folder / "used.txt");
  EXPECT_FALSE(Kiv_FileExists((folder / "used.txt").c_str()));
}

TEST(FileIsInUse, WhileSomebodyElseHasItOpen) {
  support::TempFolder const folder;
  std::string const name = folder / "file.txt";
  {
    support::FileInUse const inUse(name);
    EXPECT_TRUE(Kiv_FileIsInUse(name.c_str()));
  }
  EXPECT_FALSE(Kiv_FileIsInUse(name.c_str()));
  EXPECT_TRUE(DeleteFileA(name.c_str())); // and it was closed again
}

TEST(FileIsInUse, EvenByOneWhoShares) {
  support::TempFolder const folder;
  std::string const name = folder / "file.txt";
  HANDLE const reader = CreateFileA(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  EXPECT_TRUE(Kiv_FileIsInUse(name.c_str()));
  EXPECT_TRUE(Kiv_FileExists(name.c_str()));
  CloseHandle(reader);
}

TEST(FileIsInUse, IsFalseForAllElse) {
  support::TempFolder const folder;
  EXPECT_FALSE(Kiv_FileIsInUse(nullptr));
  EXPECT_FALSE(Kiv_FileIsInUse(""));
  EXPECT_FALSE(Kiv_FileIsInUse("DB:\\file.txt"));
  EXPECT_FALSE(Kiv_FileIsInUse((folder / "missing.txt").c_str()));
  EXPECT_FALSE(Kiv_FileIsInUse(folder.path().c_str()));
}

// Answers of the system, simulated by the test.

int questions = 0;
DWORD refusal = 0;

FILE * openAnything(char const *, char const *) {
  ++questions;
  return std::tmpfile();
}

HANDLE WINAPI refuseFile(char const * name, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES * security,
                         DWORD disposition, DWORD attributes, HANDLE model) {
  ++questions;
  EXPECT_STREQ(name, "file.txt");
  EXPECT_EQ(access, GENERIC_READ);
  EXPECT_EQ(sharing, 0u);
  EXPECT_EQ(security, nullptr);
  EXPECT_EQ(disposition, static_cast<DWORD>(OPEN_EXISTING));
  EXPECT_EQ(attributes, static_cast<DWORD>(FILE_ATTRIBUTE_NORMAL));
  EXPECT_EQ(model, nullptr);
  SetLastError(refusal);
  return INVALID_HANDLE_VALUE;
}

class FileQuestion : public testing::Test {
protected:
  FileQuestion() {
    questions = 0;
    HMODULE const library = GetModuleHandleA("kivara.dll");
    support::replaceImports(library, "msvcrt.dll", {{"fopen", reinterpret_cast<void *>(openAnything)}});
    support::replaceImports(library, "KERNEL32.dll", {{"CreateFileA", reinterpret_cast<void *>(refuseFile)}});
  }
};

TEST_F(FileQuestion, IsNotAskedAboutTheDatabaseNorWithoutAName) {
  refusal = ERROR_SHARING_VIOLATION;
  for (char const * name : {"DB:\\file.txt", "db:\\", static_cast<char const *>(nullptr)}) {
    EXPECT_FALSE(Kiv_FileExists(name));
    EXPECT_FALSE(Kiv_FileIsInUse(name));
  }
  EXPECT_FALSE(Kiv_FileExists(""));
  EXPECT_EQ(questions, 0);
  EXPECT_TRUE(Kiv_FileExists("file.txt"));
  EXPECT_EQ(questions, 1);
}

TEST_F(FileQuestion, KnowsUseOnlyByASharingViolation) {
  for (DWORD const code : {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_LOCK_VIOLATION,
                           ERROR_SHARING_VIOLATION}) {
    refusal = code;
    EXPECT_EQ(Kiv_FileIsInUse("file.txt"), code == 32) << code;
  }
  EXPECT_EQ(questions, 5);
}

} // namespace

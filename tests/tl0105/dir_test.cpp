#include "tools/dir.hpp"

#include "support/imports/import_hook.hpp"
#include "support/memory/allocation.hpp"
#include "testfiles.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <string>
#include <vector>

using SV::Dir;
using testfiles::entry;
using testfiles::write;

namespace {

class DirTest : public testfiles::InOwnFolder {};

constexpr int kAll = 0xFFF;
using Names = std::vector<std::string>;

Names listed(Dir const & dir) {
  Names names;
  for (unsigned long i = 0; i < dir.Count(); ++i)
    names.emplace_back(dir[i].GetName().c_str());
  return names;
}

/// The start of new files' names in a folder. Wine looks through the folder for each new name in another case, unless
/// the name is one of the system below it.
std::string startOfNames(wchar_t const * folder, char const * plain) {
  using UnixName = char *(CDECL *)(wchar_t const *);
  auto const address = GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name");
  if (address == nullptr)
    return plain;
  char * const name = reinterpret_cast<UnixName>(reinterpret_cast<void *>(address))(folder);
  std::string const start = std::string("\\\\?\\unix") + name + "/";
  HeapFree(GetProcessHeap(), 0, name);
  return start;
}

int closedSearches = 0;

BOOL WINAPI countingClose(HANDLE search) {
  ++closedSearches;
  return FindClose(search);
}

BOOL WINAPI nextUpToTheFourth(HANDLE search, WIN32_FIND_DATAA * found) {
  static int asked = 1; // the first was found at the start
  if (++asked <= 4)
    return FindNextFileA(search, found);
  SetLastError(ERROR_NETNAME_DELETED);
  return FALSE;
}

HANDLE WINAPI findNothing(char const *, WIN32_FIND_DATAA *) {
  SetLastError(ERROR_FILE_NOT_FOUND);
  return INVALID_HANDLE_VALUE;
}

Names sorted(char const * path, int kinds = kAll) {
  Dir dir(entry(path), kinds);
  dir.SetSort(SV::FSYS_SORT_NAME);
  return listed(dir);
}

} // namespace

TEST_F(DirTest, ListsAllOfAFolder) {
  CreateDirectoryA("folder", nullptr);
  CreateDirectoryA("folder\\sub", nullptr);
  write("folder\\a.txt");
  write("folder\\b");
  write("folder\\.hidden");
  SetFileAttributesA("folder\\b", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(sorted("folder"), (Names{".hidden", "a.txt", "b", "sub"}));
  EXPECT_EQ(sorted("folder\\"), (Names{".hidden", "a.txt", "b", "sub"}));
  SetFileAttributesA("folder\\b", FILE_ATTRIBUTE_NORMAL);
}

TEST_F(DirTest, AnEmptyEntryIsTheWorkingFolder) {
  write("a.txt");
  EXPECT_EQ(sorted(""), Names{"a.txt"});
  EXPECT_EQ(sorted("."), Names{"a.txt"});
}

TEST_F(DirTest, AttributesSelectFilesOrFolders) {
  CreateDirectoryA("sub", nullptr);
  write("a.txt");
  EXPECT_EQ(sorted(".", SV::FSYS_KIND_FILE), Names{"a.txt"});
  EXPECT_EQ(sorted(".", SV::FSYS_KIND_DIR), Names{"sub"});
  EXPECT_EQ(sorted(".", SV::FSYS_KIND_FILE | SV::FSYS_KIND_DIR), (Names{"a.txt", "sub"}));
  EXPECT_EQ(sorted(".", kAll), (Names{"a.txt", "sub"}));
  EXPECT_EQ(sorted(".", -1), (Names{"a.txt", "sub"}));
  EXPECT_EQ(sorted(".", 0), Names{});
}

TEST_F(DirTest, WildcardsSelectByTheWholeName) {
  for (char const * name : {"daily.log", "daily_.log", "daily_1.log", "Daily_22.LOG", "daily_1.logs", "xdaily_1.log",
                            "noext", "a[1].log", "daily_1.log.bak"})
    write(name);
  struct Row {
    char const * pattern;
    Names names;
  } const rows[] = {
      {"daily_*.log", {"daily_.log", "daily_1.log", "Daily_22.LOG"}},
      {"daily_?.log", {"daily_1.log"}},
      {"daily_??.log", {"Daily_22.LOG"}},
      {"DAILY*", {"daily.log", "daily_.log", "daily_1.log", "daily_1.log.bak", "daily_1.logs", "Daily_22.LOG"}},
      {"*daily_1.log", {"daily_1.log", "xdaily_1.log"}},
      {"*1*.log", {"a[1].log", "daily_1.log", "xdaily_1.log"}},
      {"a[1]*", {"a[1].log"}},
      {"?oext", {"noext"}},
      {"*.bak", {"daily_1.log.bak"}},
      {"no*ext*", {"noext"}},
      {"**",
       {"a[1].log", "daily.log", "daily_.log", "daily_1.log", "daily_1.log.bak", "daily_1.logs", "Daily_22.LOG",
        "noext", "xdaily_1.log"}},
      {"*.*",
       {"a[1].log", "daily.log", "daily_.log", "daily_1.log", "daily_1.log.bak", "daily_1.logs", "Daily_22.LOG",
        "noext", "xdaily_1.log"}},
      {"x?", {}},
      {"*.txt", {}},
  };
  for (Row const & row : rows) {
    Names names = sorted(row.pattern);
    EXPECT_EQ(Names(names), row.names) << row.pattern;
  }
}

TEST_F(DirTest, WildcardsStandInTheLastComponentOnly) {
  CreateDirectoryA("one", nullptr);
  CreateDirectoryA("two", nullptr);
  write("one\\a.log");
  write("two\\b.log");
  EXPECT_EQ(sorted("one\\*.log"), Names{"a.log"});
  EXPECT_EQ(sorted("*\\a.log"), Names{});
  EXPECT_EQ(sorted("*o*"), (Names{"one", "two"}));
}

TEST_F(DirTest, WildcardsDoNotMatchShortNames) {
  write("a long name with blanks.logbook");
  EXPECT_EQ(sorted("*.log"), Names{});
  EXPECT_EQ(sorted("ALONGN~1*"), Names{});
}

TEST_F(DirTest, EntriesCarryTheirFullPath) {
  CreateDirectoryA("folder", nullptr);
  write("folder\\a.txt");
  Dir const dir(entry("folder\\*.txt"), kAll);
  ASSERT_EQ(dir.Count(), 1u);
  CreateDirectoryA("elsewhere", nullptr);
  std::string const expected = testfiles::workingFolder() + "\\folder\\a.txt";
  SetCurrentDirectoryA("elsewhere");
  EXPECT_EQ(dir[0].GetFull().c_str(), expected);
  EXPECT_EQ(dir[0].Kill(), 0u);
  SetCurrentDirectoryA("..");
  EXPECT_FALSE(entry("folder\\a.txt").Exists());
}

TEST_F(DirTest, WhatCannotBeReadGivesAnEmptyList) {
  write("file.txt");
  for (char const * path :
       {"nowhere", "nowhere\\*.txt", "file.txt", "file.txt\\*", "Q:\\", "<>", "C:\\no\\such\\place"})
    EXPECT_EQ(Dir(entry(path), kAll).Count(), 0u) << path;
  std::string const longPath(5000, 'x');
  EXPECT_EQ(Dir(entry(longPath.c_str()), kAll).Count(), 0u);
  EXPECT_EQ(Dir(entry((longPath + "*").c_str()), kAll).Count(), 0u);
}

TEST_F(DirTest, AnEmptyListThatWasReadHasNoError) {
  CreateDirectoryA("empty", nullptr);
  write("file.txt");
  for (char const * path : {"empty", "empty\\*.txt", "*.log", "."})
    EXPECT_EQ(Dir(entry(path), kAll).GetError(), SV::FSYS_ERR_OK) << path;
  EXPECT_EQ(Dir(entry("."), SV::FSYS_KIND_DIR).GetError() + Dir(entry("."), 0).GetError(), SV::FSYS_ERR_OK);
}

TEST_F(DirTest, AFolderThatCannotBeReadIsReportedByTheSystemsCode) {
  write("file.txt");
  EXPECT_EQ(Dir(entry("nowhere"), kAll).GetError(), DWORD{ERROR_PATH_NOT_FOUND});
  EXPECT_EQ(Dir(entry("nowhere\\*.txt"), kAll).GetError(), DWORD{ERROR_PATH_NOT_FOUND});
  for (char const * path : {"file.txt", "Q:\\", "<>"})
    EXPECT_NE(Dir(entry(path), kAll).GetError(), SV::FSYS_ERR_OK) << path;
  CreateDirectoryA("folder", nullptr);
  write("folder\\file.txt");
  HANDLE const lock =
      CreateFileA("folder", FILE_LIST_DIRECTORY, 0, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  ASSERT_NE(lock, INVALID_HANDLE_VALUE);
  EXPECT_EQ(Dir(entry("folder"), kAll).GetError(), DWORD{ERROR_SHARING_VIOLATION});
  CloseHandle(lock);
  EXPECT_EQ(Dir(entry("folder"), kAll).GetError(), SV::FSYS_ERR_OK);
}

TEST_F(DirTest, AListThatBreaksOffHoldsWhatCameBeforeAndReportsTheError) {
  for (char const * name : {"a", "b", "c", "d"})
    write(name);
  support::replaceImports(GetModuleHandleA("TL0105.dll"), "KERNEL32.dll",
                          {{"FindNextFileA", reinterpret_cast<void *>(nextUpToTheFourth)}});
  Dir const dir(entry("."), kAll);
  EXPECT_EQ(dir.GetError(), DWORD{ERROR_NETNAME_DELETED});
  EXPECT_EQ(dir.Count(), 2u) << "the first four are \".\", \"..\" and two files";
}

// Other than any folder, the root of a drive has neither "." nor "..", so that the system finds nothing at all in an empty one.
TEST_F(DirTest, TheRootOfAnEmptyDriveHasNoError) {
  support::replaceImports(GetModuleHandleA("TL0105.dll"), "KERNEL32.dll",
                          {{"FindFirstFileA", reinterpret_cast<void *>(findNothing)}});
  Dir const dir(entry("C:\\"), kAll);
  EXPECT_EQ(dir.GetError(), SV::FSYS_ERR_OK);
  EXPECT_EQ(dir.Count(), 0u);
}

TEST_F(DirTest, APositionPastTheEndIsAnEmptyEntry) {
  write("file.txt");
  Dir const dir(entry("."), kAll);
  ASSERT_EQ(dir.Count(), 1u);
  EXPECT_EQ(dir[1].GetName().Len(), 0);
  EXPECT_EQ(dir[0xFFFFFFFF].GetName().Len(), 0);
  EXPECT_NE(dir[1].Kill(), SV::FSYS_ERR_OK);
}

TEST_F(DirTest, SortsByNameWithoutCase) {
  for (char const * name : {"b", "A", "c", "B2", "a1", "_x", "10", "9", "a-1", "a.1"})
    write(name);
  EXPECT_EQ(sorted("."), (Names{"10", "9", "A", "a-1", "a.1", "a1", "b", "B2", "c", "_x"}));
}

// The system itself lists them in the order of Unicode, in which the euro sign comes last.
TEST_F(DirTest, SortsByTheBytesOfTheCodePage) {
  if (GetACP() != 1252)
    GTEST_SKIP() << "code page 1252 has the euro sign before the umlauts";
  for (char const * name : {"\xE4", "\x80", "\xF6", "z"})
    write(name);
  EXPECT_EQ(sorted("."), (Names{"z", "\x80", "\xE4", "\xF6"}));
}

TEST_F(DirTest, SortPutsTheOldestDatedNameFirst) {
  for (char const * name :
       {"daily_2026.11.12.log", "daily_2025.12.31.log", "daily_2026.02.01.log", "daily_0999.01.01.log"})
    write(name);
  EXPECT_EQ(sorted("daily_*.log"),
            (Names{"daily_0999.01.01.log", "daily_2025.12.31.log", "daily_2026.02.01.log", "daily_2026.11.12.log"}));
}

TEST_F(DirTest, OtherOrdersLeaveTheListAsItIs) {
  for (char const * name : {"b", "A", "c"})
    write(name);
  Dir dir(entry("."), kAll);
  auto const before = listed(dir);
  dir.SetSort(SV::FSYS_SORT_NONE);
  EXPECT_EQ(listed(dir), before);
  dir.SetSort(SV::FSYS_SORT_NAME);
  dir.SetSort(0x7F);
  EXPECT_EQ(listed(dir), (Names{"A", "b", "c"}));
}

TEST_F(DirTest, IsReadAtConstruction) {
  write("a");
  Dir const dir(entry("."), kAll);
  write("b");
  EXPECT_EQ(dir.Count(), 1u);
}

TEST_F(DirTest, NamesWithBytesAbove127AreListedAndMatched) {
  write("\xC4"
        "a.txt");
  write("\xFC.txt");
  EXPECT_EQ(sorted("."), (Names{"\xC4"
                                "a.txt",
                                "\xFC.txt"}));
  EXPECT_EQ(sorted("\xE4*"), Names{"\xC4"
                                   "a.txt"});
  EXPECT_EQ(sorted("?.txt"), Names{"\xFC.txt"});
}

TEST_F(DirTest, ClosesItsSearchWhenTheListFindsNoMemory) {
  for (int i = 0; i < 200; ++i)
    write(std::to_string(i).c_str());
  closedSearches = 0;
  support::replaceImports(GetModuleHandleA("TL0105.dll"), "KERNEL32.dll",
                          {{"FindClose", reinterpret_cast<void *>(countingClose)}});
  {
    support::AllocationLimit const limit(1000); // enough for each path, not for the list
    EXPECT_THROW(Dir(entry("."), kAll), std::bad_alloc);
  }
  EXPECT_EQ(closedSearches, 1);
  EXPECT_EQ(Dir(entry("."), kAll).Count(), 200u);
  EXPECT_EQ(closedSearches, 2);
}

TEST_F(DirTest, HoldsMoreThan10000Entries) {
  constexpr int kFiles = 10050;
  CreateDirectoryA("many", nullptr);
  std::string const start = startOfNames(L"many", "many\\") + "f";
  for (int i = 0; i < kFiles; ++i)
    CloseHandle(CreateFileA((start + std::to_string(i)).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
  Dir dir(entry("many\\f*"), kAll);
  ASSERT_EQ(dir.Count(), static_cast<unsigned long>(kFiles));
  dir.SetSort(SV::FSYS_SORT_NAME);
  auto const names = listed(dir);
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
}

#include "tools/direntry.hpp"

#include "testfiles.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using SV::DirEntry;
using SV::String;
using testfiles::entry;
using testfiles::workingFolder;
using testfiles::write;

namespace {

std::string text(String const & string) { return string.c_str(); }
std::string full(DirEntry const & entry) { return text(entry.GetFull()); }
std::string fullWithSeparator(DirEntry const & entry) { return text(entry.GetFull(SV::FSYS_STYLE_HOST, 1)); }

class DirEntryTest : public testfiles::InOwnFolder {};

struct Parts {
  char const *path, *name, *base, *folder, *changed;
};

/// Absolute paths: last component, base, full path of the containing folder, full path with the base "NEW".
Parts const kAbsolute[] = {
    {"C:\\dir\\file.txt", "file.txt", "file", "C:\\dir", "C:\\dir\\NEW.txt"},
    {"C:/dir/file.txt", "file.txt", "file", "C:\\dir", "C:\\dir\\NEW.txt"},
    {"C:\\file.txt", "file.txt", "file", "C:\\", "C:\\NEW.txt"},
    {"C:\\dir\\archive.tar.gz", "archive.tar.gz", "archive.tar", "C:\\dir", "C:\\dir\\NEW.gz"},
    {"C:\\a.b\\name", "name", "name", "C:\\a.b", "C:\\a.b\\NEW"},
    {"C:\\dir\\.profile", ".profile", "", "C:\\dir", "C:\\dir\\NEW.profile"},
    {"C:\\dir\\sub\\", "sub", "sub", "C:\\dir", "C:\\dir\\NEW"},
    {"C:\\dir\\sub\\\\\\", "sub", "sub", "C:\\dir", "C:\\dir\\NEW"},
    {"C:\\dir\\\\sub", "sub", "sub", "C:\\dir", "C:\\dir\\NEW"},
    {"C:\\log_*.txt", "log_*.txt", "log_*", "C:\\", "C:\\NEW.txt"},
    {"C:\\", "", "", "C:\\", "C:\\NEW"},
    {"C:\\\\\\", "", "", "C:\\", "C:\\NEW"},
    {"\\\\server\\share", "", "", "\\\\server\\share", "\\\\server\\share\\NEW"},
    {"\\\\server\\share\\", "", "", "\\\\server\\share", "\\\\server\\share\\NEW"},
    {"//server/share/file.txt", "file.txt", "file", "\\\\server\\share", "\\\\server\\share\\NEW.txt"},
    {"\\\\server\\share\\dir\\f", "f", "f", "\\\\server\\share\\dir", "\\\\server\\share\\dir\\NEW"},
    {"\\\\?\\C:\\dir\\f.x", "f.x", "f", "\\\\?\\C:\\dir", "\\\\?\\C:\\dir\\NEW.x"},
    {"\\\\?\\C:\\", "", "", "\\\\?\\C:\\", "\\\\?\\C:\\NEW"},
    {"\\\\?\\UNC\\server\\share", "", "", "\\\\?\\UNC\\server\\share", "\\\\?\\UNC\\server\\share\\NEW"},
    {"\\\\?\\unc\\server\\share\\", "", "", "\\\\?\\unc\\server\\share", "\\\\?\\unc\\server\\share\\NEW"},
    {"\\\\?\\UNC\\server\\share\\f.x", "f.x", "f", "\\\\?\\UNC\\server\\share", "\\\\?\\UNC\\server\\share\\NEW.x"},
};

/// Relative paths: the same, with the folders seen from the working folder.
Parts const kRelative[] = {
    {"file.txt", "file.txt", "file", "", "\\NEW.txt"},
    {"file", "file", "file", "", "\\NEW"},
    {"dir\\file.txt", "file.txt", "file", "\\dir", "\\dir\\NEW.txt"},
    {"dir/sub/file.txt", "file.txt", "file", "\\dir\\sub", "\\dir\\sub\\NEW.txt"},
    {".\\file.txt", "file.txt", "file", "", "\\NEW.txt"},
    {"dir\\..\\file.txt", "file.txt", "file", "", "\\NEW.txt"},
    {"..txt", "..txt", ".", "", "\\NEW.txt"},
    {"dir\\", "dir", "dir", "", "\\NEW"},
    {"dir\\.", ".", "", "", "\\dir\\NEW"},
};

} // namespace

TEST_F(DirEntryTest, PartsOfAbsolutePaths) {
  for (Parts const & row : kAbsolute) {
    SCOPED_TRACE(row.path);
    DirEntry changed = entry(row.path);
    EXPECT_EQ(text(changed.GetName()), row.name);
    EXPECT_EQ(text(changed.GetBase()), row.base);
    EXPECT_EQ(full(changed.GetPath()), row.folder);
    changed.ChangeBase("NEW");
    EXPECT_EQ(full(changed), row.changed);
  }
}

TEST_F(DirEntryTest, PartsOfRelativePaths) {
  for (Parts const & row : kRelative) {
    SCOPED_TRACE(row.path);
    DirEntry changed = entry(row.path);
    EXPECT_EQ(text(changed.GetName()), row.name);
    EXPECT_EQ(text(changed.GetBase()), row.base);
    EXPECT_EQ(full(changed.GetPath()), workingFolder() + row.folder);
    changed.ChangeBase("NEW");
    EXPECT_EQ(full(changed), workingFolder() + row.changed);
  }
}

TEST_F(DirEntryTest, BaseEndsAtTheLastSeparatorThatIsAskedFor) {
  struct Row {
    char separator;
    char const *base, *changed;
  } const rows[] = {
      {'.', "daily_2026.11", "NEW.log"}, {'_', "daily", "NEW_2026.11.log"}, {'l', "daily_2026.11.", "NEWlog"},
      {'-', "daily_2026.11.log", "NEW"}, {'d', "", "NEWdaily_2026.11.log"}, {'\0', "daily_2026.11.log", "NEW"},
  };
  for (Row const & row : rows) {
    SCOPED_TRACE(row.base);
    DirEntry changed = entry("C:\\logs\\daily_2026.11.log");
    EXPECT_EQ(text(changed.GetBase(row.separator)), row.base);
    changed.ChangeBase("NEW", row.separator);
    EXPECT_EQ(text(changed.GetName()), row.changed);
    EXPECT_EQ(full(changed.GetPath()), "C:\\logs");
  }
}

// With a separator it would name a file on the device instead.
TEST_F(DirEntryTest, ChangeBaseOfADeviceAddsNoSeparator) {
  struct Row {
    char const *path, *changed;
  } const rows[] = {
      {"\\\\.\\COM1", "\\\\.\\COM1NEW"},
      {"\\\\?\\C:", "\\\\?\\C:NEW"},
      {"\\\\.\\c:", "\\\\.\\c:NEW"},
      {"\\\\?\\Volume{12}", "\\\\?\\Volume{12}NEW"},
      {"\\\\?\\Volume{12}\\", "\\\\?\\Volume{12}\\NEW"},
      {"\\\\.\\pipe\\x", "\\\\.\\pipe\\NEW"},
  };
  for (Row const & row : rows) {
    DirEntry device = entry(row.path);
    device.ChangeBase("NEW");
    EXPECT_EQ(full(device), row.changed) << row.path;
  }
}

TEST_F(DirEntryTest, ChangeBaseLeavesCopiesAlone) {
  DirEntry const original = entry("C:\\logs\\daily.log");
  DirEntry copy(original);
  copy.ChangeBase(copy.GetBase() + "_*");
  EXPECT_EQ(full(original), "C:\\logs\\daily.log");
  EXPECT_EQ(full(copy), "C:\\logs\\daily_*.log");
}

TEST_F(DirEntryTest, FullPathEndsInOneSeparatorWhenAsked) {
  struct Row {
    char const *path, *without, *with;
  } const rows[] = {
      {"C:\\dir", "C:\\dir", "C:\\dir\\"},
      {"C:\\dir\\", "C:\\dir", "C:\\dir\\"},
      {"C:\\dir\\\\", "C:\\dir", "C:\\dir\\"},
      {"C:\\", "C:\\", "C:\\"},
      {"\\\\server\\share", "\\\\server\\share", "\\\\server\\share\\"},
      {"\\\\server\\share\\", "\\\\server\\share", "\\\\server\\share\\"},
      {"C:\\dir\\..\\other", "C:\\other", "C:\\other\\"},
      {"C:\\dir\\.\\x\\..", "C:\\dir", "C:\\dir\\"},
      {"C:\\..\\..", "C:\\", "C:\\"},
  };
  for (Row const & row : rows) {
    EXPECT_EQ(full(entry(row.path)), row.without);
    EXPECT_EQ(fullWithSeparator(entry(row.path)), row.with);
    EXPECT_EQ(text(entry(row.path).GetFull(SV::FSYS_STYLE_HOST, -1)), row.with);
  }
}

TEST_F(DirEntryTest, FullPathOfARelativeEntryBeginsAtTheWorkingFolderOfTheMoment) {
  std::string const before = workingFolder();
  DirEntry const relative = entry("sub\\file.txt");
  EXPECT_EQ(full(relative), before + "\\sub\\file.txt");
  EXPECT_EQ(full(entry("")), before);
  EXPECT_EQ(fullWithSeparator(entry("")), before + "\\");
  EXPECT_EQ(full(entry(".")), before);
  CreateDirectoryA("moved", nullptr);
  SetCurrentDirectoryA("moved");
  EXPECT_EQ(full(relative), before + "\\moved\\sub\\file.txt");
  EXPECT_EQ(full(entry("..")), before);
  EXPECT_EQ(full(entry("..\\x")), before + "\\x");
  SetCurrentDirectoryA("..");
}

TEST_F(DirEntryTest, ADriveAloneIsItsWorkingFolder) {
  std::string const drive = workingFolder().substr(0, 2);
  EXPECT_EQ(full(entry(drive.c_str())), workingFolder());
  EXPECT_EQ(full(entry((drive + "file.txt").c_str())), workingFolder() + "\\file.txt");
  EXPECT_EQ(text(entry((drive + "file.txt").c_str()).GetName()), "file.txt");
  EXPECT_EQ(full(entry((drive + "file.txt").c_str()).GetPath()), workingFolder());
  EXPECT_EQ(full(entry(drive.c_str()).GetPath()), full(entry(workingFolder().c_str()).GetPath()));
  EXPECT_EQ(text(entry(drive.c_str()).GetName()), "");
}

TEST_F(DirEntryTest, ALeadingSeparatorIsTheRootOfTheWorkingDrive) {
  std::string const drive = workingFolder().substr(0, 2);
  EXPECT_EQ(full(entry("\\")), drive + "\\");
  EXPECT_EQ(full(entry("/dir/file")), drive + "\\dir\\file");
  EXPECT_EQ(full(entry("\\file").GetPath()), drive + "\\");
}

TEST_F(DirEntryTest, FolderOfAFolderByItsDotsIsTheRealOne) {
  CreateDirectoryA("sub", nullptr);
  EXPECT_EQ(full(entry("sub\\.").GetPath()), workingFolder());
  EXPECT_EQ(full(entry(".").GetPath()), full(entry("..")));
  EXPECT_EQ(full(entry("..").GetPath()), full(entry("..\\..")));
  EXPECT_EQ(full(entry("").GetPath()), workingFolder());
}

TEST_F(DirEntryTest, LimitCutsTheFullPath) {
  DirEntry const path = entry("C:\\dir\\file.txt");
  EXPECT_EQ(text(path.GetFull(SV::FSYS_STYLE_HOST, 0, SV::STRING_MAXLEN)), "C:\\dir\\file.txt");
  EXPECT_EQ(text(path.GetFull(SV::FSYS_STYLE_HOST, 1, 16)), "C:\\dir\\file.txt\\");
  EXPECT_EQ(text(path.GetFull(SV::FSYS_STYLE_HOST, 1, 15)), "C:\\dir\\file.txt");
  EXPECT_EQ(text(path.GetFull(SV::FSYS_STYLE_HOST, 0, 6)), "C:\\dir");
  EXPECT_EQ(text(path.GetFull(SV::FSYS_STYLE_HOST, 0, 0)), "");
  EXPECT_EQ(text(path.GetFull(SV::FSYS_STYLE_HOST, 0, -5)), "");
}

TEST_F(DirEntryTest, ThePathEndsAtItsNul) { EXPECT_EQ(full(DirEntry(String("C:\\a.txt\0b", 11))), "C:\\a.txt"); }

TEST_F(DirEntryTest, PathsLongerThanTheSystemTakesAreNamesThatDoNotExist) {
  std::string const longName(40000, 'x');
  DirEntry const path(String(("C:\\" + longName + ".txt").c_str()));
  EXPECT_EQ(text(path.GetBase()), longName);
  EXPECT_EQ(full(path.GetPath()), "C:\\");
  EXPECT_FALSE(path.Exists());
  EXPECT_NE(path.Kill(), SV::FSYS_ERR_OK);
  EXPECT_NE(path.MoveTo(entry("x")), SV::FSYS_ERR_OK);
  EXPECT_NE(fullWithSeparator(path), "");
}

/// Every path of up to five of these characters has parts that fit together.
TEST_F(DirEntryTest, PartsOfEveryOddPathFitTogether) {
  std::string const characters = "\\/:.?Ca";
  std::vector<std::string> paths = {""};
  for (std::size_t start = 0, end = 1, length = 1; length <= 5; ++length, start = end, end = paths.size()) {
    for (std::size_t i = start; i < end; ++i) {
      for (char const c : characters)
        paths.push_back(paths[i] + c);
    }
  }
  for (std::string const & path : paths) {
    DirEntry const whole = entry(path.c_str());
    std::string const name = text(whole.GetName());
    std::string const base = text(whole.GetBase());
    std::string const withSeparator = fullWithSeparator(whole);
    ASSERT_EQ(name.find_first_of("\\/"), std::string::npos) << path;
    ASSERT_EQ(name.compare(0, base.size(), base), 0) << path;
    ASSERT_EQ(withSeparator.back(), '\\') << path;
    ASSERT_TRUE(withSeparator == full(whole) || withSeparator == full(whole) + "\\") << path;
    DirEntry same = whole;
    same.ChangeBase(base.c_str());
    ASSERT_EQ(full(same), full(whole)) << path;
    ASSERT_FALSE(full(whole.GetPath()).empty()) << path;
  }
}

TEST_F(DirEntryTest, ExistsKnowsFilesAndFolders) {
  write("file.txt");
  CreateDirectoryA("folder", nullptr);
  EXPECT_TRUE(entry("file.txt").Exists());
  EXPECT_TRUE(entry("folder").Exists());
  EXPECT_TRUE(entry("folder\\").Exists());
  EXPECT_TRUE(entry(".").Exists());
  EXPECT_TRUE(entry("C:\\").Exists());
  EXPECT_FALSE(entry("other.txt").Exists());
  EXPECT_FALSE(entry("nowhere\\file.txt").Exists());
  EXPECT_FALSE(entry("*.txt").Exists());
  EXPECT_FALSE(entry("").Exists());
}

TEST_F(DirEntryTest, KillDeletesAFile) {
  write("file.txt");
  EXPECT_EQ(entry("file.txt").Kill(), 0u);
  EXPECT_EQ(testfiles::read("file.txt"), "(none)");
}

TEST_F(DirEntryTest, KillDeletesAnEmptyFolder) {
  CreateDirectoryA("folder", nullptr);
  EXPECT_EQ(entry("folder\\").Kill(), 0u);
  EXPECT_FALSE(entry("folder").Exists());
}

TEST_F(DirEntryTest, KillGivesTheSystemsErrorAndDeletesNothing) {
  CreateDirectoryA("full", nullptr);
  write("full\\file.txt");
  write("locked.txt");
  write("readonly.txt");
  SetFileAttributesA("readonly.txt", FILE_ATTRIBUTE_READONLY);
  HANDLE const lock = CreateFileA("locked.txt", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(lock, INVALID_HANDLE_VALUE);
  EXPECT_EQ(entry("none.txt").Kill(), DWORD{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(entry("nowhere\\none.txt").Kill(), DWORD{ERROR_PATH_NOT_FOUND});
  EXPECT_EQ(entry("full").Kill(), DWORD{ERROR_DIR_NOT_EMPTY});
  EXPECT_EQ(entry("locked.txt").Kill(), DWORD{ERROR_SHARING_VIOLATION});
  EXPECT_EQ(entry("readonly.txt").Kill(), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_NE(entry("*.txt").Kill(), SV::FSYS_ERR_OK);
  EXPECT_NE(entry("").Kill(), SV::FSYS_ERR_OK);
  CloseHandle(lock);
  SetFileAttributesA("readonly.txt", FILE_ATTRIBUTE_NORMAL);
  EXPECT_TRUE(entry("full\\file.txt").Exists());
  EXPECT_TRUE(entry("locked.txt").Exists());
  EXPECT_TRUE(entry("readonly.txt").Exists());
}

TEST_F(DirEntryTest, NamesWithBytesAbove127AreReadInTheCodePage) {
  write("\xC4rger_\xFC.txt", "umlauts");
  DirEntry const umlauts = entry("\xC4rger_\xFC.txt");
  EXPECT_TRUE(umlauts.Exists());
  EXPECT_EQ(text(umlauts.GetBase()), "\xC4rger_\xFC");
  EXPECT_EQ(umlauts.MoveTo(entry("\xDF.txt")), 0u);
  EXPECT_EQ(testfiles::read("\xDF.txt"), "umlauts");
  EXPECT_EQ(entry("\xDF.txt").Kill(), 0u);
  EXPECT_FALSE(entry("\xDF.txt").Exists());
}

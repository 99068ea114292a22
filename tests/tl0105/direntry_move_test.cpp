#include "tools/direntry.hpp"

#include "support/imports/import_hook.hpp"
#include "testfiles.hpp"
#include "tools/dir.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using SV::DirEntry;
using testfiles::entry;
using testfiles::read;
using testfiles::write;

namespace {

class DirEntryMove : public testfiles::InOwnFolder {};

/// A folder on another file system, which goes with the test that asks for it.
class OtherDrive : public testfiles::InOwnFolder {
protected:
  void SetUp() override {
    InOwnFolder::SetUp();
    if (!CreateDirectoryA(folder_.c_str(), nullptr))
      GTEST_SKIP() << "there is no second file system at " << folder_;
    write("probe");
    bool const isOther = !MoveFileExA("probe", path("probe").c_str(), 0) && GetLastError() == ERROR_NOT_SAME_DEVICE;
    DeleteFileA("probe");
    DeleteFileA(path("probe").c_str());
    if (!isOther)
      GTEST_SKIP() << folder_ << " is on the drive of the working folder";
  }

  void TearDown() override {
    for (char const * name :
         {"moved\\sub\\deep.txt", "moved\\sub", "moved\\file.txt", "moved\\readonly.txt", "moved", "file.txt"}) {
      SetFileAttributesA(path(name).c_str(), FILE_ATTRIBUTE_NORMAL);
      DeleteFileA(path(name).c_str());
      RemoveDirectoryA(path(name).c_str());
    }
    RemoveDirectoryA(folder_.c_str());
    InOwnFolder::TearDown();
  }

  void expectSourceWhole() const;

  std::string path(char const * name) const { return folder_ + "\\" + name; }
  DirEntry there(char const * name) const { return entry(path(name).c_str()); }

private:
  std::string folder_ = "Z:\\dev\\shm\\kivara-test." + std::to_string(GetCurrentProcessId());
};

/// Plays the part of the system for the tools library.
void replace(char const * function, void * replacement) {
  support::replaceImports(GetModuleHandleA("TL0105.dll"), "KERNEL32.dll", {{function, replacement}});
}

void answerAttributes(DWORD(WINAPI * answer)(char const *)) {
  replace("GetFileAttributesA", reinterpret_cast<void *>(answer));
}

std::vector<std::string> deleted;
std::string refusedName; ///< the end of the one name that is refused

bool isRefused(char const * name) {
  SetLastError(ERROR_ACCESS_DENIED);
  return std::string(name).ends_with(refusedName);
}
BOOL WINAPI refuseOne(char const * name) { return !isRefused(name) && DeleteFileA(name); }
BOOL WINAPI refuseOneFolder(char const * name) { return !isRefused(name) && RemoveDirectoryA(name); }

void makeTree() {
  CreateDirectoryA("tree", nullptr);
  CreateDirectoryA("tree\\sub", nullptr);
  write("tree\\file.txt", "near");
  write("tree\\sub\\deep.txt", "deep");
  write("tree\\readonly.txt", "fixed");
  SetFileAttributesA("tree\\readonly.txt", FILE_ATTRIBUTE_READONLY);
}

} // namespace

TEST_F(DirEntryMove, MovesAFileToAnotherName) {
  write("file.txt", "moved");
  EXPECT_EQ(entry("file.txt").MoveTo(entry("other.txt")), 0u);
  EXPECT_EQ(read("file.txt"), "(none)");
  EXPECT_EQ(read("other.txt"), "moved");
}

TEST_F(DirEntryMove, MovesAFileIntoAnotherFolder) {
  write("file.txt", "moved");
  CreateDirectoryA("folder", nullptr);
  EXPECT_EQ(entry("file.txt").MoveTo(entry("folder\\file.txt")), 0u);
  EXPECT_EQ(read("folder\\file.txt"), "moved");
}

TEST_F(DirEntryMove, MovesAFolderWithAllInIt) {
  makeTree();
  EXPECT_EQ(entry("tree\\").MoveTo(entry("moved\\")), 0u);
  EXPECT_FALSE(entry("tree").Exists());
  EXPECT_EQ(read("moved\\sub\\deep.txt"), "deep");
}

/// Wine reports success and keeps the old spelling, so that the name itself is not looked at.
TEST_F(DirEntryMove, TakesItsOwnNameInAnotherCase) {
  write("file.txt", "moved");
  EXPECT_EQ(entry("file.txt").MoveTo(entry("FILE.txt")), 0u);
  EXPECT_EQ(read("FILE.txt"), "moved");
}

TEST_F(DirEntryMove, DoesNotOverwrite) {
  write("file.txt", "source");
  write("other.txt", "target");
  CreateDirectoryA("folder", nullptr);
  EXPECT_EQ(entry("file.txt").MoveTo(entry("other.txt")), DWORD{ERROR_ALREADY_EXISTS});
  EXPECT_EQ(entry("file.txt").MoveTo(entry("folder")), DWORD{ERROR_ALREADY_EXISTS});
  EXPECT_EQ(entry("folder").MoveTo(entry("other.txt")), DWORD{ERROR_ALREADY_EXISTS});
  EXPECT_EQ(read("file.txt"), "source");
  EXPECT_EQ(read("other.txt"), "target");
}

TEST_F(DirEntryMove, GivesTheSystemsErrorAndLeavesTheSource) {
  write("file.txt", "source");
  EXPECT_EQ(entry("none.txt").MoveTo(entry("other.txt")), DWORD{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(entry("nowhere\\none.txt").MoveTo(entry("other.txt")), DWORD{ERROR_PATH_NOT_FOUND});
  EXPECT_EQ(entry("file.txt").MoveTo(entry("nowhere\\file.txt")), DWORD{ERROR_PATH_NOT_FOUND});
  EXPECT_NE(entry("file.txt").MoveTo(entry("")), SV::FSYS_ERR_OK);
  EXPECT_NE(entry("").MoveTo(entry("other.txt")), SV::FSYS_ERR_OK);
  EXPECT_NE(entry("*.txt").MoveTo(entry("other.txt")), SV::FSYS_ERR_OK);
  HANDLE const lock = CreateFileA("file.txt", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(entry("file.txt").MoveTo(entry("other.txt")), DWORD{ERROR_SHARING_VIOLATION});
  CloseHandle(lock);
  EXPECT_EQ(read("file.txt"), "source");
  EXPECT_EQ(read("other.txt"), "(none)");
}

TEST_F(OtherDrive, TakesAFile) {
  write("file.txt", "moved");
  EXPECT_EQ(entry("file.txt").MoveTo(there("file.txt")), 0u);
  EXPECT_EQ(read("file.txt"), "(none)");
  EXPECT_EQ(read(path("file.txt").c_str()), "moved");
}

TEST_F(OtherDrive, IsNotOverwrittenEither) {
  write("file.txt", "source");
  write(path("file.txt").c_str(), "target");
  EXPECT_NE(entry("file.txt").MoveTo(there("file.txt")), SV::FSYS_ERR_OK);
  EXPECT_EQ(read("file.txt"), "source");
  EXPECT_EQ(read(path("file.txt").c_str()), "target");
}

TEST_F(OtherDrive, TakesAFolderWithAllInIt) {
  makeTree();
  EXPECT_EQ(entry("tree").MoveTo(there("moved")), 0u);
  EXPECT_FALSE(entry("tree").Exists());
  EXPECT_EQ(read(path("moved\\file.txt").c_str()), "near");
  EXPECT_EQ(read(path("moved\\sub\\deep.txt").c_str()), "deep");
  EXPECT_EQ(read(path("moved\\readonly.txt").c_str()), "fixed");
  EXPECT_NE(GetFileAttributesA(path("moved\\readonly.txt").c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
}

TEST_F(OtherDrive, KeepsNothingOfAFolderThatCouldNotBeCopied) {
  makeTree();
  HANDLE const lock = CreateFileA("tree\\sub\\deep.txt", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(entry("tree").MoveTo(there("moved")), DWORD{ERROR_SHARING_VIOLATION});
  CloseHandle(lock);
  EXPECT_FALSE(there("moved").Exists());
  EXPECT_EQ(read("tree\\file.txt"), "near");
  EXPECT_EQ(read("tree\\readonly.txt"), "fixed");
  EXPECT_EQ(read("tree\\sub\\deep.txt"), "deep");
}

TEST_F(OtherDrive, TakesNoLinkToAFolderWhoseFilesBelongElsewhere) {
  makeTree();
  // Wine makes no links.
  answerAttributes([](char const * name) -> DWORD {
    DWORD const attributes = GetFileAttributesA(name);
    bool const isSource = std::string(name).ends_with("tree");
    return isSource ? attributes | FILE_ATTRIBUTE_REPARSE_POINT : attributes;
  });
  EXPECT_EQ(entry("tree").MoveTo(there("moved")), DWORD{ERROR_NOT_SAME_DEVICE});
  EXPECT_EQ(GetFileAttributesA(path("moved").c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(read("tree\\file.txt"), "near");
}

TEST_F(OtherDrive, GivesTheSystemsErrorWhenTheSourceHasGoneMeanwhile) {
  makeTree();
  answerAttributes([](char const * name) -> DWORD {
    static int questions = 0;
    if (++questions == 1) // before the system is asked to move it
      return GetFileAttributesA(name);
    SetLastError(ERROR_NETNAME_DELETED);
    return INVALID_FILE_ATTRIBUTES;
  });
  EXPECT_EQ(entry("tree").MoveTo(there("moved")), DWORD{ERROR_NETNAME_DELETED});
  EXPECT_EQ(read("tree\\file.txt"), "near");
  EXPECT_EQ(GetFileAttributesA(path("moved").c_str()), INVALID_FILE_ATTRIBUTES);
}

/// The tree is as makeTree made it, and nothing of it is on the other drive.
void OtherDrive::expectSourceWhole() const {
  EXPECT_EQ(read("tree\\file.txt"), "near");
  EXPECT_EQ(read("tree\\sub\\deep.txt"), "deep");
  EXPECT_EQ(read("tree\\readonly.txt"), "fixed");
  EXPECT_NE(GetFileAttributesA("tree\\readonly.txt") & FILE_ATTRIBUTE_READONLY, 0u);
  EXPECT_EQ(SV::Dir(entry("tree"), 0xFFF).Count(), 3u);
  EXPECT_FALSE(there("moved").Exists());
}

TEST_F(OtherDrive, LeavesAFolderWholeThatHasASubfolderWhichCannotBeListed) {
  makeTree();
  HANDLE const lock = CreateFileA("tree\\sub", FILE_LIST_DIRECTORY, FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  ASSERT_NE(lock, INVALID_HANDLE_VALUE);
  EXPECT_EQ(entry("tree").MoveTo(there("moved")), DWORD{ERROR_SHARING_VIOLATION});
  CloseHandle(lock);
  expectSourceWhole();
}

TEST_F(OtherDrive, LeavesAFolderWholeWhoseListBreaksOff) {
  makeTree();
  replace("FindNextFileA", reinterpret_cast<void *>(+[](HANDLE search, WIN32_FIND_DATAA * found) -> BOOL {
            if (FindNextFileA(search, found) && std::string(found->cFileName) != "deep.txt")
              return TRUE;
            SetLastError(std::string(found->cFileName) == "deep.txt" ? ERROR_NETNAME_DELETED : ERROR_NO_MORE_FILES);
            return FALSE;
          }));
  EXPECT_EQ(entry("tree").MoveTo(there("moved")), DWORD{ERROR_NETNAME_DELETED});
  replace("FindNextFileA", reinterpret_cast<void *>(FindNextFileA));
  expectSourceWhole();
}

TEST_F(OtherDrive, LeavesAFolderWholeThatHoldsAFileWhichMayBeReadButNotRemoved) {
  makeTree();
  replace("DeleteFileA", reinterpret_cast<void *>(+[](char const * name) -> BOOL {
            deleted.emplace_back(name);
            return DeleteFileA(name);
          }));
  HANDLE const lock = CreateFileA("tree\\file.txt", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(entry("tree").MoveTo(there("moved")), DWORD{ERROR_SHARING_VIOLATION});
  CloseHandle(lock);
  expectSourceWhole();
  for (std::string const & name : deleted)
    EXPECT_EQ(name.find("tree"), std::string::npos) << "found out before anything of the source was removed";
}

TEST_F(OtherDrive, CopiesBackWhatWasRemovedBeforeAFileThatCouldNotBe) {
  makeTree();
  for (char const * const refused : {"tree\\file.txt", "tree\\readonly.txt", "tree\\sub\\deep.txt"}) {
    SCOPED_TRACE(refused);
    refusedName = refused;
    replace("DeleteFileA", reinterpret_cast<void *>(refuseOne));
    EXPECT_EQ(entry("tree").MoveTo(there("moved")), DWORD{ERROR_ACCESS_DENIED});
    expectSourceWhole();
  }
}

TEST_F(OtherDrive, CopiesBackAFolderThatCouldNotBeRemovedBecauseAFileCame) {
  makeTree();
  replace("RemoveDirectoryA", reinterpret_cast<void *>(+[](char const * name) -> BOOL {
            if (std::string(name).ends_with("tree")) {
              SetLastError(ERROR_DIR_NOT_EMPTY);
              return FALSE;
            }
            return RemoveDirectoryA(name);
          }));
  EXPECT_EQ(entry("tree").MoveTo(there("moved")), DWORD{ERROR_DIR_NOT_EMPTY});
  expectSourceWhole();
}

TEST_F(OtherDrive, KeepsTheWholeCopyWhereTheSourceCanNeitherBeRemovedNorCompleted) {
  makeTree();
  refusedName = "tree\\sub";
  replace("RemoveDirectoryA", reinterpret_cast<void *>(refuseOneFolder));
  replace("CopyFileA", reinterpret_cast<void *>(+[](char const * from, char const * to, BOOL keep) -> BOOL {
            if (std::string(from).find("\\tree\\") != std::string::npos)
              return CopyFileA(from, to, keep);
            SetLastError(ERROR_DISK_FULL);
            return FALSE;
          }));
  EXPECT_EQ(entry("tree").MoveTo(there("moved")), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(read(path("moved\\file.txt").c_str()), "near");
  EXPECT_EQ(read(path("moved\\sub\\deep.txt").c_str()), "deep");
  EXPECT_EQ(read(path("moved\\readonly.txt").c_str()), "fixed");
}

TEST_F(OtherDrive, LeavesAnExistingFolderAsItIs) {
  makeTree();
  CreateDirectoryA(path("moved").c_str(), nullptr);
  write(path("moved\\file.txt").c_str(), "target");
  EXPECT_EQ(entry("tree").MoveTo(there("moved")), DWORD{ERROR_ALREADY_EXISTS});
  EXPECT_EQ(read(path("moved\\file.txt").c_str()), "target");
  EXPECT_EQ(read("tree\\file.txt"), "near");
}

#include "aplatfrm.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

/// The program's folder as the system returns it, with a separator.
std::string programFolder() {
  char program[MAX_PATH];
  GetModuleFileNameA(nullptr, program, sizeof program);
  std::string const path(program);
  return path.substr(0, path.rfind('\\') + 1);
}

DWORD registryMajorVersion() {
  DWORD major = 0;
  DWORD size = sizeof major;
  RegGetValueA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", "CurrentMajorVersionNumber",
               RRF_RT_REG_DWORD, nullptr, &major, &size);
  return major;
}

TEST(Platform, VersionTestsAgreeWithTheSystem) {
  OSVERSIONINFOA version = {};
  version.dwOSVersionInfoSize = sizeof version;
  GetVersionExA(&version);
  DWORD const number = version.dwMajorVersion * 100 + version.dwMinorVersion;
  EXPECT_EQ(Kiv_IsAtLeastWindowsXP(), number >= 501);
  EXPECT_EQ(Kiv_IsAtLeastWindowsVista(), number >= 600);
  EXPECT_EQ(Kiv_IsAtLeastWindows7(), number >= 601);
}

TEST(Platform, Windows10IsKnownFromTheRegistry) { EXPECT_EQ(Kiv_IsAtLeastWindows10(), registryMajorVersion() >= 10); }

TEST(Platform, A64BitProgramIsNotTakenForA32BitOneOnA64BitSystem) { EXPECT_FALSE(Kiv_IsRunningOn64Bits()); }

TEST(Platform, ScaleIsDotsPerInchBy96) {
  HDC const screen = GetDC(nullptr);
  EXPECT_EQ(Kiv_GetSystemDPIScaleX(), GetDeviceCaps(screen, LOGPIXELSX) / 96.0);
  EXPECT_EQ(Kiv_GetSystemDPIScaleY(), GetDeviceCaps(screen, LOGPIXELSY) / 96.0);
  ReleaseDC(nullptr, screen);
}

TEST(Platform, ProgramPathEndsInASeparatorWhenAskedFor) {
  std::string const folder = programFolder();
  EXPECT_EQ(Kiv_GetProgramPath(true).c_str(), folder);
  EXPECT_EQ(Kiv_GetProgramPath(false).c_str(), folder.substr(0, folder.size() - 1));
}

TEST(Platform, ProgramPathDoesNotFollowTheWorkingDirectory) {
  SetCurrentDirectoryA("C:\\");
  EXPECT_EQ(Kiv_GetProgramPath(true).c_str(), programFolder());
}

TEST(ProgramPathFilename, OfARelativeNameLiesInTheProgramFolder) {
  EXPECT_EQ(Kiv_GetProgramPathFilename("a").c_str(), programFolder() + "a");
  EXPECT_EQ(Kiv_GetProgramPathFilename("dir\\lang.ini").c_str(), programFolder() + "dir\\lang.ini");
}

TEST(ProgramPathFilename, OfAnAbsoluteNameIsTheName) {
  for (char const * name : {"C:\\x", "c:/x", "\\x", "/x", "\\\\server\\share\\x", "1:\\*"})
    EXPECT_STREQ(Kiv_GetProgramPathFilename(name).c_str(), name);
}

TEST(ProgramPathFilename, OfADriveWithoutASeparatorIsJoined) {
  EXPECT_EQ(Kiv_GetProgramPathFilename("C:x").c_str(), programFolder() + "C:x");
}

TEST(ProgramPathFilename, OfAnInvalidRelativeNameIsTheName) {
  for (char const * name : {"", "con.txt", "a*b", "dir\\", "ab:c", ":"})
    EXPECT_STREQ(Kiv_GetProgramPathFilename(name).c_str(), name);
}

TEST(ProgramPathFilename, OfNullIsEmpty) { EXPECT_EQ(Kiv_GetProgramPathFilename(nullptr).Len(), 0); }

TEST(StartDirectory, IsEmptyBeforeTheFrameHasStoredIt) {
  EXPECT_EQ(Kiv_GetStartCWD(true).Len(), 0);
  EXPECT_EQ(Kiv_GetStartCWD(false).Len(), 0);
}

} // namespace

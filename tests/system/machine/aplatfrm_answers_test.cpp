#include "aplatfrm.hpp"

#include "support/imports/import_hook.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

// The system's answers are the test's own: those of one machine do not show every rule.

namespace {

void replace(char const * dll, std::vector<support::Replacement> const & replacements) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), dll, replacements);
}

template <class Function> void * address(Function * function) { return reinterpret_cast<void *>(function); }

/// A registry with one value of one key.
struct {
  LSTATUS open = ERROR_SUCCESS;
  LSTATUS query = ERROR_SUCCESS;
  DWORD size = 4;
  DWORD major = 0;

  HKEY root = nullptr;
  std::string key;
  std::string value;
  REGSAM access = 0;
  int opened = 0;
  int closed = 0;
} registry;

LSTATUS WINAPI openKey(HKEY root, char const * key, DWORD, REGSAM access, HKEY * result) {
  registry.root = root;
  registry.key = key;
  registry.access = access;
  if (registry.open == ERROR_SUCCESS) {
    *result = HKEY_CURRENT_USER;
    ++registry.opened;
  }
  return registry.open;
}

LSTATUS WINAPI queryValue(HKEY, char const * value, DWORD *, DWORD *, BYTE * data, DWORD * size) {
  registry.value = value;
  EXPECT_EQ(*size, 4u);
  if (registry.query == ERROR_SUCCESS)
    std::memcpy(data, &registry.major, registry.size);
  *size = registry.size;
  return registry.query;
}

LSTATUS WINAPI closeKey(HKEY) { return ++registry.closed, ERROR_SUCCESS; }

class Windows10 : public testing::Test {
protected:
  Windows10() {
    replace("ADVAPI32.dll", {{"RegOpenKeyExA", address(openKey)},
                             {"RegQueryValueExA", address(queryValue)},
                             {"RegCloseKey", address(closeKey)}});
  }
  ~Windows10() override { EXPECT_EQ(registry.opened, registry.closed); }
};

TEST_F(Windows10, IsThereFromMajorVersion10On) {
  for (DWORD const major : {0, 6, 9, 10, 11, 1000}) {
    registry.major = major;
    EXPECT_EQ(Kiv_IsAtLeastWindows10(), major >= 10) << major;
  }
}

TEST_F(Windows10, IsReadFromItsPlaceInTheRegistry) {
  Kiv_IsAtLeastWindows10();
  EXPECT_EQ(registry.root, HKEY_LOCAL_MACHINE);
  EXPECT_EQ(registry.key, "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion");
  EXPECT_EQ(registry.value, "CurrentMajorVersionNumber");
  EXPECT_EQ(registry.access, 0x20019u);
}

TEST_F(Windows10, IsNotThereWithoutTheKey) {
  registry.major = 10;
  registry.open = ERROR_FILE_NOT_FOUND;
  EXPECT_FALSE(Kiv_IsAtLeastWindows10());
}

TEST_F(Windows10, IsNotThereWithoutTheValue) {
  registry.major = 10;
  registry.query = ERROR_FILE_NOT_FOUND;
  EXPECT_FALSE(Kiv_IsAtLeastWindows10());
}

TEST_F(Windows10, IsNotThereWhenTheValueIsNoNumberOfFourBytes) {
  registry.major = 10;
  registry.size = 2;
  EXPECT_FALSE(Kiv_IsAtLeastWindows10());
  registry.size = 8;
  registry.query = ERROR_MORE_DATA;
  EXPECT_FALSE(Kiv_IsAtLeastWindows10());
}

// The same registry for SQL Server.

std::vector<REGSAM> accesses;
LSTATUS WINAPI openServers(HKEY root, char const * key, DWORD options, REGSAM access, HKEY * result) {
  accesses.push_back(access);
  return openKey(root, key, options, access, result);
}

DWORD room = 0;
LSTATUS WINAPI queryText(HKEY, char const * value, DWORD *, DWORD *, BYTE *, DWORD * size) {
  registry.value = value;
  room = *size;
  return ERROR_FILE_NOT_FOUND;
}

class SQLServerRegistry : public testing::Test {
protected:
  SQLServerRegistry() {
    replace("ADVAPI32.dll", {{"RegOpenKeyExA", address(openServers)},
                             {"RegQueryValueExA", address(queryText)},
                             {"RegCloseKey", address(closeKey)}});
  }
  ~SQLServerRegistry() override { EXPECT_EQ(registry.opened, registry.closed); }

  long version = -77;
};

TEST_F(SQLServerRegistry, IsReadInBothViewsForTheInstancesThoughOneFails) {
  ISequence<SV::String> instances;
  Kiv_GetSQLServerInstances(instances);
  EXPECT_EQ(accesses, (std::vector<REGSAM>{0x20019, 0x20119}));
  EXPECT_EQ(registry.root, HKEY_LOCAL_MACHINE);
  EXPECT_EQ(registry.key, "SOFTWARE\\Microsoft\\Microsoft SQL Server");
  EXPECT_EQ(registry.value, "InstalledInstances");
  EXPECT_EQ(room, 4096u);
  EXPECT_EQ(registry.opened, 2);
}

TEST_F(SQLServerRegistry, IsReadInTheOwnViewForTheVersion) {
  EXPECT_EQ(Kiv_DetermineSQLServerVersion("SMALL", "", version), 1);
  EXPECT_EQ(accesses, std::vector<REGSAM>{0x20019});
  EXPECT_EQ(registry.root, HKEY_LOCAL_MACHINE);
  EXPECT_EQ(registry.key, "SOFTWARE\\Microsoft\\Microsoft SQL Server\\SMALL\\MSSQLServer\\CurrentVersion");
  EXPECT_EQ(registry.value, "CurrentVersion");
  EXPECT_EQ(room, 256u);
  EXPECT_EQ(registry.opened, 1);
  EXPECT_EQ(version, -1);
}

TEST_F(SQLServerRegistry, IsNotReadForAnotherMachine) {
  EXPECT_EQ(Kiv_DetermineSQLServerVersion("", "server", version), 1);
  EXPECT_TRUE(accesses.empty());
  EXPECT_EQ(version, -77);
}

OSVERSIONINFOA told = {};

BOOL WINAPI tellVersion(OSVERSIONINFOA * record) {
  EXPECT_EQ(record->dwOSVersionInfoSize, 0x94u);
  *record = told;
  return TRUE;
}

TEST(WindowsVersionCall, DecidesAboutXPVistaAnd7) {
  replace("KERNEL32.dll", {{"GetVersionExA", address(tellVersion)}});
  struct {
    DWORD major, minor, platform;
    bool xp, vista, seven;
  } const rows[] = {{5, 0, 2, false, false, false}, {5, 1, 2, true, false, false}, {6, 0, 2, true, true, false},
                    {6, 1, 2, true, true, true},    {7, 0, 2, true, true, true},   {6, 1, 1, false, false, false}};
  for (auto const & row : rows) {
    told.dwMajorVersion = row.major;
    told.dwMinorVersion = row.minor;
    told.dwPlatformId = row.platform;
    EXPECT_EQ(Kiv_IsAtLeastWindowsXP(), row.xp) << row.major << '.' << row.minor;
    EXPECT_EQ(Kiv_IsAtLeastWindowsVista(), row.vista) << row.major << '.' << row.minor;
    EXPECT_EQ(Kiv_IsAtLeastWindows7(), row.seven) << row.major << '.' << row.minor;
  }
}

BOOL WINAPI answerWow64(HANDLE process, BOOL * answer) {
  EXPECT_EQ(process, GetCurrentProcess());
  *answer = TRUE;
  return TRUE;
}

bool hasWow64 = true;
FARPROC WINAPI findEntry(HMODULE module, char const * name) {
  EXPECT_EQ(module, GetModuleHandleA("kernel32"));
  EXPECT_STREQ(name, "IsWow64Process");
  return hasWow64 ? reinterpret_cast<FARPROC>(address(answerWow64)) : nullptr;
}

TEST(RunningOn64Bits, IsTheAnswerOfTheSystemsFunction) {
  replace("KERNEL32.dll", {{"GetProcAddress", address(findEntry)}});
  EXPECT_TRUE(Kiv_IsRunningOn64Bits());
}

TEST(RunningOn64Bits, IsFalseOnASystemWithoutTheFunction) {
  hasWow64 = false;
  replace("KERNEL32.dll", {{"GetProcAddress", address(findEntry)}});
  EXPECT_FALSE(Kiv_IsRunningOn64Bits());
}

/// A screen of the test's own.
struct {
  int dotsX = 0;
  int dotsY = 0;
  int asked = 0;
  int held = 0;
} screen;

HDC WINAPI getScreen(HWND window) {
  EXPECT_EQ(window, nullptr);
  ++screen.held;
  return reinterpret_cast<HDC>(&screen);
}

int WINAPI releaseScreen(HWND, HDC) { return --screen.held, 1; }

int WINAPI deviceCaps(HDC, int capability) {
  ++screen.asked;
  return capability == 88 ? screen.dotsX : capability == 90 ? screen.dotsY : -1;
}

class ScreenScale : public testing::Test {
protected:
  ScreenScale() {
    replace("USER32.dll", {{"GetDC", address(getScreen)}, {"ReleaseDC", address(releaseScreen)}});
    replace("GDI32.dll", {{"GetDeviceCaps", address(deviceCaps)}});
  }
  ~ScreenScale() override { EXPECT_EQ(screen.held, 0); }
};

TEST_F(ScreenScale, HasAValueForEachDirection) {
  screen.dotsX = 144;
  screen.dotsY = 100;
  EXPECT_EQ(Kiv_GetSystemDPIScaleX(), 1.5);
  EXPECT_EQ(Kiv_GetSystemDPIScaleY(), 100 / 96.0);
}

TEST_F(ScreenScale, IsAskedOnce) {
  screen.dotsX = 192;
  Kiv_GetSystemDPIScaleX();
  screen.dotsX = 96;
  EXPECT_EQ(Kiv_GetSystemDPIScaleX(), 2.0);
  EXPECT_EQ(screen.asked, 1);
}

HDC WINAPI getNoScreen(HWND) { return nullptr; }

TEST_F(ScreenScale, IsZeroAsLongAsTheSystemGivesNoScreen) {
  screen.dotsX = 144;
  replace("USER32.dll", {{"GetDC", address(getNoScreen)}});
  EXPECT_EQ(Kiv_GetSystemDPIScaleX(), 0);
  EXPECT_EQ(screen.asked, 0);
  replace("USER32.dll", {{"GetDC", address(getScreen)}});
  EXPECT_EQ(Kiv_GetSystemDPIScaleX(), 1.5);
}

TEST_F(ScreenScale, OfZeroIsAskedForAgain) {
  EXPECT_EQ(Kiv_GetSystemDPIScaleY(), 0);
  screen.dotsY = 120;
  EXPECT_EQ(Kiv_GetSystemDPIScaleY(), 1.25);
}

} // namespace

// Files that the library writes or names: who can guess them, and what is in them.

#include "afileman.hpp"
#include "amsgwatch.hpp"
#include "support/data/files.hpp"
#include "sv/sv.hpp"
#include "sv0105/application/testapplication.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <bitset>
#include <cstdlib>
#include <set>
#include <string>

namespace {

constexpr std::size_t kBits = 128;
using Uuid = std::bitset<kBits>;

/// Of a name that was made with the prefix "x" and no extension. The first digit is the highest four bits.
Uuid uuidOf(std::string const & name) {
  Uuid bits;
  std::size_t digits = 0;
  for (char const c : name.substr(name.rfind('\\') + 2))
    if (c != '-') {
      bits = bits << 4 | Uuid(std::strtoul(std::string(1, c).c_str(), nullptr, 16));
      ++digits;
    }
  EXPECT_EQ(digits, kBits / 4) << name;
  return bits;
}

/// Says that all of a UUID but its version and its variant is random.
constexpr unsigned kRandomVersion = 4;

TEST(TemporaryName, Has122BitsThatCannotBeGuessed) {
  Uuid ones;
  Uuid zeros;
  for (int i = 0; i < 200; ++i) {
    Uuid const uuid = uuidOf(KivSystemFileManager::fileCreateTempName("x", nullptr).c_str());
    EXPECT_EQ((uuid >> 76 & Uuid(0xF)).to_ulong(), kRandomVersion);
    ones |= uuid;
    zeros |= ~uuid;
  }
  // Of 200 random bits all are alike once in 2 to the 199th.
  EXPECT_EQ((ones & zeros).count(), 122u);
}

TEST(TemporaryName, WasNeverThereBefore) {
  _putenv("TEMP=.");
  std::string const name = KivSystemFileManager::fileCreateTempName("x", "txt").c_str();
  HANDLE const file = CreateFileA(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  EXPECT_NE(file, INVALID_HANDLE_VALUE);
  CloseHandle(file);
  EXPECT_EQ(CreateFileA(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr), INVALID_HANDLE_VALUE)
      << "who makes the file so finds out that somebody else was first";
}

class RecordOfTyping : public ToolkitTest {};

TEST_F(RecordOfTyping, HasEachCharacter) {
  SV::Window const window(nullptr, SV::WB_TITLE);
  HWND const handle = static_cast<HWND>(window.GethWnd());
  KivWindowsMessageWatcher::addHookWindow(handle, "logon");
  for (char const c : {'p', 'w'})
    SendMessageA(handle, WM_CHAR, static_cast<WPARAM>(c), 0);
  KivWindowsMessageWatcher::removeHookWindow(handle);
  std::string const record = support::readFile("_kiv_hooks.txt").value_or("");
  EXPECT_NE(record.find("(lp: 00000070h) (wp: 00000000h) (WM_CHAR)"), std::string::npos) << record;
  EXPECT_NE(record.find("(lp: 00000077h) (wp: 00000000h) (WM_CHAR)"), std::string::npos);
}

} // namespace

#include "amsgwatch.hpp"

#include "diagnostics/internal_errors.hpp"
#include "diagnostics/named_messages.hpp"
#include "support/data/files.hpp"
#include "support/data/random.hpp"
#include "sv0105/application/testapplication.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Watcher = KivWindowsMessageWatcher;

constexpr char kFile[] = "_kiv_hooks.txt";

/// The record so far, with '\n' for each line end.
std::string record() {
  std::string text = support::readFile(kFile).value_or("no file");
  std::erase(text, '\r');
  return text;
}

HWND windowOf(std::uintptr_t number) { return reinterpret_cast<HWND>(number); }

/// Calls the hook as the toolkit does.
int tellHook(HWND window, unsigned message, unsigned long long wParam = 0, long long lParam = 0) {
  long long result = 0;
  return SV::Sysdepen::GetHook()(window, message, wParam, lParam, result);
}

/// The line of adding window 0x10 without a name.
constexpr char kAdded[] = "--- [hooking window 00000010h] --- [] ---n";

/// What is recorded after it.
std::string recordAfterAdding() {
  std::string const text = record();
  return text.starts_with(kAdded) ? text.substr(std::strlen(kAdded)) : "not begun: " + text;
}

std::string hexOf(HWND window) {
  char text[16];
  std::snprintf(text, sizeof text, "%08X", static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(window)));
  return text;
}

TEST(MessageWatcher, TakesNoTextBeforeTheFirstWindow) {
  Watcher::addMessage("early %d\n", 1);
  EXPECT_EQ(record(), "no file");
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  EXPECT_EQ(record(), kAdded);
}

TEST(MessageWatcher, WritesTheLineOfAddingWithTheLetterNInPlaceOfALineEnd) {
  Watcher::addHookWindow(windowOf(0xABC), "main window");
  EXPECT_EQ(record(), "--- [hooking window 00000ABCh] --- [main window] ---n");
}

TEST(MessageWatcher, TakesANullNameForAnEmptyOne) {
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  EXPECT_EQ(record(), kAdded);
}

TEST(MessageWatcher, ShowsTheLow32BitsOfHandlesAndParameters) {
  HWND const window = windowOf(0x123456789ABCDEFull);
  Watcher::addHookWindow(window, "w");
  tellHook(window, WM_SIZE, 0x1122334455667788ull, -2);
  Watcher::removeHookWindow(window);
  EXPECT_EQ(record(), "--- [hooking window 89ABCDEFh] --- [w] ---n"
                      "[89ABCDEFh] Msg: (  5 |   5h) (lp: 55667788h) (wp: FFFFFFFEh) (WM_SIZE)\n"
                      "--- [unhooked window 89ABCDEFh] ------------------------------------\n");
}

TEST(MessageWatcher, CrossesTheLabelsOfTheParameters) {
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  tellHook(windowOf(0x10), WM_COMMAND, 0x1, 0x2);
  EXPECT_EQ(recordAfterAdding(), "[00000010h] Msg: (273 | 111h) (lp: 00000001h) (wp: 00000002h) (WM_COMMAND)\n");
}

TEST(MessageWatcher, WritesAMessageWithoutANameAsUnknown) {
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  tellHook(windowOf(0x10), WM_USER + 5);
  tellHook(windowOf(0x10), 0xFFFFFFFF);
  EXPECT_EQ(recordAfterAdding(), "[00000010h] Msg: (1029 | 405h) (lp: 00000000h) (wp: 00000000h) (unknown)\n"
                                 "[00000010h] Msg: ( -1 | FFFFFFFFh) (lp: 00000000h) (wp: 00000000h) (unknown)\n");
}

TEST(MessageWatcher, KnowsThe227NamesAndNoOthers) {
  static_assert(std::size(kNamedMessages) == 227);
  std::map<unsigned, char const *> names;
  for (NamedMessage const & message : kNamedMessages)
    names[message.number] = message.name;
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  std::string expected;
  for (unsigned message = 0; message < 0x480; ++message) {
    tellHook(windowOf(0x10), message);
    char line[128];
    std::snprintf(line, sizeof line, "[00000010h] Msg: (%3u | %3Xh) (lp: 00000000h) (wp: 00000000h) (%s)\n", message,
                  message, names.contains(message) ? names[message] : "unknown");
    expected += line;
  }
  EXPECT_EQ(recordAfterAdding(), expected);
}

TEST(MessageWatcher, AddsAWindowTwiceAsOneEntryWithTwoLines) {
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  EXPECT_EQ(KivWindowsHookManager::Instance().size(), 1u);
  tellHook(windowOf(0x10), WM_NULL);
  EXPECT_EQ(recordAfterAdding(),
            std::string(kAdded) + "[00000010h] Msg: (  0 |   0h) (lp: 00000000h) (wp: 00000000h) (WM_NULL)\n");
}

TEST(MessageWatcher, WritesTheLineOfRemovingAlsoForAWindowThatWasNeverAdded) {
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  Watcher::removeHookWindow(windowOf(0x99));
  EXPECT_EQ(recordAfterAdding(), "--- [unhooked window 00000099h] ------------------------------------\n");
  EXPECT_EQ(KivWindowsHookManager::Instance().size(), 1u);
}

TEST(MessageWatcher, WritesTextsWithoutStampOrLineEnd) {
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  Watcher::addMessage("%d of %s;", 3, "four");
  Watcher::addMessage("100%%\n");
  EXPECT_EQ(recordAfterAdding(), "3 of four;100%\n");
}

TEST(MessageWatcher, TakesANullFormatForAnEmptyText) {
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  char const * const volatile none = nullptr;
  Watcher::addMessage(none); // NOLINT(clang-diagnostic-format-security)
  EXPECT_EQ(recordAfterAdding(), "");
}

TEST(MessageWatcher, AppendsToAFileThatIsThere) {
  support::writeFile(kFile, "old\n");
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  EXPECT_EQ(record(), std::string("old\n") + kAdded);
}

TEST(MessageWatcher, IsOffForTheRestOfTheProcessWhereTheFileCannotBeOpened) {
  ASSERT_TRUE(CreateDirectoryA(kFile, nullptr));
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  EXPECT_EQ(SV::Sysdepen::GetHook(), nullptr);
  RemoveDirectoryA(kFile);
  Watcher::addHookWindow(windowOf(0x20), nullptr);
  Watcher::addMessage("nothing\n");
  Watcher::removeHookWindow(windowOf(0x10));
  EXPECT_EQ(SV::Sysdepen::GetHook(), nullptr);
  EXPECT_EQ(record(), "no file");
  EXPECT_EQ(KivWindowsHookManager::Instance(), std::set<HWND>{windowOf(0x20)}) << "windows are collected all the same";
}

/// Refuses to write, as for a file that may only be read; an administrator of the host is not stopped by the attribute itself.
FILE * openToReadOnly(char const * name, char const * mode) {
  return mode[0] == 'r' ? std::fopen(name, mode) : nullptr;
}

TEST(MessageWatcher, IsOffWithoutAMessageWhereTheFileMayOnlyBeRead) {
  kivtest::InternalErrors const errors;
  support::writeFile(kFile, "old\n");
  support::replaceImports(GetModuleHandleA("kivara.dll"), "msvcrt.dll",
                          {{"fopen", reinterpret_cast<void *>(openToReadOnly)}});
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  EXPECT_EQ(SV::Sysdepen::GetHook(), nullptr);
  EXPECT_TRUE(errors.places().empty());
  EXPECT_EQ(record(), "old\n");
}

// The log says that it cannot read the date of a file that is there; the watch itself says nothing.
TEST(MessageWatcher, IsOffWhereTheFileIsHeldByAnother) {
  kivtest::InternalErrors const errors;
  {
    support::FileInUse const held(kFile);
    Watcher::addHookWindow(windowOf(0x10), nullptr);
  }
  EXPECT_EQ(errors.places(), std::vector<std::string>{"alog.cpp (47)"});
  EXPECT_EQ(SV::Sysdepen::GetHook(), nullptr);
  Watcher::addHookWindow(windowOf(0x20), nullptr);
  EXPECT_EQ(record(), "");
}

TEST(MessageWatcher, KeepsItsFileWhenTheWorkingFolderChanges) {
  support::TempFolder const folder;
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  ASSERT_TRUE(SetCurrentDirectoryA(folder.path().c_str()));
  Watcher::addHookWindow(windowOf(0x20), nullptr);
  EXPECT_FALSE(support::exists(folder / kFile));
  ASSERT_TRUE(SetCurrentDirectoryA(".."));
  EXPECT_EQ(recordAfterAdding(), "--- [hooking window 00000020h] --- [] ---n");
}

TEST(MessageWatcher, StaysInstalledWithoutAnyWindow) {
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  SV::MessageHook const hook = SV::Sysdepen::GetHook();
  Watcher::removeHookWindow(windowOf(0x10));
  EXPECT_EQ(SV::Sysdepen::GetHook(), hook);
  EXPECT_TRUE(KivWindowsHookManager::Instance().empty());
}

int previousCalls = 0;

/// Takes WM_USER for itself; answers with what came.
int previousHook(HWND window, unsigned message, unsigned long long wParam, long long lParam, long long & result) {
  ++previousCalls;
  result = static_cast<long long>(reinterpret_cast<std::uintptr_t>(window) + wParam) + lParam;
  return message == WM_USER ? 42 : 0;
}

TEST(MessageWatcher, GivesTheResultOfThePreviousHookAlsoForWatchedWindows) {
  SV::Sysdepen::ChangeHook(previousHook);
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  EXPECT_EQ(KivWindowsHookManager::Instance().getPreviousHook(), previousHook);
  for (HWND const window : {windowOf(0x10), windowOf(0x20)}) {
    long long result = 0;
    EXPECT_EQ(SV::Sysdepen::GetHook()(window, WM_USER, 3, 4, result), 42);
    EXPECT_EQ(result, static_cast<long long>(reinterpret_cast<std::uintptr_t>(window)) + 7);
    EXPECT_EQ(SV::Sysdepen::GetHook()(window, WM_SIZE, 3, 4, result), 0);
  }
  EXPECT_EQ(previousCalls, 4);
}

TEST(MessageWatcher, ConsumesNothingWithoutAPreviousHook) {
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  EXPECT_EQ(KivWindowsHookManager::Instance().getPreviousHook(), nullptr);
  long long result = 5;
  EXPECT_EQ(SV::Sysdepen::GetHook()(windowOf(0x10), WM_CLOSE, 0, 0, result), 0);
  EXPECT_EQ(result, 5);
}

TEST(MessageWatcher, AssignsNothing) {
  Watcher first;
  Watcher const second;
  EXPECT_EQ(&(first = second), &first);
}

static_assert(std::is_base_of_v<std::set<HWND>, KivWindowsHookManager>);
static_assert(!std::is_default_constructible_v<KivWindowsHookManager>, "a second one would end the watch for good");

TEST(MessageWatcher, IsStillInstalledAfterAWindowWasRemovedThatWasNeverAdded) {
  Watcher::removeHookWindow(windowOf(0x99));
  EXPECT_EQ(record(), "no file");
  Watcher::addHookWindow(windowOf(0x10), nullptr);
  EXPECT_EQ(record(), kAdded);
}

class WatchedWindows : public ToolkitTest {};

TEST_F(WatchedWindows, AnswerWhatThePreviousHookAnswers) {
  SV::Window window(nullptr, 0);
  SV::Sysdepen::ChangeHook(previousHook);
  Watcher::addHookWindow(window.GethWnd(), nullptr);
  LRESULT const answer = SendMessageA(window.GethWnd(), WM_USER, 3, 4);
  EXPECT_EQ(answer, static_cast<LRESULT>(reinterpret_cast<std::uintptr_t>(window.GethWnd())) + 7);
  SV::Sysdepen::ChangeHook(nullptr);
}

TEST_F(WatchedWindows, AreRecordedAndOthersAreNot) {
  SV::Window watched(nullptr, SV::WB_TITLE);
  SV::Window other(nullptr, SV::WB_TITLE);
  Watcher::addHookWindow(watched.GethWnd(), "watched");
  watched.SetText("new title");
  other.SetText("new title");
  std::string const text = record();
  EXPECT_NE(text.find("[" + hexOf(watched.GethWnd()) + "h] Msg: ( 12 |   Ch) (lp: 00000000h) "), std::string::npos)
      << text;
  EXPECT_NE(text.find(" (WM_SETTEXT)\n"), std::string::npos) << text;
  EXPECT_EQ(text.find(hexOf(other.GethWnd())), std::string::npos) << text;
}

TEST_F(WatchedWindows, GetTheirMessagesAsEver) {
  SV::Window window(nullptr, SV::WB_TITLE);
  Watcher::addHookWindow(window.GethWnd(), nullptr);
  window.SetText("seen");
  EXPECT_EQ(textOf(window.GetText()), "seen");
}

TEST_F(WatchedWindows, StayAmongTheWatchedWhenTheyAreDestroyed) {
  HWND handle = nullptr;
  {
    SV::Window window(nullptr, SV::WB_TITLE);
    handle = window.GethWnd();
    Watcher::addHookWindow(handle, nullptr);
  }
  EXPECT_NE(record().find("(WM_NCDESTROY)\n"), std::string::npos);
  EXPECT_TRUE(KivWindowsHookManager::Instance().contains(handle));
}

/// Whoever sends a message may send any number with it.
TEST_F(WatchedWindows, GetALineForAnyMessage) {
  HWND const window = windowOf(0xABC);
  Watcher::addHookWindow(window, "w");
  support::Random64 random(111);
  std::size_t const count = support::times(200);
  for (std::size_t i = 0; i < count; ++i)
    tellHook(window, static_cast<unsigned>(random() >> (random() % 64)), random(), static_cast<long long>(random()));
  std::string const text = record();
  EXPECT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')), count);
}

TEST_F(WatchedWindows, OfAnotherProgramOnlyHaveTheTwoLines) {
  HWND const desktop = GetDesktopWindow();
  Watcher::addHookWindow(desktop, "desktop");
  SendMessageA(desktop, WM_NULL, 0, 0);
  Watcher::removeHookWindow(desktop);
  EXPECT_EQ(record(), "--- [hooking window " + hexOf(desktop) + "h] --- [desktop] ---n--- [unhooked window " +
                          hexOf(desktop) + "h] ------------------------------------\n");
}

TEST_F(WatchedWindows, MayBeAThousand) {
  std::vector<std::unique_ptr<SV::Window>> windows;
  for (int i = 0; i < 1000; ++i) {
    windows.push_back(std::make_unique<SV::Window>(nullptr, 0));
    Watcher::addHookWindow(windows.back()->GethWnd(), nullptr);
  }
  EXPECT_EQ(KivWindowsHookManager::Instance().size(), 1000u);
  std::size_t const before = record().size();
  for (auto const & window : windows)
    SendMessageA(window->GethWnd(), WM_USER, 0, 0);
  std::string const text = record().substr(before);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1000);
  for (auto const & window : windows)
    EXPECT_NE(text.find("[" + hexOf(window->GethWnd()) + "h] Msg: (1024 | 400h)"), std::string::npos);
}

} // namespace

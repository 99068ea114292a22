#pragma once
/// \file
/// Tray icons on a desktop of the test's own, with a shell of our own that can be ended and started again.

#include "asystray.hpp"
#include "programs/ui/tray_shell.hpp"
#include "support/imports/import_hook.hpp"
#include "support/windows/private_station.hpp"
#include "support/windows/windows.hpp"
#include "sv0105/controls/dialogtest.hpp"

#include <shellapi.h>

#include <memory>
#include <string>
#include <vector>

namespace traytest {

/// The limits that were violated, "text (file)" each, in place of the end of the process.
inline std::vector<std::string> & assertions() {
  static std::vector<std::string> all;
  return all;
}
inline std::vector<unsigned> & assertionLines() {
  static std::vector<unsigned> all;
  return all;
}

inline void keepAssertion(wchar_t const * text, wchar_t const * file, unsigned line) {
  std::wstring const all = std::wstring(text) + L" (" + file + L")";
  assertions().emplace_back(all.begin(), all.end());
  assertionLines().push_back(line);
}

inline HMODULE library() { return GetModuleHandleA("kivara.dll"); }

/// An icon of one colour, for as long as the object lives.
class Picture {
public:
  explicit Picture(unsigned colour) {
    std::vector<unsigned> const pixels(16 * 16, 0xFF000000 | colour);
    std::vector<unsigned char> const mask(16 * 2, 0);
    icon_ = CreateIcon(GetModuleHandleA(nullptr), 16, 16, 1, 32, mask.data(),
                       reinterpret_cast<unsigned char const *>(pixels.data()));
  }
  Picture(Picture const &) = delete;
  Picture & operator=(Picture const &) = delete;
  ~Picture() { DestroyIcon(icon_); }
  HICON get() const { return icon_; }

private:
  HICON icon_;
};

/// An icon whose menu and actions the test gives, with all that derived classes see.
class Tray : public KivSystemTray {
public:
  using KivSystemTray::GetDoWndAnimation;
  using KivSystemTray::GetTrayWndRect;
  using KivSystemTray::Init;
  using KivSystemTray::InstallIconPending;
  using KivSystemTray::KivSystemTray;
  using KivSystemTray::m_bEnabled;
  using KivSystemTray::m_bHidden;
  using KivSystemTray::m_bRemoved;
  using KivSystemTray::m_bShowIconPending;
  using KivSystemTray::m_bWin2K;
  using KivSystemTray::m_hSavedIcon;
  using KivSystemTray::m_hWndInvisible;
  using KivSystemTray::m_IconList;
  using KivSystemTray::m_nAnimationPeriod;
  using KivSystemTray::m_nCurrentIcon;
  using KivSystemTray::m_nMaxTooltipLength;
  using KivSystemTray::m_nTaskbarCreatedMsg;
  using KivSystemTray::m_pThis;
  using KivSystemTray::m_tnd;
  using KivSystemTray::m_uCreationFlags;
  using KivSystemTray::m_uIDTimer;
  using KivSystemTray::RegisterClassA;
  using KivSystemTray::RemoveTaskbarIcon;

  void CustomizeMenu(HMENU) override { ++customizations; }
  void BuildPopupMenu(SV::PopupMenu & menu) override {
    ++menus;
    if (build)
      build(menu);
  }
  void DoDoubleClickAction() override {
    ++doubleClicks;
    if (act)
      act();
  }

  std::function<void(SV::PopupMenu &)> build;
  std::function<void()> act;
  int customizations = 0;
  int menus = 0;
  int doubleClicks = 0;
};

/// A shell that runs; it ends with the object.
class Shell {
public:
  explicit Shell(std::string const & words = "")
      : program_({.program = "tray_shell", .arguments = words, .desktop = support::PrivateStation::name()}) {
    if (!program_.waitForOutput("begun"))
      throw std::runtime_error("the shell has not begun");
    window_ = FindWindowA("Shell_TrayWnd", nullptr);
  }

  long count() { return ask(trayshell::Count); }
  long visible() { return ask(trayshell::CountVisible); }
  void refuse(bool on) { ask(trayshell::Refuse, on); }
  void forget() { ask(trayshell::Forget); }

  /// Without waiting for what the program does with it.
  void mouseLater(UINT number, LPARAM message) { PostMessageA(window_, trayshell::Mouse, number, message); }
  long mouse(UINT number, LPARAM message) { return ask(trayshell::Mouse, number, message); }

  /// The lines of the calls since the last question.
  std::vector<std::string> calls() {
    std::string const mark = "mark " + std::to_string(++marks_) + "\r\n";
    ask(trayshell::Mark, static_cast<WPARAM>(marks_));
    if (!program_.waitForOutput(mark))
      throw std::runtime_error("the shell does not answer");
    std::string const all = program_.output();
    std::size_t const end = all.find(mark);
    std::vector<std::string> lines;
    for (std::size_t at = read_, next; (next = all.find("\r\n", at)) != std::string::npos && at < end; at = next + 2)
      lines.push_back(all.substr(at, next - at));
    read_ = end + mark.size();
    std::erase(lines, "begun");
    return lines;
  }

  /// The same as "add 1 flags 7: taken".
  std::vector<std::string> shortCalls() {
    std::vector<std::string> lines = calls();
    for (std::string & line : lines)
      line = line.substr(0, line.find(" message")) + line.substr(line.rfind(": "));
    return lines;
  }

  void end() {
    PostMessageA(window_, trayshell::End, 0, 0);
    program_.waitForEnd();
  }

private:
  long ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return static_cast<long>(SendMessageA(window_, message, wParam, lParam));
  }

  support::ChildProcess program_;
  HWND window_ = nullptr;
  int marks_ = 0;
  std::size_t read_ = 0;
};

using Lines = std::vector<std::string>;

/// What a user does with an icon.
class TrayUserTest : public svtest::DialogTest {
protected:
  /// Deals with what has been sent and posted to the windows of this thread.
  static void settle() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
      DispatchMessageA(&message);
  }

  /// Does so until that holds. It is asked after each message: a timer that is due each time would never end settle().
  template <class Condition> static bool runUntil(Condition const & condition) {
    return support::eventually([&] {
      MSG message;
      while (!condition() && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
      return condition();
    });
  }

  /// The window of the open menu; null when none is open.
  static HWND openMenu() {
    for (HWND window = nullptr; (window = FindWindowExA(nullptr, window, "#32768", nullptr)) != nullptr;)
      if (IsWindowVisible(window))
        return window;
    return nullptr;
  }

  /// Presses the keys in the menu as soon as it is open.
  void pressInMenu(std::vector<WPARAM> const & keys) {
    script->then([this, keys] {
      if (openMenu() == nullptr)
        pressInMenu(keys);
      else
        for (WPARAM const key : keys)
          PostMessageA(openMenu(), WM_KEYDOWN, key, 1);
    });
  }
};

class TrayTest : private support::PrivateStation, public TrayUserTest {
protected:
  static constexpr unsigned kMessage = WM_APP + 20;
  static constexpr unsigned kNumber = 5;

  TrayTest() {
    assertions().clear();
    assertionLines().clear();
    replace("msvcrt.dll", {{"_wassert", reinterpret_cast<void *>(keepAssertion)}});
  }

  ~TrayTest() override {
    for (auto const & [dll, name] : replaced_)
      support::replaceImports(library(), dll, {{name, real(dll, name)}});
  }

  void TearDown() override {
    DialogTest::TearDown();
    EXPECT_EQ(assertions(), expectedAssertions);
  }

  /// Has the library call others, up to the end of the test.
  void replace(char const * dll, std::vector<support::Replacement> const & replacements) {
    support::replaceImports(library(), dll, replacements);
    for (support::Replacement const & each : replacements)
      replaced_.emplace_back(dll, each.name);
  }

  /// Starts the shell, and handles what it has broadcast.
  Shell & start(std::string const & words = "") {
    shell = std::make_unique<Shell>(words);
    settle();
    return *shell;
  }

  void stop() {
    shell->end();
    shell.reset();
  }

  int create(Tray & tray, int hidden = FALSE) {
    return tray.Create(nullptr, kMessage, "Tip", SV::Icon(SV::ICON_STYLE_INFO), kNumber, hidden);
  }

  /// "hidden, removed, pending" as 0 and 1.
  static std::string stateOf(Tray const & tray) {
    return std::to_string(tray.m_bHidden) + std::to_string(tray.m_bRemoved) + std::to_string(tray.m_bShowIconPending);
  }

  std::unique_ptr<Shell> shell;
  Lines expectedAssertions;

private:
  static void * real(char const * dll, char const * name) {
    return reinterpret_cast<void *>(GetProcAddress(GetModuleHandleA(dll), name));
  }

  std::vector<std::pair<char const *, char const *>> replaced_;
};

} // namespace traytest

// The tray icon in the notification area of a real desktop: what the user sees of it, and what the mouse does there.
#include "support/windows/pixels.hpp"
#include "ui/tray/traytest.hpp"

#include <optional>

namespace {

using traytest::Picture;
using traytest::Tray;

/// A desktop in a window of the display, with the shell of the system; it ends with the object. The thread stays there.
class VirtualDesktop {
public:
  VirtualDesktop() {
    HDESK const desktop = CreateDesktopA(name().c_str(), nullptr, nullptr, 0, GENERIC_ALL, nullptr);
    if (desktop == nullptr || !SetThreadDesktop(desktop))
      throw std::runtime_error("the system gives no desktop");
    explorer_.emplace(support::ProgramStart{.program = explorerPath(), .arguments = "/desktop=" + name() + ",800x600"});
    if (!support::eventually([] { return FindWindowA("Shell_TrayWnd", nullptr) != nullptr; }))
      throw std::runtime_error("the shell has not begun");
  }

private:
  static std::string name() { return "kivara-test-" + std::to_string(GetCurrentProcessId()); }
  static std::string explorerPath() {
    char folder[MAX_PATH] = "";
    GetWindowsDirectoryA(folder, sizeof folder);
    return std::string(folder) + "\\explorer.exe";
  }

  std::optional<support::ChildProcess> explorer_;
};

class TrayDesktop : private VirtualDesktop, public traytest::TrayUserTest {
protected:
  static constexpr unsigned kMagenta = 0xFF00FF;
  static constexpr unsigned kGreen = 0x00FF00;

  TrayDesktop() : icon(nullptr, WM_APP + 3, "Tip", first, 3) {}

  static support::Pixels pixelsOf(RECT const & area) {
    HDC const screen = GetDC(nullptr);
    support::Pixels const pixels = support::readPixels(screen, area);
    ReleaseDC(nullptr, screen);
    return pixels;
  }

  /// The pixel of that colour in the notification area, in pixels of the screen.
  static std::optional<POINT> findColour(unsigned colour) {
    HWND const bar = FindWindowA("Shell_TrayWnd", nullptr);
    if (bar == nullptr || !IsWindowVisible(bar))
      return std::nullopt;
    RECT area = {};
    GetWindowRect(bar, &area);
    support::Pixels const pixels = pixelsOf(area);
    for (int y = 0; y < pixels.height(); ++y)
      for (int x = 0; x < pixels.width(); ++x)
        if (pixels.at(x, y) == colour)
          return POINT{area.left + x + 4, area.top + y + 4};
    return std::nullopt;
  }

  static bool shows(unsigned colour) {
    return runUntil([=] { return findColour(colour).has_value(); });
  }
  static bool hides(unsigned colour) {
    return runUntil([=] { return !findColour(colour).has_value(); });
  }

  /// Sends the icon in the notification area what the mouse does there.
  static void mouse(UINT message) {
    std::optional<POINT> const place = findColour(kMagenta);
    ASSERT_TRUE(place.has_value());
    HWND const window = WindowFromPoint(*place);
    POINT inside = *place;
    ScreenToClient(window, &inside);
    PostMessageA(window, message, 0, MAKELPARAM(inside.x, inside.y));
  }

  /// The visible balloon; null when there is none.
  static HWND balloon() {
    constexpr LONG kBalloonStyle = 0x40; // TTS_BALLOON
    for (HWND window = nullptr; (window = FindWindowExA(nullptr, window, "tooltips_class32", nullptr)) != nullptr;)
      if (IsWindowVisible(window) && (GetWindowLongA(window, GWL_STYLE) & kBalloonStyle) != 0)
        return window;
    return nullptr;
  }

  static std::size_t colours(HWND window) {
    RECT area = {};
    GetWindowRect(window, &area);
    return pixelsOf(area).colours();
  }

  Picture magenta{kMagenta};
  Picture green{kGreen};
  SV::Icon first{CopyIcon(magenta.get())};
  Tray icon;
};

TEST_F(TrayDesktop, ShowsTheIconItsChangesAndItsEnd) {
  EXPECT_TRUE(shows(kMagenta));
  EXPECT_TRUE(icon.HideIcon());
  EXPECT_TRUE(hides(kMagenta));
  EXPECT_TRUE(icon.ShowIcon());
  EXPECT_TRUE(shows(kMagenta));
  EXPECT_TRUE(icon.SetIcon(green.get()));
  EXPECT_TRUE(shows(kGreen));
  EXPECT_TRUE(icon.RemoveIcon());
  EXPECT_TRUE(hides(kGreen));
}

TEST_F(TrayDesktop, ShowsTheAnimation) {
  EXPECT_TRUE(shows(kMagenta));
  HICON icons[] = {magenta.get(), green.get()};
  icon.SetIconList(icons, 1);
  EXPECT_TRUE(icon.Animate(200, 0));
  EXPECT_TRUE(shows(kGreen));
  EXPECT_TRUE(shows(kMagenta));
  EXPECT_TRUE(shows(kGreen));
  EXPECT_TRUE(icon.StopAnimation());
  EXPECT_TRUE(shows(kMagenta));
}

TEST_F(TrayDesktop, ShowsABalloon) {
  EXPECT_TRUE(shows(kMagenta));
  EXPECT_TRUE(icon.ShowBalloon("The run has ended.", "Modeler", NIIF_INFO, 10));
  EXPECT_TRUE(runUntil([] { return balloon() != nullptr; }));
  EXPECT_TRUE(runUntil([] { return colours(balloon()) > 4; })); // its texts and its picture
  EXPECT_TRUE(icon.ShowBalloon("", "", NIIF_NONE, 10));
  EXPECT_TRUE(runUntil([] { return balloon() == nullptr; }));
}

TEST_F(TrayDesktop, BringsTheMouseToTheMenuAndTheAction) {
  EXPECT_TRUE(shows(kMagenta));
  std::vector<unsigned short> selected;
  icon.build = [&](SV::PopupMenu & menu) {
    menu.InsertItem(11, "~Restore");
    menu.ChangeSelectHdl([&](unsigned short id) { selected.push_back(id); });
  };
  mouse(WM_LBUTTONDBLCLK);
  EXPECT_TRUE(runUntil([&] { return icon.doubleClicks == 1; }));
  pressInMenu({VK_DOWN, VK_RETURN});
  EXPECT_EQ(icon.OnTrayNotification(3, WM_RBUTTONUP), 1);
  EXPECT_EQ(selected, std::vector<unsigned short>{11});
  pressInMenu({VK_ESCAPE});
  mouse(WM_RBUTTONUP);
  EXPECT_TRUE(runUntil([&] { return icon.menus == 2 && script->isDone(); }));
  EXPECT_EQ(selected.size(), 1u);
}

TEST_F(TrayDesktop, TakesAWindowAwayAndBack) {
  constexpr unsigned kBlue = 0xFF0000; // 0x00BBGGRR
  SV::Window window(nullptr, SV::WB_TITLE);
  window.ChangeBackgroundBrush(SV::Brush(SV::Color(0, 0, 0xFFFF)));
  window.SetPosSizePixel({100, 100}, {300, 200});
  window.Show();
  auto const colour = [] {
    HDC const screen = GetDC(nullptr);
    unsigned const pixel = static_cast<unsigned>(GetPixel(screen, 250, 220));
    ReleaseDC(nullptr, screen);
    return pixel;
  };
  EXPECT_TRUE(runUntil([&] { return colour() == kBlue; }));
  KivSystemTray::MinimizeToTray(window.GethWnd());
  EXPECT_TRUE(runUntil([&] { return colour() != kBlue; }));
  KivSystemTray::MaximizeFromTray(window.GethWnd());
  EXPECT_TRUE(runUntil([&] { return colour() == kBlue; }));
  EXPECT_EQ(GetForegroundWindow(), window.GethWnd());
}

} // namespace

#include "sv0105/application/testapplication.hpp"

#include "support/imports/import_hook.hpp"

#include <memory>
#include <optional>

namespace {

using SV::Application;
using SV::Window;

class WindowTest : public ToolkitTest {};

class RecordingWindow : public Window {
public:
  using Window::Window;
  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override {
    paintedAreas.push_back(area);
    if (onPaint)
      onPaint(device);
  }
  void Resize(SV::Size const & size) override { sizes.push_back(size); }

  std::function<void(SV::OutputDevice &)> onPaint;
  std::vector<SV::Rectangle> paintedAreas;
  std::vector<SV::Size> sizes;
};

TEST_F(WindowTest, IsLargeEnoughForThoseWhoTestItsMemory) { EXPECT_GE(sizeof(Window), 480u); }

TEST_F(WindowTest, IsASystemWindowOfTheToolkitsClass) {
  Window const window(nullptr);
  ASSERT_TRUE(IsWindow(window.GethWnd()));
  char name[64];
  GetClassNameA(window.GethWnd(), name, sizeof name);
  EXPECT_STREQ(name, "SV0105.Window");
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_F(WindowTest, LeavesTheDataOfTheSystemWindowToTheProgram) {
  SV::MDIFrame frame("Frame");
  Window window(nullptr);
  for (Window * each : std::initializer_list<Window *>{&window, &frame.GetClient(), &frame}) {
    HWND const handle = each->GethWnd();
    EXPECT_EQ(GetWindowLongPtrA(handle, GWLP_USERDATA), 0);
    SetWindowLongPtrA(handle, GWLP_USERDATA, 4711);
    each->SetText("named");
    EXPECT_STREQ(each->GetText().c_str(), "named");
    EXPECT_EQ(GetWindowLongPtrA(handle, GWLP_USERDATA), 4711);
    DestroyWindow(handle);
    EXPECT_EQ(each->GethWnd(), nullptr);
  }
}

TEST_F(WindowTest, IsInvisibleUntilItIsShown) {
  Window window(nullptr, SV::WB_TITLE);
  EXPECT_FALSE(window.IsVisible());
  EXPECT_TRUE(visibleTopLevelWindows().empty());
  window.Show();
  EXPECT_TRUE(window.IsVisible());
  EXPECT_EQ(visibleTopLevelWindows(), std::vector{window.GethWnd()});
  window.Hide();
  EXPECT_FALSE(window.IsVisible());
}

TEST_F(WindowTest, InsideOfAHiddenOneIsVisibleByItselfAlone) {
  Window parent(nullptr, SV::WB_TITLE);
  Window child(&parent);
  EXPECT_EQ(child.GetParent(), &parent);
  EXPECT_EQ(GetParent(child.GethWnd()), parent.GethWnd());
  child.Show();
  EXPECT_TRUE(child.IsVisible(false));
  EXPECT_FALSE(child.IsVisible(true));
  parent.Show();
  EXPECT_TRUE(child.IsVisible(true));
}

TEST_F(WindowTest, WithATitleFloatsAboveItsParent) {
  Window parent(nullptr, SV::WB_TITLE);
  Window dialog(&parent, SV::WB_TITLE);
  EXPECT_EQ(GetWindow(dialog.GethWnd(), GW_OWNER), parent.GethWnd());
  EXPECT_EQ(GetWindowLongPtrA(dialog.GethWnd(), GWL_STYLE) & WS_CHILD, 0);
}

TEST_F(WindowTest, HasTheFrameThatItsBitsSay) {
  auto const styleOf = [](SV::WinBits bits) {
    Window window(nullptr, bits);
    return GetWindowLongPtrA(window.GethWnd(), GWL_STYLE) & (WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | WS_MAXIMIZEBOX);
  };
  EXPECT_EQ(styleOf(0), 0);
  EXPECT_EQ(styleOf(SV::WB_BORDER), WS_BORDER);
  EXPECT_EQ(styleOf(SV::WB_TITLE), WS_CAPTION | WS_SYSMENU);
  EXPECT_EQ(styleOf(SV::WB_SIZEABLE), WS_THICKFRAME);
  EXPECT_EQ(styleOf(SV::WB_TITLE | SV::WB_SIZEABLE), WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX);
}

TEST_F(WindowTest, KeepsItsText) {
  Window window(nullptr, SV::WB_TITLE);
  EXPECT_EQ(window.GetText().Len(), 0);
  window.SetText("Title with \xE4");
  EXPECT_STREQ(window.GetText().c_str(), "Title with \xE4");
  char text[64];
  GetWindowTextA(window.GethWnd(), text, sizeof text);
  EXPECT_STREQ(text, "Title with \xE4");
  std::string const longText(5000, 'x');
  window.SetText(longText.c_str());
  EXPECT_EQ(textOf(window.GetText()), longText);
}

TEST_F(WindowTest, HasThePositionAndSizeThatItWasGiven) {
  Window parent(nullptr, SV::WB_TITLE);
  parent.SetPosSizePixel({50, 60}, {400, 300});
  EXPECT_EQ(parent.GetPosPixel(), (SV::Point{50, 60}));
  EXPECT_EQ(parent.GetSizePixel(), (SV::Size{400, 300}));
  Window child(&parent);
  child.SetPosSizePixel({7, 9}, {30, 20});
  EXPECT_EQ(child.GetPosPixel(), (SV::Point{7, 9}));
  EXPECT_EQ(child.GetSizePixel(), (SV::Size{30, 20}));
  EXPECT_EQ(child.GetOutputSizePixel(), (SV::Size{30, 20}));
}

TEST_F(WindowTest, FitsItsFrameToTheClientArea) {
  RecordingWindow window(nullptr, SV::WB_TITLE | SV::WB_SIZEABLE);
  window.SetPosSizePixel({50, 60}, {500, 400});
  window.sizes.clear();
  window.ChangeOutputSizePixel({320, 200});
  EXPECT_EQ(window.GetOutputSizePixel(), (SV::Size{320, 200}));
  EXPECT_EQ(window.GetPosPixel(), (SV::Point{50, 60}));
  EXPECT_GT(window.GetSizePixel().height, 200);
  EXPECT_EQ(window.sizes, (std::vector<SV::Size>{{320, 200}}));
}

TEST_F(WindowTest, ThatTheSystemRefusesRaisesAnExceptionAndDoesNothing) {
  Window parent(nullptr);
  DestroyWindow(parent.GethWnd());
  ASSERT_EQ(parent.GethWnd(), nullptr);
  Window child(&parent);
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, 0x200);
  EXPECT_EQ(application.exceptions[0].arg, static_cast<unsigned long>(ERROR_TLW_WITH_WSCHILD));
  EXPECT_EQ(child.GethWnd(), nullptr);
  EXPECT_EQ(child.GetParent(), nullptr);
  child.Show();
  child.Hide();
  child.SetText("lost");
  child.SetPosSizePixel({1, 2}, {3, 4});
  child.ChangeOutputSizePixel({3, 4});
  child.ChangeFont(SV::Font("Arial", {0, 12}));
  child.Invalidate();
  child.Update();
  child.GrabFocus();
  EXPECT_FALSE(child.IsVisible());
  EXPECT_FALSE(child.IsVisible(true));
  EXPECT_EQ(child.GetText().Len(), 0);
  EXPECT_EQ(child.GetPosPixel(), (SV::Point{0, 0}));
  EXPECT_EQ(child.GetSizePixel(), (SV::Size{0, 0}));
  EXPECT_EQ(child.GetOutputSizePixel(), (SV::Size{0, 0}));
}

TEST(WindowWithoutTheToolkit, IsRefused) {
  TestApplication application;
  Window const window(nullptr);
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, 0x200);
  EXPECT_NE(application.exceptions[0].arg, 0u);
}

TEST_F(WindowTest, OutlivesItsSystemWindowAndItsParent) {
  auto parent = std::make_unique<Window>(nullptr, SV::WB_TITLE);
  Window child(parent.get());
  parent.reset();
  EXPECT_EQ(child.GethWnd(), nullptr);
  EXPECT_EQ(child.GetParent(), nullptr);
}

TEST_F(WindowTest, ThatIsLeftIsClosedWhenTheToolkitGoesDown) {
  Window window(nullptr, SV::WB_TITLE);
  Window child(&window);
  Window other(nullptr);
  SV::DeInitSV();
  EXPECT_EQ(window.GethWnd(), nullptr);
  EXPECT_EQ(child.GethWnd(), nullptr);
  EXPECT_EQ(other.GethWnd(), nullptr);
  EXPECT_TRUE(ownTopLevelWindows().empty());
}

TEST_F(WindowTest, ClosesWhenTheUserClosesIt) {
  Window window(nullptr, SV::WB_TITLE);
  SendMessageA(window.GethWnd(), WM_CLOSE, 0, 0);
  EXPECT_EQ(window.GethWnd(), nullptr);
  EXPECT_EQ(application.exitQueries, 0);
}

TEST_F(WindowTest, MayDieInItsOwnHandler) {
  class Fleeting : public Window {
  public:
    using Window::Window;
    void Close() override { delete this; }
  };
  auto * const window = new Fleeting(nullptr, SV::WB_TITLE);
  HWND const handle = window->GethWnd();
  SendMessageA(handle, WM_CLOSE, 0, 0);
  EXPECT_FALSE(IsWindow(handle));
}

// The application window

TEST_F(WindowTest, OfTheApplicationIsForgottenWhenItHasGone) {
  auto window = std::make_unique<Window>(nullptr, SV::WB_TITLE);
  EXPECT_EQ(Application::GetAppWindow(), nullptr);
  Application::SetAppWindow(window.get());
  EXPECT_EQ(Application::GetAppWindow(), window.get());
  window.reset();
  EXPECT_EQ(Application::GetAppWindow(), nullptr);
  Window other(nullptr);
  Application::SetAppWindow(&other);
  DestroyWindow(other.GethWnd());
  EXPECT_EQ(Application::GetAppWindow(), nullptr);
}

TEST_F(WindowTest, OfTheApplicationIsForgottenThoughItsSystemWindowHadGoneBefore) {
  {
    Window window(nullptr, SV::WB_TITLE);
    DestroyWindow(window.GethWnd());
    Application::SetAppWindow(&window);
  }
  EXPECT_EQ(Application::GetAppWindow(), nullptr);
}

TEST_F(WindowTest, OfTheApplicationQuitsWhenTheApplicationAgrees) {
  Window window(nullptr, SV::WB_TITLE);
  Application::SetAppWindow(&window);
  PostMessageA(window.GethWnd(), WM_CLOSE, 0, 0);
  EXPECT_EQ(Application::Execute(), 0);
  EXPECT_EQ(application.exitQueries, 1);
  EXPECT_TRUE(IsWindow(window.GethWnd())) << "it is its owner's to delete";
}

TEST_F(WindowTest, OfTheApplicationStaysWhenTheApplicationObjects) {
  Window window(nullptr, SV::WB_TITLE);
  Application::SetAppWindow(&window);
  application.mayExit = false;
  PostMessageA(window.GethWnd(), WM_CLOSE, 0, 0);
  Application::Reschedule();
  EXPECT_EQ(application.exitQueries, 1);
  Application::Quit(3);
  EXPECT_EQ(Application::Execute(), 3) << "nothing else has quit";
}

TEST_F(WindowTest, OfTheApplicationAsksBeforeTheSessionEnds) {
  Window window(nullptr, SV::WB_TITLE);
  Window other(nullptr, SV::WB_TITLE);
  Application::SetAppWindow(&window);
  EXPECT_NE(SendMessageA(window.GethWnd(), WM_QUERYENDSESSION, 0, 0), 0);
  application.mayExit = false;
  EXPECT_EQ(SendMessageA(window.GethWnd(), WM_QUERYENDSESSION, 0, 0), 0);
  EXPECT_EQ(application.exitQueries, 2);
  EXPECT_NE(SendMessageA(other.GethWnd(), WM_QUERYENDSESSION, 0, 0), 0);
  EXPECT_EQ(application.exitQueries, 2);
}

TEST_F(WindowTest, OfTheApplicationIsFirstShownAsTheCallerOfTheProgramWants) {
  SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWMAXIMIZED);
  Window window(nullptr, SV::WB_TITLE | SV::WB_SIZEABLE);
  Window other(nullptr, SV::WB_TITLE | SV::WB_SIZEABLE);
  Application::SetAppWindow(&window);
  other.Show();
  window.Show();
  EXPECT_FALSE(IsZoomed(other.GethWnd()));
  EXPECT_TRUE(IsZoomed(window.GethWnd()));
  ShowWindow(window.GethWnd(), SW_RESTORE);
  window.Hide();
  window.Show();
  EXPECT_FALSE(IsZoomed(window.GethWnd()));
  EXPECT_EQ(SV::Sysdepen::GetShowCommand(), SW_SHOWMAXIMIZED);
}

// Suppression

TEST_F(WindowTest, NeverBecomesVisibleUnderSuppression) {
  Application::SetShowWindowSuppression(true);
  EXPECT_TRUE(Application::IsShowWindowSuppression());
  Window window(nullptr, SV::WB_TITLE | SV::WB_SIZEABLE);
  SV::MDIFrame frame("Frame");
  SV::MDIChild child(frame, "Child");
  Application::SetAppWindow(&window);
  window.Show();
  frame.Show();
  child.Show();
  Application::Reschedule();
  EXPECT_TRUE(visibleTopLevelWindows().empty());
  EXPECT_FALSE(window.IsVisible());
  EXPECT_FALSE(frame.IsVisible());
  EXPECT_FALSE(child.IsVisible());
  SetWindowPos(window.GethWnd(), nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
  ShowWindow(window.GethWnd(), SW_SHOW);
  ShowWindow(window.GethWnd(), SW_SHOWMAXIMIZED);
  ShowWindow(window.GethWnd(), SW_RESTORE);
  ShowWindow(frame.GethWnd(), SW_SHOWMINIMIZED);
  EXPECT_TRUE(visibleTopLevelWindows().empty());
  Application::SetShowWindowSuppression(false);
  window.Show();
  EXPECT_TRUE(window.IsVisible());
}

// Fonts

TEST_F(WindowTest, TakesTheFontOfTheApplicationAtOnce) {
  Window window(nullptr, SV::WB_TITLE);
  Window own(nullptr, SV::WB_TITLE);
  own.ChangeFont(SV::Font("Courier New", {0, 15}));
  Application::ChangeAppFont(SV::Font("Arial", {0, 22}));
  auto const fontOf = [](Window const & of) {
    LOGFONTA font = {};
    GetObjectA(reinterpret_cast<HFONT>(SendMessageA(of.GethWnd(), WM_GETFONT, 0, 0)), sizeof font, &font);
    return font;
  };
  EXPECT_STREQ(fontOf(window).lfFaceName, "Arial");
  EXPECT_EQ(fontOf(window).lfHeight, -22);
  EXPECT_STREQ(window.GetFont().GetName().c_str(), "Arial");
  EXPECT_STREQ(fontOf(own).lfFaceName, "Courier New");
  Window later(nullptr, SV::WB_TITLE);
  EXPECT_STREQ(fontOf(later).lfFaceName, "Arial");
  EXPECT_STREQ(own.ChangeFont(SV::Font("Arial", {0, 9})).GetName().c_str(), "Courier New");
  EXPECT_EQ(fontOf(own).lfHeight, -9);
}

// Pointer

TEST_F(WindowTest, ShowsTheHourGlassWhileWaiting) {
  Window window(nullptr, SV::WB_TITLE);
  Application::Wait(1);
  SetCursor(LoadCursorA(nullptr, IDC_CROSS));
  EXPECT_NE(SendMessageA(window.GethWnd(), WM_SETCURSOR, reinterpret_cast<WPARAM>(window.GethWnd()),
                         MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)),
            0);
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_WAIT));
  Application::Wait(0);
  SendMessageA(window.GethWnd(), WM_SETCURSOR, reinterpret_cast<WPARAM>(window.GethWnd()),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_ARROW));
}

void play(char const * function, void * replacement) {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "USER32.dll", {{function, replacement}});
}

HWND windowBelow = nullptr;
HWND WINAPI tellWindowBelow(POINT) { return windowBelow; }
BOOL WINAPI refusePosition(POINT *) { return FALSE; }

bool isAskedForItsPointer(HWND window) {
  MSG message;
  return PeekMessageA(&message, window, WM_SETCURSOR, WM_SETCURSOR, PM_REMOVE) != FALSE;
}

TEST_F(WindowTest, BelowThePointerIsAskedForItsPointerWhenTheWaitEnds) {
  Window window(nullptr, SV::WB_TITLE);
  play("WindowFromPoint", reinterpret_cast<void *>(tellWindowBelow));
  windowBelow = window.GethWnd();
  Application::Wait(1);
  EXPECT_FALSE(isAskedForItsPointer(window.GethWnd()));
  Application::Wait(0);
  EXPECT_TRUE(isAskedForItsPointer(window.GethWnd()));
  windowBelow = GetDesktopWindow();
  Application::Wait(1);
  Application::Wait(0);
  EXPECT_FALSE(isAskedForItsPointer(window.GethWnd()));
  windowBelow = window.GethWnd();
  play("GetCursorPos", reinterpret_cast<void *>(refusePosition));
  Application::Wait(1);
  Application::Wait(0);
  EXPECT_FALSE(isAskedForItsPointer(window.GethWnd())) << "nobody knows what is below";
}

std::vector<HWND> asked;
BOOL WINAPI noteAsked(HWND window, UINT message, WPARAM, LPARAM) {
  if (message == WM_SETCURSOR)
    asked.push_back(window);
  return TRUE;
}

TEST_F(WindowTest, OfAnotherThreadIsNotAskedForItsPointer) {
  Window window(nullptr, SV::WB_TITLE);
  play("WindowFromPoint", reinterpret_cast<void *>(tellWindowBelow));
  play("PostMessageA", reinterpret_cast<void *>(noteAsked));
  for (HWND const below : {GetDesktopWindow(), window.GethWnd()}) {
    windowBelow = below;
    Application::Wait(1);
    Application::Wait(0);
  }
  EXPECT_EQ(asked, (std::vector<HWND>{window.GethWnd()}));
}

// The message hook

struct HookCall {
  HWND window;
  unsigned message;
};

std::vector<HookCall> hookCalls;
unsigned answered;
long long answer;

int recordingHook(HWND window, unsigned message, unsigned long long, long long, long long & result) {
  hookCalls.push_back({window, message});
  if (message != answered)
    return 0;
  result = answer;
  return 1;
}

class MessageHookTest : public ToolkitTest {
protected:
  MessageHookTest() {
    hookCalls.clear();
    answered = WM_NULL;
    answer = 0;
    SV::Sysdepen::ChangeHook(recordingHook);
  }
  ~MessageHookTest() override { SV::Sysdepen::ChangeHook(nullptr); }

  static bool wasCalled(HWND window, unsigned message) {
    return std::any_of(hookCalls.begin(), hookCalls.end(),
                       [&](HookCall const & call) { return call.window == window && call.message == message; });
  }
};

TEST_F(MessageHookTest, SeesEveryMessageOfEveryWindowFromItsCreationToItsEnd) {
  HWND handle;
  {
    Window window(nullptr, SV::WB_TITLE);
    handle = window.GethWnd();
    EXPECT_TRUE(wasCalled(handle, WM_NCCREATE));
    EXPECT_TRUE(wasCalled(handle, WM_CREATE));
    SendMessageA(handle, WM_APP + 77, 0, 0);
    EXPECT_TRUE(wasCalled(handle, WM_APP + 77));
  }
  EXPECT_TRUE(wasCalled(handle, WM_DESTROY));
  EXPECT_TRUE(wasCalled(handle, WM_NCDESTROY));
}

TEST_F(MessageHookTest, SeesTheMessagesOfFrameClientAreaAndChildren) {
  SV::MDIFrame frame("Frame");
  SV::MDIChild child(frame);
  for (HWND window : {frame.GethWnd(), frame.GetClient().GethWnd(), child.GethWnd()}) {
    SendMessageA(window, WM_APP + 77, 0, 0);
    EXPECT_TRUE(wasCalled(window, WM_APP + 77));
  }
}

TEST_F(MessageHookTest, KeepsAMessageFromTheWindowByANonZeroResult) {
  Window window(nullptr, SV::WB_TITLE);
  answered = WM_CLOSE;
  answer = 0x123456789A;
  EXPECT_EQ(SendMessageA(window.GethWnd(), WM_CLOSE, 0, 0), 0x123456789A);
  EXPECT_NE(window.GethWnd(), nullptr);
  answered = WM_NULL;
  SendMessageA(window.GethWnd(), WM_CLOSE, 0, 0);
  EXPECT_EQ(window.GethWnd(), nullptr);
}

TEST_F(MessageHookTest, KeepsAMessageFromTheApplicationToo) {
  std::vector<HWND> listeners = ownTopLevelWindows();
  std::erase_if(listeners, [](HWND window) {
    char name[32] = "";
    GetClassNameA(window, name, sizeof name);
    return std::string(name) != "SV0105.Listener";
  });
  ASSERT_EQ(listeners.size(), 1u);
  answered = WM_SYSCOLORCHANGE;
  answer = 7;
  EXPECT_EQ(SendMessageA(listeners[0], WM_SYSCOLORCHANGE, 0, 0), 7);
  EXPECT_TRUE(application.changes.empty());
  answered = WM_NULL;
  SendMessageA(listeners[0], WM_SYSCOLORCHANGE, 0, 0);
  EXPECT_EQ(application.changes.size(), 1u);
}

TEST_F(MessageHookTest, ThatAnswersTheLastMessageStillLetsGoOfTheWindow) {
  Window window(nullptr, SV::WB_TITLE);
  answered = WM_NCDESTROY;
  DestroyWindow(window.GethWnd());
  EXPECT_EQ(window.GethWnd(), nullptr);
}

TEST_F(MessageHookTest, ThatRefusesTheCreationRaisesAnException) {
  answered = WM_NCCREATE;
  Window const window(nullptr, SV::WB_TITLE);
  EXPECT_EQ(window.GethWnd(), nullptr);
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, 0x200);
}

// Painting

TEST_F(WindowTest, PaintsWhatHasBecomeInvalid) {
  RecordingWindow window(nullptr);
  window.SetPosSizePixel({100, 100}, {60, 40});
  window.Show();
  Application::Reschedule();
  window.paintedAreas.clear();
  RECT const part = {10, 12, 20, 17};
  InvalidateRect(window.GethWnd(), &part, TRUE);
  window.Update();
  ASSERT_EQ(window.paintedAreas.size(), 1u);
  EXPECT_EQ(window.paintedAreas[0].TopLeft(), (SV::Point{10, 12}));
  EXPECT_EQ(window.paintedAreas[0].GetSize(), (SV::Size{10, 5}));
  window.Invalidate();
  window.Update();
  ASSERT_EQ(window.paintedAreas.size(), 2u);
  EXPECT_EQ(window.paintedAreas[1].GetSize(), (SV::Size{60, 40}));
  window.Update();
  EXPECT_EQ(window.paintedAreas.size(), 2u);
}

TEST_F(WindowTest, PaintsInItsFont) {
  RecordingWindow window(nullptr, SV::WB_TITLE);
  window.ChangeFont(SV::Font("Courier New", {0, 15}));
  std::string name;
  window.onPaint = [&](SV::OutputDevice & device) { name = device.ChangeFont(SV::Font()).GetName().c_str(); };
  SendMessageA(window.GethWnd(), WM_PAINT, 0, 0);
  EXPECT_EQ(name, "Courier New");
}

HDC WINAPI refusePainting(HWND, PAINTSTRUCT *) { return nullptr; }

TEST_F(WindowTest, PaintsNothingWhenTheSystemRefuses) {
  RecordingWindow window(nullptr, SV::WB_TITLE);
  SendMessageA(window.GethWnd(), WM_PAINT, 0, 0);
  EXPECT_EQ(window.paintedAreas.size(), 1u);
  play("BeginPaint", reinterpret_cast<void *>(refusePainting));
  SendMessageA(window.GethWnd(), WM_PAINT, 0, 0);
  EXPECT_EQ(window.paintedAreas.size(), 1u);
}

TEST_F(WindowTest, ShowsWhatWasPaintedOnItsBackground) {
  RecordingWindow window(nullptr);
  window.onPaint = [](SV::OutputDevice & device) {
    device.ChangePen(SV::Pen());
    device.ChangeFillInBrush(SV::Brush(SV::COL_LIGHTRED));
    device.DrawRect({{5, 5}, {10, 10}});
  };
  window.SetPosSizePixel({100, 100}, {60, 40});
  SetWindowPos(window.GethWnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  window.Show();
  window.Update();
  HDC const device = GetDC(window.GethWnd());
  EXPECT_EQ(GetPixel(device, 8, 8), 0x0000FFu);
  EXPECT_EQ(GetPixel(device, 14, 14), 0x0000FFu);
  EXPECT_EQ(GetPixel(device, 15, 15), GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(GetPixel(device, 4, 4), GetSysColor(COLOR_WINDOW));
  ReleaseDC(window.GethWnd(), device);
}

BOOL WINAPI refuseForeground(HWND) { return FALSE; }

TEST_F(WindowTest, ToTopRaisesItEvenWhenTheSystemLeavesTheKeyboardElsewhere) {
  Window first(nullptr, SV::WB_TITLE);
  Window second(nullptr, SV::WB_TITLE);
  auto const isAbove = [](Window const & upper, Window const & lower) {
    HWND below = GetWindow(upper.GethWnd(), GW_HWNDNEXT);
    while (below != nullptr && below != lower.GethWnd())
      below = GetWindow(below, GW_HWNDNEXT);
    return below != nullptr;
  };
  first.Show();
  second.Show();
  Application::Reschedule();
  ASSERT_TRUE(isAbove(second, first));
  play("SetForegroundWindow", reinterpret_cast<void *>(refuseForeground));
  first.ToTop();
  EXPECT_TRUE(isAbove(first, second));
}

TEST_F(WindowTest, GrabFocusGivesItTheKeyboard) {
  Window window(nullptr, SV::WB_TITLE);
  Window first(&window);
  Window second(&window);
  for (Window * each : {&window, &first, &second})
    each->Show();
  first.GrabFocus();
  EXPECT_EQ(GetFocus(), first.GethWnd());
  second.GrabFocus();
  EXPECT_EQ(GetFocus(), second.GethWnd());
}

} // namespace

#include "sv0105/controls/dialogtest.hpp"

namespace {

class InputWindow : public SV::Window {
public:
  using Window::Window;
  void MouseMove(SV::MouseEvent const & event) override { moves.push_back(event); }
  void MouseButtonDown(SV::MouseEvent const & event) override { downs.push_back(event); }
  void MouseButtonUp(SV::MouseEvent const & event) override { ups.push_back(event); }
  bool MouseWheel(SV::MouseEvent const & event) override { return wheels.push_back(event), true; }
  bool KeyInput(SV::KeyEvent const & event) override { return keys.push_back(event), false; }
  bool CharInput(char character) override { return characters += character, true; }
  void GotFocus() override { ++gains; }
  void LostFocus() override { ++losses; }

  std::vector<SV::MouseEvent> moves, downs, ups, wheels;
  std::vector<SV::KeyEvent> keys;
  std::string characters;
  int gains = 0;
  int losses = 0;
};

class InputTest : public ToolkitTest {
protected:
  InputWindow window{nullptr, SV::WB_TITLE};
};

TEST_F(InputTest, GivesPlaceButtonAndClicksOfTheMouse) {
  SendMessageA(window.GethWnd(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-3, 7));
  SendMessageA(window.GethWnd(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 5));
  SendMessageA(window.GethWnd(), WM_RBUTTONDBLCLK, MK_RBUTTON | MK_LBUTTON, MAKELPARAM(4, 5));
  SendMessageA(window.GethWnd(), WM_MBUTTONUP, 0, MAKELPARAM(4, 5));
  ASSERT_EQ(window.moves.size(), 1u);
  EXPECT_EQ(window.moves[0].position, (SV::Point{-3, 7}));
  EXPECT_EQ(window.moves[0].held, SV::MOUSE_LEFT);
  ASSERT_EQ(window.downs.size(), 2u);
  EXPECT_EQ(window.downs[0].button, SV::MOUSE_LEFT);
  EXPECT_EQ(window.downs[0].clicks, 1);
  EXPECT_EQ(window.downs[1].button, SV::MOUSE_RIGHT);
  EXPECT_EQ(window.downs[1].clicks, 2);
  EXPECT_EQ(window.downs[1].held, SV::MOUSE_LEFT | SV::MOUSE_RIGHT);
  ASSERT_EQ(window.ups.size(), 1u);
  EXPECT_EQ(window.ups[0].button, SV::MOUSE_MIDDLE);
}

TEST_F(InputTest, GivesTheNotchesOfTheWheelInTheCoordinatesOfTheWindow) {
  window.SetPosSizePixel({100, 100}, {200, 100});
  POINT point = {5, 6};
  ClientToScreen(window.GethWnd(), &point);
  SendMessageA(window.GethWnd(), WM_MOUSEWHEEL, MAKEWPARAM(MK_MBUTTON, static_cast<WORD>(-60)),
               MAKELPARAM(point.x, point.y));
  ASSERT_EQ(window.wheels.size(), 1u);
  EXPECT_EQ(window.wheels[0].position, (SV::Point{5, 6}));
  EXPECT_EQ(window.wheels[0].notches, -0.5);
  EXPECT_EQ(window.wheels[0].held, SV::MOUSE_MIDDLE);
}

struct Key {
  WPARAM key;
  SV::KeyCode code;
};

TEST_F(InputTest, HasTheCodesOfTheKeys) {
  Key const keys[] = {
      {'0', 256},         {VK_NUMPAD9, 265},    {'A', 512},          {'Z', 537},          {VK_F1, 768},
      {VK_F24, 791},      {VK_DOWN, 1024},      {VK_UP, 1025},       {VK_LEFT, 1026},     {VK_RIGHT, 1027},
      {VK_HOME, 1028},    {VK_END, 1029},       {VK_PRIOR, 1030},    {VK_NEXT, 1031},     {VK_RETURN, 1280},
      {VK_ESCAPE, 1281},  {VK_TAB, 1282},       {VK_BACK, 1283},     {VK_SPACE, 1284},    {VK_INSERT, 1285},
      {VK_DELETE, 1286},  {VK_ADD, 1287},       {VK_SUBTRACT, 1288}, {VK_MULTIPLY, 1289}, {VK_DIVIDE, 1290},
      {VK_DECIMAL, 1291}, {VK_SEPARATOR, 1292}, {VK_APPS, 1307},     {VK_PAUSE, 0}};
  for (Key const & row : keys) {
    SendMessageA(window.GethWnd(), WM_KEYDOWN, row.key, 1);
    EXPECT_EQ(window.keys.back().code, row.code) << row.key;
  }
}

TEST_F(InputTest, JoinsTheModifiersToTheKey) {
  svtest::HeldKeys const held{VK_SHIFT, VK_CONTROL};
  SendMessageA(window.GethWnd(), WM_KEYDOWN, 'A', 1 | 1 << 30);
  ASSERT_EQ(window.keys.size(), 1u);
  EXPECT_EQ(window.keys[0].code, 0x200 | 0x1000 | 0x2000);
  EXPECT_TRUE(window.keys[0].repeated);
}

TEST_F(InputTest, GetsCharactersInTheCodePageOfTheSystem) {
  SendMessageA(window.GethWnd(), WM_CHAR, 0xE4, 1);
  EXPECT_EQ(window.characters, "\xE4");
}

TEST_F(InputTest, HearsOfTheKeyboardComingAndGoing) {
  window.Show();
  SV::Window other(nullptr, SV::WB_TITLE);
  other.Show();
  window.GrabFocus();
  other.GrabFocus();
  EXPECT_GE(window.gains, 1);
  EXPECT_EQ(window.losses, window.gains);
}

TEST_F(InputTest, WindowMayDieInAHandlerOfTheMouse) {
  class Fleeting : public SV::Window {
  public:
    using Window::Window;
    void MouseButtonDown(SV::MouseEvent const &) override { delete this; }
  };
  HWND const handle = (new Fleeting(nullptr, SV::WB_TITLE))->GethWnd();
  SendMessageA(handle, WM_LBUTTONDOWN, MK_LBUTTON, 0);
  EXPECT_FALSE(IsWindow(handle));
}

TEST_F(InputTest, CaptureThatTheWindowGivesBackIsNotLost) {
  class Dragging : public SV::Window {
  public:
    using Window::Window;
    void CaptureLost() override { ++losses; }
    int losses = 0;
  } dragging(nullptr, SV::WB_TITLE);
  dragging.Show();
  dragging.CaptureMouse();
  // What Windows sends to a window that captures the mouse once more.
  SendMessageA(dragging.GethWnd(), WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(dragging.GethWnd()));
  EXPECT_EQ(dragging.losses, 0) << "it still has the mouse";
  dragging.ReleaseMouse();
  EXPECT_EQ(dragging.losses, 0);
  EXPECT_EQ(GetCapture(), nullptr);
  dragging.CaptureMouse();
  ReleaseCapture();
  EXPECT_EQ(dragging.losses, 1);
  dragging.ReleaseMouse();
}

class TimerTest : public svtest::DialogTest {};

TEST_F(TimerTest, FiresUntilItIsStopped) {
  SV::Timer timer;
  int fired = 0;
  timer.ChangeTimeoutHdl([&](SV::Timer *) {
    if (++fired == 3) {
      timer.Stop();
      SV::Application::Quit();
    }
  });
  EXPECT_FALSE(timer.IsActive());
  EXPECT_TRUE(timer.Start(10));
  SV::Application::Execute();
  EXPECT_EQ(fired, 3);
  EXPECT_FALSE(timer.IsActive());
}

TEST_F(TimerTest, MayDieInItsOwnHandlerAndIsNotCalledAfterItsEnd) {
  auto timer = std::make_unique<SV::Timer>();
  timer->ChangeTimeoutHdl([&](SV::Timer *) { timer.reset(); });
  timer->Start(10);
  script->then([] {}).then([] {}).then([] {});
  play();
  EXPECT_EQ(timer, nullptr);
  int late = 0;
  SV::Timer stopped;
  stopped.ChangeTimeoutHdl([&](SV::Timer *) { ++late; });
  stopped.Start(10);
  Sleep(50);
  stopped.Stop();
  SV::Application::Reschedule();
  EXPECT_EQ(late, 0);
}

TEST(TimerOfNobody, DoesNotStartWithoutTheToolkit) {
  SV::Timer timer;
  EXPECT_FALSE(timer.Start(10));
  SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWNORMAL);
  SV::InitSV(0, nullptr);
  EXPECT_TRUE(timer.Start(10));
  SV::DeInitSV();
  EXPECT_FALSE(timer.IsActive());
}

/// Lets messages come when it is destroyed, after a timer is due.
class WaitsAtItsEnd : public SV::Window {
public:
  using Window::Window;

  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override {
    if (message == WM_DESTROY) {
      Sleep(50);
      SV::Application::Reschedule();
    }
    return Window::HandleMessage(message, wParam, lParam);
  }
};

TEST(TimerOfNobody, DoesNotComeWhileTheToolkitEnds) {
  TestApplication application;
  SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWNORMAL);
  SV::InitSV(0, nullptr);
  WaitsAtItsEnd const window(nullptr, SV::WB_BORDER);
  SV::Timer timer;
  int calls = 0;
  timer.ChangeTimeoutHdl([&](SV::Timer *) { ++calls; });
  EXPECT_TRUE(timer.Start(10));
  SV::DeInitSV();
  EXPECT_EQ(calls, 0);
}

} // namespace

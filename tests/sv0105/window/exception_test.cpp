#include "sv0105/application/testapplication.hpp"
#include "sv0105/gdicount.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <exception>
#include <stdexcept>

namespace {

using SV::Application;
using SV::Window;

/// Throws out of the handler that is chosen.
class ThrowingWindow : public Window {
public:
  using Window::Window;
  void Paint(SV::OutputDevice & device, SV::Rectangle const &) override {
    ++paintings;
    device.ChangeFillInBrush(SV::Brush(SV::COL_LIGHTRED));
    device.ChangePen(SV::Pen(SV::COL_BLUE, 3));
    throwIf("Paint");
  }
  void Resize(SV::Size const &) override { throwIf("Resize"); }
  void Close() override { throwIf("Close"); }

  std::string failing;
  int paintings = 0;

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override {
    if (message == WM_APP)
      throw 42; // of no class of the standard library
    return Window::HandleMessage(message, wParam, lParam);
  }

private:
  void throwIf(char const * handler) const {
    if (failing == handler)
      throw std::runtime_error(handler);
  }
};

int paintingsBegun = 0;
int paintingsEnded = 0;

HDC WINAPI countBegin(HWND window, PAINTSTRUCT * state) {
  ++paintingsBegun;
  return BeginPaint(window, state);
}

BOOL WINAPI countEnd(HWND window, PAINTSTRUCT const * state) {
  ++paintingsEnded;
  return EndPaint(window, state);
}

class HandlerException : public ToolkitTest {
protected:
  HandlerException() {
    window.SetPosSizePixel({50, 50}, {200, 100});
    window.Show();
    Application::Reschedule();
    HMODULE const toolkit = GetModuleHandleA("SV0105.dll");
    support::replaceImports(
        toolkit, "USER32.dll",
        {{"BeginPaint", reinterpret_cast<void *>(countBegin)}, {"EndPaint", reinterpret_cast<void *>(countEnd)}});
    svtest::countGdiObjects();
  }

  void expectReported(std::size_t count = 1) {
    ASSERT_EQ(application.exceptions.size(), count);
    for (auto const & exception : application.exceptions) {
      EXPECT_EQ(exception.code, SV::EXC_HANDLER_FAILED);
      EXPECT_EQ(exception.arg, 0u);
    }
  }

  ThrowingWindow window{nullptr, SV::WB_TITLE | SV::WB_SIZEABLE};
};

TEST_F(HandlerException, OutOfPaintGivesItsDeviceBack) {
  window.failing = "Paint";
  int const before = window.paintings;
  for (int i = 1; i <= 3; ++i) {
    window.Invalidate();
    window.Update();
    EXPECT_EQ(window.paintings, before + i) << "it is not drawn over and over";
  }
  expectReported(3);
  EXPECT_EQ(paintingsBegun, 3);
  EXPECT_EQ(paintingsEnded, 3);
  EXPECT_EQ(svtest::gdiObjects(), 0);
  window.failing.clear();
  window.Invalidate();
  window.Update();
  EXPECT_EQ(window.paintings, before + 4);
}

TEST_F(HandlerException, OutOfATimerIsReported) {
  SV::Timer timer;
  timer.ChangeTimeoutHdl([&](SV::Timer *) {
    timer.Stop();
    Application::Quit();
    throw std::runtime_error("timer");
  });
  timer.Start(10);
  Application::Execute();
  expectReported();
}

TEST_F(HandlerException, OutOfResizeAndCloseIsReportedAndTheWindowStays) {
  window.failing = "Resize";
  window.SetPosSizePixel({50, 50}, {300, 200});
  expectReported();
  EXPECT_EQ(window.GetSizePixel(), (SV::Size{300, 200}));
  window.failing = "Close";
  SendMessageA(window.GethWnd(), WM_CLOSE, 0, 0);
  expectReported(2);
  EXPECT_TRUE(IsWindow(window.GethWnd()));
}

std::string told;

void WINAPI keepText(char const * text) { told += text; }

TEST_F(HandlerException, IsReportedToTheDebuggerInOneLine) {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "KERNEL32.dll",
                          {{"OutputDebugStringA", reinterpret_cast<void *>(keepText)}});
  window.failing = "Close";
  SendMessageA(window.GethWnd(), WM_CLOSE, 0, 0);
  EXPECT_EQ(told, "SV0105: an exception has left a handler: Close\n");
  told.clear();
  SendMessageA(window.GethWnd(), WM_APP, 0, 0);
  EXPECT_EQ(told, "SV0105: an exception has left a handler: of an unknown type\n");
}

TEST_F(HandlerException, OfAnyTypeLeavesTheAnswer0) {
  EXPECT_EQ(SendMessageA(window.GethWnd(), WM_APP, 0, 0), 0);
  expectReported();
}

TEST_F(HandlerException, DoesNotKeepTheLoopFromGoingOn) {
  PostMessageA(window.GethWnd(), WM_APP, 0, 0);
  Application::PostUserEvent(1, nullptr);
  Application::Quit(5);
  EXPECT_EQ(Application::Execute(), 5);
  expectReported();
  EXPECT_EQ(application.userEvents.size(), 1u);
}

TEST_F(HandlerException, OutOfAMenuIsReported) {
  SV::MDIFrame frame("Frame");
  SV::MenuBar bar;
  bar.InsertItem(7, "Fail");
  bar.ChangeSelectHdl([](unsigned short) { throw std::runtime_error("menu"); });
  frame.SetMenuBar(&bar);
  SendMessageA(frame.GethWnd(), WM_COMMAND, 7, 0);
  expectReported();
  frame.SetMenuBar(nullptr);
}

int throwingHook(HWND, unsigned message, unsigned long long, long long, long long &) {
  if (message == WM_APP + 1)
    throw std::runtime_error("hook");
  return 0;
}

TEST_F(HandlerException, OutOfTheMessageHookIsReported) {
  SV::Sysdepen::ChangeHook(throwingHook);
  SendMessageA(window.GethWnd(), WM_APP + 1, 0, 0);
  SV::Sysdepen::ChangeHook(nullptr);
  expectReported();
}

class ThrowingApplication : public TestApplication {
public:
  void UserEvent(unsigned long, void *) override { throw std::runtime_error("user"); }
  void SysChange(SV::SysChangeType) override { throw std::runtime_error("change"); }
  void ActivateExtHelp() override { throw std::runtime_error("help"); }
};

TEST_F(HandlerException, OutOfTheApplicationsOwnHandlersIsReported) {
  ThrowingApplication throwing;
  Application::PostUserEvent(1, nullptr);
  Application::Reschedule();
  EXPECT_EQ(throwing.exceptions.size(), 1u);
  Application::EnableHelp(SV::HELP_EXTENDED);
  BYTE keys[256] = {};
  keys[VK_SHIFT] = 0x80;
  SetKeyboardState(keys);
  PostMessageA(window.GethWnd(), WM_KEYDOWN, VK_F1, 1);
  Application::Reschedule();
  keys[VK_SHIFT] = 0;
  SetKeyboardState(keys);
  ASSERT_EQ(throwing.exceptions.size(), 2u);
  EXPECT_EQ(throwing.exceptions[1].code, SV::EXC_HANDLER_FAILED);
}

TEST_F(HandlerException, OutOfExceptionItselfEndsTheProcess) {
  class Hopeless : public TestApplication {
  public:
    void Exception(long, unsigned long) override { throw std::runtime_error("again"); }
  };
  EXPECT_EXIT(
      {
        std::set_terminate([] { std::_Exit(77); });
        Hopeless const hopeless;
        SendMessageA(window.GethWnd(), WM_APP, 0, 0);
      },
      testing::ExitedWithCode(77), "");
}

TEST(HandlerExceptionOfNobody, IsPassedOverWithoutAnApplication) {
  SV::InitSV(0, nullptr);
  {
    ThrowingWindow window(nullptr);
    EXPECT_EQ(SendMessageA(window.GethWnd(), WM_APP, 0, 0), 0);
  }
  SV::DeInitSV();
}

} // namespace

#include "sv0105/application/testapplication.hpp"

#include <memory>
#include <optional>

namespace {

using SV::Application;
using SV::MDIChild;
using SV::MDIFrame;

class MdiTest : public ToolkitTest {
protected:
  /// The child of that class in the frame, as the system knows it.
  static HWND clientOf(MDIFrame & frame) { return FindWindowExA(frame.GethWnd(), nullptr, "MDICLIENT", nullptr); }

  static COLORREF pixelOf(HWND window, int x, int y) {
    HDC const device = GetDC(window);
    COLORREF const color = GetPixel(device, x, y);
    ReleaseDC(window, device);
    return color;
  }

  static void bringToTop(MDIFrame & frame) {
    SetWindowPos(frame.GethWnd(), HWND_TOPMOST, 100, 100, 400, 300, SWP_NOACTIVATE);
  }
};

TEST_F(MdiTest, FrameHasTitleAndRealClientArea) {
  MDIFrame frame("Modeler");
  EXPECT_STREQ(frame.GetText().c_str(), "Modeler");
  ASSERT_NE(clientOf(frame), nullptr);
  EXPECT_EQ(clientOf(frame), frame.GetClient().GethWnd());
  EXPECT_EQ(frame.GetClient().GetParent(), &frame);
}

TEST_F(MdiTest, FirstFrameBecomesTheApplicationWindow) {
  std::optional<MDIFrame> first(std::in_place, "First");
  MDIFrame second("Second");
  EXPECT_EQ(Application::GetAppWindow(), &*first);
  first.reset();
  EXPECT_EQ(Application::GetAppWindow(), nullptr);
}

TEST_F(MdiTest, ClientAreaFillsTheFrame) {
  MDIFrame frame("Frame");
  frame.SetPosSizePixel({50, 50}, {500, 400});
  EXPECT_EQ(frame.GetClient().GetSizePixel(), frame.GetOutputSizePixel());
  EXPECT_GT(frame.GetOutputSizePixel().width, 400);
}

TEST_F(MdiTest, FrameClosesWithAllThatIsInIt) {
  auto frame = std::make_unique<MDIFrame>("Frame");
  MDIChild child(*frame, "Child");
  PostMessageA(frame->GethWnd(), WM_CLOSE, 0, 0);
  EXPECT_EQ(Application::Execute(), 0);
  EXPECT_EQ(application.exitQueries, 1);
  frame.reset();
  EXPECT_EQ(child.GethWnd(), nullptr);
  EXPECT_EQ(child.GetParent(), nullptr);
  child.Show();
}

TEST_F(MdiTest, ChildIsInvisibleUntilItIsShownAndThenActive) {
  MDIFrame frame("Frame");
  frame.Show();
  MDIChild first(frame, "First");
  MDIChild second(frame, "Second");
  EXPECT_FALSE(first.IsVisible());
  first.Show();
  EXPECT_TRUE(first.IsVisible(true));
  EXPECT_EQ(frame.GetActiveChild(), &first);
  EXPECT_EQ(GetParent(first.GethWnd()), frame.GetClient().GethWnd());
  second.Show();
  EXPECT_EQ(frame.GetActiveChild(), &second);
  first.Show();
  EXPECT_EQ(frame.GetActiveChild(), &first);
  EXPECT_STREQ(first.GetText().c_str(), "First");
}

TEST_F(MdiTest, ChildThatTheUserClosesLeavesTheFrameOpen) {
  MDIFrame frame("Frame");
  frame.Show();
  MDIChild first(frame, "First");
  MDIChild second(frame, "Second");
  first.Show();
  second.Show();
  SendMessageA(second.GethWnd(), WM_CLOSE, 0, 0);
  EXPECT_EQ(second.GethWnd(), nullptr);
  EXPECT_EQ(frame.GetActiveChild(), &first);
  EXPECT_EQ(application.exitQueries, 0);
  SendMessageA(first.GethWnd(), WM_CLOSE, 0, 0);
  EXPECT_EQ(frame.GetActiveChild(), nullptr);
}

TEST_F(MdiTest, ChildThatDiesHandsItsPlaceToAnother) {
  MDIFrame frame("Frame");
  frame.Show();
  MDIChild first(frame, "First");
  auto second = std::make_unique<MDIChild>(frame, "Second");
  first.Show();
  second->Show();
  ASSERT_EQ(frame.GetActiveChild(), second.get());
  second.reset();
  HWND const client = frame.GetClient().GethWnd();
  EXPECT_EQ(reinterpret_cast<HWND>(SendMessageA(client, WM_MDIGETACTIVE, 0, 0)), first.GethWnd());
  EXPECT_EQ(frame.GetActiveChild(), &first);
}

TEST_F(MdiTest, LastChildThatDiesLeavesNoneActive) {
  MDIFrame frame("Frame");
  frame.Show();
  auto child = std::make_unique<MDIChild>(frame, "Child");
  child->Show();
  child.reset();
  EXPECT_EQ(SendMessageA(frame.GetClient().GethWnd(), WM_MDIGETACTIVE, 0, 0), 0);
}

TEST_F(MdiTest, MaximisedChildThatDiesTakesItsButtonsOutOfTheMenuBar) {
  SV::MenuBar bar;
  bar.InsertItem(1, "File");
  MDIFrame frame("Frame");
  frame.SetMenuBar(&bar);
  frame.Show();
  auto child = std::make_unique<MDIChild>(frame, "Child");
  child->Show();
  SendMessageA(frame.GetClient().GethWnd(), WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(child->GethWnd()), 0);
  ASSERT_GT(GetMenuItemCount(bar.GetHMENU()), 1);
  child.reset();
  EXPECT_EQ(GetMenuItemCount(bar.GetHMENU()), 1);
  frame.SetMenuBar(nullptr);
}

TEST_F(MdiTest, MenuBarThatLeavesTheFrameLeavesTheButtonsOfAMaximisedChildBehind) {
  MDIFrame frame("Frame");
  frame.Show();
  MDIChild child(frame, "Child");
  child.Show();
  auto bar = std::make_unique<SV::MenuBar>();
  bar->InsertItem(1, "File");
  frame.SetMenuBar(bar.get());
  SendMessageA(frame.GetClient().GethWnd(), WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(child.GethWnd()), 0);
  HMENU const systemMenu = GetSystemMenu(child.GethWnd(), FALSE);
  ASSERT_GT(GetMenuItemCount(bar->GetHMENU()), 1);
  frame.SetMenuBar(nullptr);
  EXPECT_EQ(GetMenuItemCount(bar->GetHMENU()), 1);
  bar.reset();
  EXPECT_TRUE(IsMenu(systemMenu)) << "it belongs to the child";
  SV::MenuBar other;
  other.InsertItem(1, "Edit");
  frame.SetMenuBar(&other);
  EXPECT_GT(GetMenuItemCount(other.GetHMENU()), 1) << "the child needs its buttons";
  frame.SetMenuBar(nullptr);
}

TEST_F(MdiTest, MenuBarOfAClosedFrameHoldsNothingOfItsChildren) {
  SV::MenuBar bar;
  bar.InsertItem(1, "File");
  MDIFrame frame("Frame");
  frame.SetMenuBar(&bar);
  frame.Show();
  MDIChild child(frame, "Child");
  child.Show();
  SendMessageA(frame.GetClient().GethWnd(), WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(child.GethWnd()), 0);
  ASSERT_GT(GetMenuItemCount(bar.GetHMENU()), 1);
  DestroyWindow(frame.GethWnd());
  EXPECT_EQ(GetMenuItemCount(bar.GetHMENU()), 1);
}

TEST_F(MdiTest, ChildPaintsItself) {
  class Painted : public MDIChild {
  public:
    using MDIChild::MDIChild;
    void Paint(SV::OutputDevice & device, SV::Rectangle const &) override {
      device.ChangeFillInBrush(SV::Brush(SV::COL_LIGHTGREEN));
      device.DrawRect({{0, 0}, {30, 30}});
    }
  };
  MDIFrame frame("Frame");
  bringToTop(frame);
  frame.Show();
  Painted child(frame, "Child");
  child.SetPosSizePixel({0, 0}, {200, 150});
  child.Show();
  Application::Reschedule();
  child.Update();
  EXPECT_EQ(pixelOf(child.GethWnd(), 10, 10), 0x00FF00u);
}

TEST_F(MdiTest, BackgroundIsTheToolkitsUnlessTheApplicationPaintsIt) {
  MDIFrame frame("Frame");
  bringToTop(frame);
  frame.Show();
  Application::Reschedule();
  frame.GetClient().Update();
  EXPECT_EQ(application.backgroundPaints, 0);
  EXPECT_EQ(pixelOf(frame.GetClient().GethWnd(), 20, 20), GetSysColor(COLOR_APPWORKSPACE));
}

TEST_F(MdiTest, BackgroundIsTheToolkitsInAnApplicationThatKnowsNoFrames) {
  class Plain : public Application {
    void Main(int, char **) override {}
  } const plain;
  MDIFrame frame("Frame");
  bringToTop(frame);
  frame.Show();
  Application::Reschedule();
  frame.GetClient().Update();
  EXPECT_EQ(pixelOf(frame.GetClient().GethWnd(), 20, 20), GetSysColor(COLOR_APPWORKSPACE));
}

TEST_F(MdiTest, BackgroundIsPaintedByTheApplicationThatWantsTo) {
  application.drawsBackground = true;
  HWND painted = nullptr;
  application.onPaintBackground = [&](HWND window) {
    painted = window;
    RECT area;
    GetClientRect(window, &area);
    HDC const device = GetDC(window);
    HBRUSH const brush = CreateSolidBrush(0x3366CC);
    FillRect(device, &area, brush);
    DeleteObject(brush);
    ReleaseDC(window, device);
  };
  MDIFrame frame("Frame");
  bringToTop(frame);
  frame.Show();
  Application::Reschedule();
  frame.GetClient().Update();
  EXPECT_GT(application.backgroundPaints, 0);
  EXPECT_EQ(painted, frame.GetClient().GethWnd());
  EXPECT_EQ(pixelOf(painted, 20, 20), 0x3366CCu);
  int const before = application.backgroundPaints;
  application.InvalidateMDIClient();
  frame.GetClient().Update();
  EXPECT_EQ(application.backgroundPaints, before + 1);
}

TEST_F(MdiTest, BackgroundIsPaintedAnewAsAWholeWhenTheSizeChanges) {
  application.drawsBackground = true;
  MDIFrame frame("Frame");
  bringToTop(frame);
  frame.Show();
  Application::Reschedule();
  frame.GetClient().Update();
  RECT invalid;
  ASSERT_FALSE(GetUpdateRect(frame.GetClient().GethWnd(), &invalid, FALSE));
  SV::Size const size = frame.GetClient().GetOutputSizePixel();
  SendMessageA(frame.GetClient().GethWnd(), WM_SIZE, SIZE_RESTORED, MAKELPARAM(size.width, size.height));
  ASSERT_TRUE(GetUpdateRect(frame.GetClient().GethWnd(), &invalid, FALSE));
  EXPECT_EQ(invalid.right, size.width);
  EXPECT_EQ(invalid.bottom, size.height);
}

TEST_F(MdiTest, InvalidatingWithoutAFrameDoesNothing) { application.InvalidateMDIClient(); }

TEST_F(MdiTest, SystemMenuKeysOfChildrenWork) {
  MDIFrame frame("Frame");
  frame.Show();
  MDIChild child(frame, "Child");
  child.Show();
  // Ctrl+F4 as it comes out of the queue.
  BYTE keys[256] = {};
  keys[VK_CONTROL] = 0x80;
  SetKeyboardState(keys);
  PostMessageA(child.GethWnd(), WM_KEYDOWN, VK_F4, 1);
  for (int i = 0; i < 10 && child.GethWnd(); ++i)
    Application::Reschedule();
  keys[VK_CONTROL] = 0;
  SetKeyboardState(keys);
  EXPECT_EQ(child.GethWnd(), nullptr);
}

} // namespace

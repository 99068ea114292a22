// Drags with the mouse of the display, from a window to another one.
#include "adragman.hpp"

#include "support/processes/child_process.hpp"
#include "sv0105/controls/dialogtest.hpp"

#include <memory>
#include <string>
#include <vector>

namespace {

/// Drags its text when the mouse is moved with the left button held, and drops it on the window of the program where the
/// button goes up.
class Source : public SV::Window {
public:
  Source(SV::String const & text, std::function<void(SV::Window *)> drop)
      : Window(nullptr, SV::WB_TITLE), text_(text), drop_(std::move(drop)) {}
  ~Source() override {
    if (isDragging_)
      KivDragManager::EndDragAction();
  }

  void MouseMove(SV::MouseEvent const & event) override {
    last = event.position;
    if (isDragging_ || !(event.held & SV::MOUSE_LEFT))
      return;
    KivDragManager::BeginDragAction(text_);
    CaptureMouse();
    isDragging_ = true;
  }

  void MouseButtonUp(SV::MouseEvent const & event) override {
    ++ups;
    if (!isDragging_)
      return;
    ReleaseMouse();
    drop_(FindAt(OutputToScreenPixel(event.position)));
    end();
  }

  bool KeyInput(SV::KeyEvent const & event) override {
    if (event.code != SV::KEY_ESCAPE || !isDragging_)
      return false;
    ReleaseMouse();
    end();
    return true;
  }

  void CaptureLost() override { end(); }

  SV::Point last;
  int ups = 0;

private:
  void end() {
    KivDragManager::EndDragAction();
    isDragging_ = false;
  }

  SV::String text_;
  std::function<void(SV::Window *)> drop_;
  bool isDragging_ = false;
};

/// Takes what is dropped on it.
class Target : public SV::Window {
public:
  Target() : Window(nullptr, SV::WB_TITLE) {}

  void take() {
    if (KivDragManager::GetDragType() == KivDragText)
      dropped.push_back(textOf(KivDragManager::GetDragContent()));
  }
  void MouseMove(SV::MouseEvent const &) override { ++moves; }

  std::vector<std::string> dropped;
  int moves = 0;
};

class Dragging : public svtest::DialogTest {
protected:
  Dragging() {
    place(*source, {100, 100});
    place(*target, {500, 100});
    source->GrabFocus();
  }
  ~Dragging() override {
    release();
    KivDragManager::EndDragAction();
  }

  static void place(SV::Window & window, SV::Point const & corner) {
    window.SetPosSizePixel(corner, {200, 200});
    window.Show();
    SetWindowPos(window.GethWnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }

  std::function<void(SV::Window *)> dropOnTarget() {
    return [this](SV::Window * at) {
      ++drops;
      if (at != nullptr && at == target.get())
        target->take();
    };
  }

  /// Handles messages until it is so.
  template <class Condition> static bool becomes(Condition condition) {
    return support::eventually([&] {
      SV::Application::Reschedule();
      return condition();
    });
  }

  /// Moves the mouse to a point of the screen, in two steps: the system leaves out a move that is none.
  static void move(long x, long y) {
    SetCursorPos(x - 1, y);
    SV::Application::Reschedule();
    SetCursorPos(x, y);
    EXPECT_TRUE(becomes([&] {
      POINT now = {};
      return GetCursorPos(&now) && now.x == x && now.y == y;
    }));
  }

  static void press() { mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0); }
  static void release() {
    if (GetAsyncKeyState(VK_LBUTTON) < 0)
      mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
  }

  /// Begins in the source and goes over the target.
  void drag() {
    move(200, 200);
    press();
    move(210, 210);
    ASSERT_TRUE(becomes([] { return KivDragManager::ExistsDragContent(); }));
    move(600, 200);
    ASSERT_TRUE(becomes([this] { return source->last.x > 300; })) << "the mouse belongs to the source";
  }

  /// Lets the button go, and waits until the source has heard of it.
  void drop() {
    int const before = source->ups;
    release();
    ASSERT_TRUE(becomes([&] { return source->ups > before; }));
  }

  std::unique_ptr<Target> target = std::make_unique<Target>();
  std::unique_ptr<Source> source = std::make_unique<Source>("Check order", dropOnTarget());
  int drops = 0;
};

TEST_F(Dragging, DropsTheTextOnAnotherWindow) {
  drag();
  EXPECT_EQ(GetCapture(), source->GethWnd());
  EXPECT_EQ(KivDragManager::GetDragType(), KivDragText);
  EXPECT_STREQ(KivDragManager::GetDragContent().c_str(), "Check order");
  EXPECT_EQ(target->moves, 0) << "it sees nothing of the mouse meanwhile";
  drop();
  EXPECT_EQ(target->dropped, (std::vector<std::string>{"Check order"}));
  EXPECT_FALSE(KivDragManager::ExistsDragContent());
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(Dragging, DropsTheSameAgainTheNextTime) {
  drag();
  drop();
  drag();
  drop();
  EXPECT_EQ(target->dropped, (std::vector<std::string>{"Check order", "Check order"}));
}

TEST_F(Dragging, IsNothingWhileTheMouseStays) {
  move(200, 200);
  press();
  drop();
  EXPECT_EQ(drops, 0);
  EXPECT_FALSE(KivDragManager::ExistsDragContent());
}

TEST_F(Dragging, DropsNothingWhereNoWindowTakesIt) {
  drag();
  move(400, 200); // between the two
  drop();
  drag();
  move(200, 200); // back where it began
  drop();
  EXPECT_EQ(drops, 2);
  EXPECT_TRUE(target->dropped.empty());
  EXPECT_FALSE(KivDragManager::ExistsDragContent());
}

TEST_F(Dragging, DropsNothingOnADisabledWindow) {
  target->Disable();
  drag();
  drop();
  EXPECT_EQ(drops, 1);
  EXPECT_TRUE(target->dropped.empty());
}

TEST_F(Dragging, EndsByEscapeAndDropsNothing) {
  drag();
  SendMessageA(source->GethWnd(), WM_KEYDOWN, VK_ESCAPE, 1);
  EXPECT_FALSE(KivDragManager::ExistsDragContent());
  EXPECT_STREQ(KivDragManager::GetDragContent().c_str(), "");
  EXPECT_EQ(GetCapture(), nullptr);
  release();
  SV::Application::Reschedule();
  EXPECT_EQ(drops, 0);
}

TEST_F(Dragging, EndsWhenTheMouseIsTakenAway) {
  drag();
  ReleaseCapture(); // as the system does for a box
  EXPECT_FALSE(KivDragManager::ExistsDragContent());
  release();
  SV::Application::Reschedule();
  EXPECT_EQ(drops, 0);
}

TEST_F(Dragging, EndsWhenAnotherWindowCapturesTheMouse) {
  drag();
  target->CaptureMouse();
  EXPECT_FALSE(KivDragManager::ExistsDragContent());
  target->ReleaseMouse();
  release();
}

TEST_F(Dragging, EndsWithTheWindowThatBeganIt) {
  drag();
  source.reset();
  EXPECT_FALSE(KivDragManager::ExistsDragContent());
  EXPECT_EQ(GetCapture(), nullptr);
  release();
  SV::Application::Reschedule();
  EXPECT_TRUE(target->dropped.empty());
}

TEST_F(Dragging, OutlivesTheSystemWindowThatBeganItUntilItIsEnded) {
  drag();
  DestroyWindow(source->GethWnd());
  EXPECT_EQ(GetCapture(), nullptr);
  source.reset();
  EXPECT_FALSE(KivDragManager::ExistsDragContent());
}

TEST_F(Dragging, DropsNothingOnAWindowThatHasGoneMeanwhile) {
  drag();
  target.reset();
  drop();
  EXPECT_EQ(drops, 1);
  EXPECT_FALSE(KivDragManager::ExistsDragContent());
}

TEST_F(Dragging, ThatBeginsWithinAnotherOneIsTheOneThatIsDropped) {
  drag();
  KivDragManager::BeginDragAction("Inner"); // a command of the keyboard, say
  drop();
  EXPECT_EQ(target->dropped, (std::vector<std::string>{"Inner"}));
  EXPECT_FALSE(KivDragManager::ExistsDragContent()) << "the end of the outer one ends both";
}

TEST_F(Dragging, ThatHasBeenEndedByAnotherOneDropsNothing) {
  drag();
  KivDragManager::BeginDragAction("Inner");
  KivDragManager::EndDragAction();
  drop();
  EXPECT_EQ(drops, 1);
  EXPECT_TRUE(target->dropped.empty());
}

} // namespace

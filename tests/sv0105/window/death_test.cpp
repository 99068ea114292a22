// Windows, dialogs and menus that go while they are in use.
#include "sv0105/controls/dialogtest.hpp"

#include "support/memory/allocation.hpp"

namespace {

using SV::Window;
using svtest::Question;

class Death : public svtest::DialogTest {};

TEST_F(Death, OfAWindowWhileItIsResizedIsTheEndOfItsMessage) {
  class Fleeting : public Window {
  public:
    using Window::Window;
    void Resize(SV::Size const &) override { delete this; }
  };
  support::GuardPages const guard;
  HWND const handle = (new Fleeting(nullptr, SV::WB_TITLE))->GethWnd();
  EXPECT_EQ(SendMessageA(handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(10, 10)), 0);
  EXPECT_FALSE(IsWindow(handle));
}

// Dialogs

HWND dyingDialog = nullptr;
bool ownerTookInput = false;

int noteOwner(HWND window, unsigned message, unsigned long long, long long, long long &) {
  if (window == dyingDialog && message == WM_DESTROY)
    ownerTookInput = IsWindowEnabled(GetWindow(window, GW_OWNER)) != 0;
  return 0;
}

TEST_F(Death, OfARunningDialogFindsItsParentEnabled) {
  Window main(nullptr, SV::WB_TITLE);
  main.Show();
  auto question = std::make_unique<Question>(&main);
  dyingDialog = question->GethWnd();
  script->then([&] {
    EXPECT_FALSE(main.IsEnabled());
    SV::Sysdepen::ChangeHook(noteOwner);
    question.reset();
    SV::Sysdepen::ChangeHook(nullptr);
  });
  EXPECT_EQ(question->Execute(), 0);
  EXPECT_TRUE(ownerTookInput) << "otherwise the system turns to another program";
  EXPECT_TRUE(main.IsEnabled());
}

/// Does something when the mouse is taken from it.
class Losing : public Window {
public:
  using Window::Window;
  void CaptureLost() override { act(); }
  std::function<void()> act;
};

TEST_F(Death, OfADialogBeforeItIsShownEndsIt) {
  Losing main(nullptr, SV::WB_TITLE);
  main.Show();
  auto question = std::make_unique<Question>(nullptr);
  main.act = [&] { question.reset(); };
  main.CaptureMouse();
  support::GuardPages const guard;
  EXPECT_EQ(question->Execute(), 0);
  EXPECT_EQ(question, nullptr);
  EXPECT_TRUE(main.IsEnabled());
}

TEST_F(Death, OfADialogThatHasEndedBeforeItIsShownIsNotShown) {
  Losing main(nullptr, SV::WB_TITLE);
  main.Show();
  class Shown : public Question {
  public:
    using Question::Question;
    void Show() override { ++shown; }
    int shown = 0;
  } question(nullptr);
  main.act = [&] { question.EndDialog(7); };
  main.CaptureMouse();
  EXPECT_EQ(question.Execute(), 7);
  EXPECT_EQ(question.shown, 0);
}

/// Does something when it may no longer take input.
class Disabled : public Window {
public:
  using Window::Window;
  std::function<void()> act;

protected:
  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override {
    if (message == WM_ENABLE && wParam == 0)
      act();
    return Window::HandleMessage(message, wParam, lParam);
  }
};

TEST_F(Death, OfAWindowWhileADialogTakesTheInputIsNoHarm) {
  support::GuardPages const guard;
  Disabled first(nullptr, SV::WB_TITLE);
  auto victim = std::make_unique<Window>(nullptr, SV::WB_TITLE);
  Disabled last(nullptr, SV::WB_TITLE);
  for (Window * window : {static_cast<Window *>(&first), victim.get(), static_cast<Window *>(&last)})
    window->Show();
  first.act = last.act = [&] { victim.reset(); };
  Question question(nullptr);
  script->then([&] { question.EndDialog(3); });
  EXPECT_EQ(question.Execute(), 3);
  EXPECT_EQ(victim, nullptr);
}

TEST_F(Death, OfADialogWhoseShowThrowsIsASoundOne) {
  class Throwing : public Question {
  public:
    using Question::Question;
    void Show() override { throw std::runtime_error("show"); }
  };
  Throwing question(nullptr);
  EXPECT_THROW(question.Execute(), std::runtime_error);
  EXPECT_FALSE(question.IsInExecute());
}

// Menus

TEST_F(Death, OfAMenuBarWhoseMenuIsOpenClosesThat) {
  SV::MDIFrame frame("Frame");
  frame.Show();
  frame.ToTop();
  SV::PopupMenu file;
  file.InsertItem(2, "Item");
  auto bar = std::make_unique<SV::MenuBar>();
  bar->InsertItem(1, "~File");
  bar->SetPopupMenu(1, &file);
  frame.SetMenuBar(bar.get());
  auto const isInMenu = [] {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & GUI_INMENUMODE) != 0;
  };
  bool wasOpen = false;
  script->then([&] { PostMessageA(frame.GethWnd(), WM_SYSCOMMAND, SC_KEYMENU, 'f'); });
  script->then([&] {
    wasOpen = isInMenu();
    bar.reset();
  });
  play();
  EXPECT_TRUE(wasOpen);
  EXPECT_FALSE(isInMenu());
}

} // namespace

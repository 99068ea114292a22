#include "awinstack.hpp"

#include "aevents.hpp"
#include "frame/box_watch.hpp"
#include "frame/recording_application.hpp"
#include "sv/window.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <utility>

using kivtest::BoxWatch;

namespace {

using Lines = std::vector<std::string>;

/// Notes each change of the stack.
class Changes : public KivEventListener {
public:
  Changes() { setEventHandler<&Changes::note>(); }

  Lines lines;
  std::function<void()> then;

private:
  void note(KivWindowStackChangedEvent * change) {
    lines.push_back((change->IsPushed() ? "+" : "-") + std::to_string(change->GetDepth()) + " " +
                    change->GetTitle().c_str());
    if (auto const action = std::exchange(then, nullptr))
      action();
  }
};

class TitledWindow : public SV::Window {
public:
  explicit TitledWindow(char const * title) : Window(nullptr, SV::WB_TITLE) { SetText(title); }
};

class WindowStack : public testing::Test {
protected:
  WindowStack() {
    SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWNORMAL);
    SV::InitSV(0, nullptr);
  }

  /// The codes of the internal errors, without the version.
  Lines errors() const {
    Lines codes;
    for (kivtest::SeenBox const & box : boxes.boxes()) {
      std::size_t const start = box.text.find("atools-");
      codes.push_back(box.text.substr(start, box.text.find(' ', start) - start));
    }
    return codes;
  }

  kivtest::RecordingApplication application;
  BoxWatch boxes;
  Changes changes;
};

TEST_F(WindowStack, APushReportsTheDepthAndTheTitle) {
  TitledWindow a("first");
  TitledWindow b("second");
  Kiv_PushParentWindow(&a);
  Kiv_PushParentWindow(&b);
  EXPECT_EQ(changes.lines, (Lines{"+1 first", "+2 second"}));
}

TEST_F(WindowStack, APopReportsTheDepthAndTheTitleAndGivesTheWindow) {
  TitledWindow a("first");
  TitledWindow b("second");
  Kiv_PushParentWindow(&a);
  Kiv_PushParentWindow(&b);
  EXPECT_EQ(Kiv_PopParentWindow(&b), &b);
  EXPECT_EQ(Kiv_PopParentWindow(&a), &a);
  EXPECT_EQ(changes.lines, (Lines{"+1 first", "+2 second", "-1 second", "-0 first"}));
}

TEST_F(WindowStack, AWindowLeavesFromWhereverItLies) {
  TitledWindow a("first");
  TitledWindow b("second");
  a.Show();
  b.Show();
  Kiv_PushParentWindow(&a);
  Kiv_PushParentWindow(&b);
  EXPECT_EQ(Kiv_PopParentWindow(&a), &a);
  EXPECT_EQ(changes.lines.back(), "-1 first");
  EXPECT_EQ(Kiv_GetTopWindow(0), &b);
}

TEST_F(WindowStack, AWindowPushedTwiceStandsOnceAndIsReportedOnce) {
  TitledWindow a("first");
  TitledWindow b("second");
  a.Show();
  b.Show();
  Kiv_PushParentWindow(&a);
  Kiv_PushParentWindow(&b);
  EXPECT_EQ(Kiv_GetTopWindow(0), &b);
  Kiv_PushParentWindow(&a);
  EXPECT_EQ(changes.lines, (Lines{"+1 first", "+2 second"}));
  EXPECT_EQ(Kiv_GetTopWindow(0), &a) << "it goes to the top";
  EXPECT_EQ(Kiv_GetTopWindow(1), &b);
  Kiv_PopParentWindow(&a);
  EXPECT_EQ(changes.lines.back(), "-1 first");
  EXPECT_EQ(Kiv_PopParentWindow(&a), nullptr);
}

TEST_F(WindowStack, PoppingAWindowThatIsNotOnItGivesNullAndReportsNothing) {
  TitledWindow a("first");
  EXPECT_EQ(Kiv_PopParentWindow(&a), nullptr);
  EXPECT_EQ(changes.lines, Lines());
  EXPECT_EQ(errors(), Lines());
}

TEST_F(WindowStack, PushingNullIsAnInternalErrorAndNothingElse) {
  Kiv_PushParentWindow(nullptr);
  EXPECT_EQ(errors(), (Lines{"atools-1852"}));
  EXPECT_EQ(changes.lines, Lines());
  EXPECT_EQ(Kiv_GetTopWindow(0), nullptr);
  EXPECT_EQ(errors().size(), 1u);
}

// Null is no window, and its memory cannot be read.
TEST_F(WindowStack, PoppingNullIsTwoInternalErrorsAndGivesNull) {
  EXPECT_EQ(Kiv_PopParentWindow(nullptr), nullptr);
  EXPECT_EQ(errors(), (Lines{"atools-1873", "atools-1875"}));
  EXPECT_EQ(changes.lines, Lines());
}

/// A window in memory of its own, at an address that is taken as it is where one is given.
class PlacedWindow {
public:
  explicit PlacedWindow(std::uintptr_t address = 0)
      : memory_(VirtualAlloc(reinterpret_cast<void *>(address), sizeof(TitledWindow), MEM_RESERVE | MEM_COMMIT,
                             PAGE_READWRITE)) {
    if (memory_ != nullptr)
      window_ = new (memory_) TitledWindow("placed");
  }
  PlacedWindow(PlacedWindow const &) = delete;
  PlacedWindow & operator=(PlacedWindow const &) = delete;
  ~PlacedWindow() {
    free();
    if (memory_ != nullptr)
      VirtualFree(memory_, 0, MEM_RELEASE);
  }

  /// The window dies and its memory goes. The addresses stay reserved, or others would soon find memory of their own there.
  void free() {
    if (isFreed_ || memory_ == nullptr)
      return;
    window_->~TitledWindow();
    VirtualFree(memory_, 0, MEM_DECOMMIT);
    isFreed_ = true;
  }

  TitledWindow * get() const { return window_; }

private:
  void * memory_;
  bool isFreed_ = false;
  TitledWindow * window_ = nullptr;
};

TEST_F(WindowStack, PoppingAWindowThatCannotBeReadIsAnInternalErrorAndTakesItOff) {
  PlacedWindow placed;
  Kiv_PushParentWindow(placed.get());
  placed.free();
  EXPECT_EQ(Kiv_PopParentWindow(placed.get()), placed.get());
  EXPECT_EQ(errors(), (Lines{"atools-1875"}));
  EXPECT_EQ(changes.lines, (Lines{"+1 placed", "-0 "}));
}

TEST_F(WindowStack, PushingAWindowThatCannotBeReadHasAnEmptyTitle) {
  PlacedWindow placed;
  placed.free();
  Kiv_PushParentWindow(placed.get());
  EXPECT_EQ(changes.lines, (Lines{"+1 "}));
  EXPECT_EQ(errors(), Lines());
}

TEST_F(WindowStack, AHandlerFindsThePushedWindowOnTop) {
  TitledWindow a("first");
  TitledWindow b("second");
  a.Show();
  b.Show();
  Kiv_PushParentWindow(&a);
  SV::Window const * top = nullptr;
  changes.then = [&] { top = Kiv_GetTopWindow(0); };
  Kiv_PushParentWindow(&b);
  EXPECT_EQ(top, &b);
}

TEST_F(WindowStack, AHandlerNoLongerFindsThePoppedWindow) {
  TitledWindow a("first");
  TitledWindow b("second");
  a.Show();
  b.Show();
  Kiv_PushParentWindow(&a);
  Kiv_PushParentWindow(&b);
  SV::Window const * top = nullptr;
  SV::Window const * poppedAgain = &b;
  changes.then = [&] {
    top = Kiv_GetTopWindow(0);
    poppedAgain = Kiv_PopParentWindow(&b);
  };
  Kiv_PopParentWindow(&b);
  EXPECT_EQ(top, &a);
  EXPECT_EQ(poppedAgain, nullptr);
  EXPECT_EQ(changes.lines, (Lines{"+1 first", "+2 second", "-1 second"}));
}

TEST_F(WindowStack, AHandlerMayChangeTheStack) {
  TitledWindow a("first");
  TitledWindow b("second");
  changes.then = [&] {
    Kiv_PushParentWindow(&b);
    Kiv_PopParentWindow(&a);
  };
  Kiv_PushParentWindow(&a);
  EXPECT_EQ(changes.lines, (Lines{"+1 first", "+2 second", "-1 first"}));
}

// The top window

TEST_F(WindowStack, WithoutWindowsTheTopIsNull) { EXPECT_EQ(Kiv_GetTopWindow(0), nullptr); }

TEST_F(WindowStack, WithNothingOnItTheTopIsTheVisibleApplicationWindow) {
  TitledWindow main("main");
  SV::Application::SetAppWindow(&main);
  EXPECT_EQ(Kiv_GetTopWindow(0), nullptr) << "not yet visible";
  main.Show();
  EXPECT_EQ(Kiv_GetTopWindow(0), &main);
}

TEST_F(WindowStack, TheTopIsTheNewestVisibleWindowFromTheIndexOn) {
  TitledWindow main("main");
  TitledWindow a("first");
  TitledWindow b("second");
  TitledWindow c("third");
  SV::Application::SetAppWindow(&main);
  for (TitledWindow * window : {&main, &a, &c})
    window->Show();
  for (TitledWindow * window : {&a, &b, &c})
    Kiv_PushParentWindow(window);
  EXPECT_EQ(Kiv_GetTopWindow(0), &c);
  EXPECT_EQ(Kiv_GetTopWindow(1), &a) << "the one between is hidden";
  EXPECT_EQ(Kiv_GetTopWindow(2), &a);
  EXPECT_EQ(Kiv_GetTopWindow(3), &main) << "past the end";
  EXPECT_EQ(Kiv_GetTopWindow(0xFFFFFFFF), &main);
  main.Hide();
  EXPECT_EQ(Kiv_GetTopWindow(3), nullptr);
}

TEST_F(WindowStack, WithHiddenWindowsOnlyTheTopIsTheApplicationWindow) {
  TitledWindow main("main");
  TitledWindow a("first");
  SV::Application::SetAppWindow(&main);
  main.Show();
  Kiv_PushParentWindow(&a);
  EXPECT_EQ(Kiv_GetTopWindow(0), &main);
}

TEST_F(WindowStack, AWindowInsideOfAHiddenOneCountsAsVisible) {
  TitledWindow outer("outer");
  SV::Window inner(&outer);
  inner.Show();
  Kiv_PushParentWindow(&inner);
  EXPECT_EQ(Kiv_GetTopWindow(0), &inner);
}

TEST_F(WindowStack, AWindowThatCannotBeReadIsReportedAndPassedOver) {
  TitledWindow a("first");
  a.Show();
  PlacedWindow placed;
  Kiv_PushParentWindow(&a);
  Kiv_PushParentWindow(placed.get());
  placed.free();
  EXPECT_EQ(Kiv_GetTopWindow(0), &a);
  EXPECT_EQ(errors(), (Lines{"atools-1898"}));
  EXPECT_EQ(Kiv_GetTopWindow(1), &a);
  EXPECT_EQ(errors().size(), 1u);
}

TEST_F(WindowStack, AWindowIsReportedWhenLessThan480BytesOfItCanBeRead) {
  constexpr std::size_t kPage = 4096;
  auto * const pages = static_cast<char *>(VirtualAlloc(nullptr, 2 * kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
  ASSERT_TRUE(pages);
  for (std::size_t const readable : {480, 472}) {
    DWORD before = 0;
    auto * const window = new (pages + kPage - readable) TitledWindow("edge");
    Kiv_PushParentWindow(window);
    VirtualProtect(pages + kPage, kPage, PAGE_NOACCESS, &before);
    Kiv_GetTopWindow(0);
    EXPECT_EQ(Kiv_PopParentWindow(window), window) << readable;
    EXPECT_EQ(errors(), readable == 480 ? Lines() : (Lines{"atools-1898", "atools-1875"}));
    VirtualProtect(pages + kPage, kPage, PAGE_READWRITE, &before);
    window->~TitledWindow();
  }
  VirtualFree(pages, 0, MEM_RELEASE);
}

// The report does not keep a window from being found: its address may only look like the fill of freed memory.
TEST_F(WindowStack, AWindowThatIsReportedIsStillTakenWhenItIsVisible) {
  PlacedWindow placed(0x4CDCD0000);
  ASSERT_TRUE(placed.get());
  placed.get()->Show();
  Kiv_PushParentWindow(placed.get());
  EXPECT_EQ(Kiv_GetTopWindow(0), placed.get());
  EXPECT_EQ(errors(), (Lines{"atools-1898"}));
}

} // namespace

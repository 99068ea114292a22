// The bars and panes of the sample product in a window of the test, with a mouse of the test's own.

#include "apps/modeler/in_process.hpp"

#include "windows/parts/modelpanes.hpp"
#include "windows/parts/statusbar.hpp"
#include "windows/parts/toolbar.hpp"

#include "support/windows/pixels.hpp"

using SV::Point;
using SV::String;

namespace {

SV::MouseEvent at(Point const & point, unsigned short button = 0) { return {point, button}; }

class ModelerParts : public modeler::InProcess {
protected:
  ModelerParts() {
    frame_ = std::make_unique<SV::Window>(nullptr);
    frame_->ChangeOutputSizePixel({600, 300});
    KivThemeManager::Instance().SetVisualStylesXPEnabled(false);
    KivThemeManager::Instance().SetCurrentTheme("Modern");
  }
  ~ModelerParts() override { frame_.reset(); }

  SV::Window & frame() { return *frame_; }

  /// What the window paints, in a device of its size.
  static support::Pixels painted(SV::Window & window) {
    SV::Size const size = window.GetOutputSizePixel();
    SV::Bitmap const bitmap(size);
    HDC const memory = CreateCompatibleDC(nullptr);
    HGDIOBJ const former = SelectObject(memory, bitmap.GethBitmap());
    {
      SV::OutputDevice device(memory);
      window.Paint(device, {{0, 0}, size});
    }
    support::Pixels pixels = support::readPixels(memory, {0, 0, size.width, size.height});
    SelectObject(memory, former);
    DeleteDC(memory);
    return pixels;
  }

  static modeler::ProcessModel order() {
    modeler::ProcessModel model;
    model.name = "Order";
    model.nodes.push_back({modeler::NodeKind::Start, "a", "Begin", 0});
    model.nodes.push_back({modeler::NodeKind::Activity, "b", "Check", 20});
    return model;
  }

private:
  std::unique_ptr<SV::Window> frame_;
};

class ModelerToolBar : public ModelerParts {
protected:
  ModelerToolBar() {
    auto const button = [this](char const * name, bool beginsGroup) {
      return modeler::ToolButton{[name] { return String(name); }, [this, name] { pressed += name; },
                                 [this, name] { return checked == name; }, beginsGroup};
    };
    bar = std::make_unique<modeler::ToolBar>(
        frame(), ISequence<modeler::ToolButton>{button("One", false), button("Two", false), button("Three", true)});
    bar->SetPosSizePixel({0, 0}, {400, bar->GetHeight(400)});
    middle = bar->GetHeight(400) / 2;
  }

  void click(long from, long to) {
    bar->MouseButtonDown(at({from, middle}, SV::MOUSE_LEFT));
    bar->MouseButtonUp(at({to, middle}, SV::MOUSE_LEFT));
  }

  /// Within the first button, the second, and the third.
  static constexpr long kOne = 8;
  static constexpr long kTwo = 60;

  std::string pressed;
  std::string checked;
  std::unique_ptr<modeler::ToolBar> bar;
  long middle = 0;
};

TEST_F(ModelerToolBar, PressesTheButtonThatTheMouseGoesDownAndUpOn) {
  click(kOne, kOne);
  EXPECT_EQ(pressed, "One");
  click(kTwo, kTwo);
  EXPECT_EQ(pressed, "OneTwo");
}

TEST_F(ModelerToolBar, PressesNothingWhenTheMouseHasLeftTheButton) {
  click(kOne, kTwo);
  click(kOne, 390);
  click(390, kOne);
  bar->MouseButtonDown(at({kOne, middle}, SV::MOUSE_LEFT));
  bar->CaptureLost();
  bar->MouseButtonUp(at({kOne, middle}, SV::MOUSE_LEFT));
  bar->MouseButtonDown(at({kOne, middle}, SV::MOUSE_RIGHT));
  bar->MouseButtonUp(at({kOne, middle}, SV::MOUSE_RIGHT));
  EXPECT_EQ(pressed, "");
}

TEST_F(ModelerToolBar, ShowsWhichButtonIsHotPressedAndChecked) {
  support::Pixels const plain = painted(*bar);
  bar->MouseMove(at({kOne, middle}));
  support::Pixels const hot = painted(*bar);
  EXPECT_FALSE(hot == plain);
  SendMessageA(bar->GethWnd(), WM_MOUSELEAVE, 0, 0);
  EXPECT_TRUE(painted(*bar) == plain);
  bar->MouseMove(at({kOne, middle}));
  bar->MouseButtonDown(at({kOne, middle}, SV::MOUSE_LEFT));
  support::Pixels const down = painted(*bar);
  EXPECT_FALSE(down == hot);
  bar->MouseMove(at({kTwo, middle}));
  EXPECT_TRUE(painted(*bar) == plain) << "while one is held down, no other one is hot";
  bar->MouseButtonUp(at({kTwo, middle}, SV::MOUSE_LEFT));
  EXPECT_TRUE(painted(*bar) == plain);
  checked = "One";
  EXPECT_FALSE(painted(*bar) == plain);
  EXPECT_FALSE(painted(*bar) == hot);
}

TEST_F(ModelerToolBar, HasAnotherRowForButtonsThatHaveNoRoom) {
  long const row = bar->GetHeight(400);
  EXPECT_EQ(bar->GetHeight(10'000), row);
  long const narrow = bar->GetHeight(90);
  EXPECT_GT(narrow, row);
  bar->SetPosSizePixel({0, 0}, {90, narrow});
  bar->MouseButtonDown(at({kOne, narrow - middle}, SV::MOUSE_LEFT));
  bar->MouseButtonUp(at({kOne, narrow - middle}, SV::MOUSE_LEFT));
  EXPECT_EQ(pressed, "Three");
}

TEST_F(ModelerToolBar, LooksAsTheThemeSays) {
  support::Pixels const modern = painted(*bar);
  KivThemeManager::Instance().SetCurrentTheme("Classic");
  EXPECT_FALSE(painted(*bar) == modern);
}

class ModelerPane : public ModelerParts {
protected:
  ModelerPane()
      : outline(frame(), [this] { return model.name.Len() > 0 ? &model : nullptr; },
                {[this] { ++closed; }, [this] { ++left; }}) {
    outline.SetPosSizePixel({0, 0}, {kWidth, 200});
  }

  bool hasBar(LONG style) const { return (GetWindowLongA(outline.GethWnd(), GWL_STYLE) & style) != 0; }

  static constexpr long kWidth = 200;
  static constexpr Point kButton = {kWidth - 8, 8};
  static constexpr Point kName = {60, 34};

  modeler::ProcessModel model = order();
  int closed = 0;
  int left = 0;
  modeler::OutlinePane outline;
};

TEST_F(ModelerPane, ClosesWhenItsButtonIsPressed) {
  outline.MouseButtonDown(at(kButton, SV::MOUSE_LEFT));
  EXPECT_EQ(closed, 0);
  outline.MouseButtonUp(at(kButton, SV::MOUSE_LEFT));
  EXPECT_EQ(closed, 1);
}

TEST_F(ModelerPane, StaysWhenTheMouseGoesUpBesideTheButton) {
  outline.MouseButtonDown(at(kButton, SV::MOUSE_LEFT));
  outline.MouseButtonUp(at({20, 8}, SV::MOUSE_LEFT));
  outline.MouseButtonUp(at(kButton, SV::MOUSE_LEFT));
  outline.MouseButtonDown(at(kButton, SV::MOUSE_LEFT));
  outline.CaptureLost();
  outline.MouseButtonUp(at(kButton, SV::MOUSE_LEFT));
  EXPECT_EQ(closed, 0);
}

TEST_F(ModelerPane, GivesTheKeyboardBackWithEscape) {
  EXPECT_TRUE(outline.KeyInput({SV::KEY_ESCAPE}));
  EXPECT_EQ(left, 1);
  EXPECT_FALSE(outline.KeyInput({SV::KEY_F1}));
}

TEST_F(ModelerPane, FoldsItsNodesUpByMouseAndKeyboard) {
  support::Pixels const open = painted(outline);
  outline.MouseButtonDown(at(kName, SV::MOUSE_LEFT));
  support::Pixels const folded = painted(outline);
  EXPECT_GT(folded.count(0xFFFFFF), open.count(0xFFFFFF));
  outline.KeyInput({SV::KEY_RIGHT});
  EXPECT_TRUE(painted(outline) == open);
  outline.KeyInput({SV::KEY_LEFT});
  EXPECT_TRUE(painted(outline) == folded);
}

TEST_F(ModelerPane, ScrollsByKeysWheelAndBarWhereItsLinesHaveNoRoom) {
  outline.SetPosSizePixel({0, 0}, {kWidth, 60});
  painted(outline); // finds out that there is a need for a bar
  support::Pixels const top = painted(outline);
  EXPECT_TRUE(hasBar(WS_VSCROLL));
  outline.KeyInput({SV::KEY_DOWN});
  support::Pixels const second = painted(outline);
  EXPECT_FALSE(second == top);
  SV::MouseEvent wheel;
  wheel.notches = -100;
  EXPECT_TRUE(outline.MouseWheel(wheel));
  support::Pixels const last = painted(outline);
  EXPECT_FALSE(last == second);
  outline.KeyInput({SV::KEY_END});
  EXPECT_TRUE(painted(outline) == last);
  outline.KeyInput({SV::KEY_HOME});
  EXPECT_TRUE(painted(outline) == top);
  SendMessageA(outline.GethWnd(), WM_VSCROLL, SB_BOTTOM, 0);
  EXPECT_TRUE(painted(outline) == last);
}

TEST_F(ModelerPane, HasNoBarWhereAllHasRoom) {
  painted(outline);
  EXPECT_FALSE(hasBar(WS_HSCROLL) || hasBar(WS_VSCROLL));
  support::Pixels const top = painted(outline);
  outline.KeyInput({SV::KEY_DOWN});
  EXPECT_TRUE(painted(outline) == top);
}

TEST_F(ModelerPane, HasABarForALineThatIsTooLong) {
  model.nodes.push_back({modeler::NodeKind::End, "c", "An end whose text is longer than the pane is wide", 0});
  painted(outline);
  EXPECT_TRUE(hasBar(WS_HSCROLL));
  support::Pixels const before = painted(outline);
  SendMessageA(outline.GethWnd(), WM_HSCROLL, SB_BOTTOM, 0);
  EXPECT_FALSE(painted(outline) == before);
}

TEST_F(ModelerPane, PressesTheLineThatIsSeenThere) {
  outline.SetPosSizePixel({0, 0}, {kWidth, 60});
  painted(outline);
  outline.KeyInput({SV::KEY_END});
  support::Pixels const last = painted(outline);
  outline.MouseButtonDown(at({60, 50}, SV::MOUSE_LEFT)); // the name, which folds the others up, is out of sight
  EXPECT_TRUE(painted(outline) == last);
}

TEST_F(ModelerPane, SaysSoWhenNoModelIsInFront) {
  support::Pixels const with = painted(outline);
  model.name = "";
  EXPECT_FALSE(painted(outline) == with);
  outline.MouseButtonDown(at(kName, SV::MOUSE_LEFT));
}

TEST_F(ModelerPane, TakesAnySize) {
  for (SV::Size const size : {SV::Size{0, 0}, SV::Size{1, 1}, SV::Size{5, 20}, SV::Size{20, 21}, SV::Size{600, 300}}) {
    outline.SetPosSizePixel({0, 0}, size);
    painted(outline);
  }
}

TEST_F(ModelerParts, NotesWrapTheirLines) {
  modeler::ProcessModel const model = order();
  modeler::NotesPane notes(frame(), [&model] { return &model; }, {});
  notes.SetPosSizePixel({0, 0}, {400, 200});
  auto const inkBelow = [&notes](int top) {
    support::Pixels const pixels = painted(notes);
    int ink = 0;
    for (int y = top; y < pixels.height() - 1; ++y)
      for (int x = 1; x < pixels.width() - 1; ++x)
        ink += pixels.at(x, y) != 0xFFFFFF ? 1 : 0;
    return ink;
  };
  int const below = 20 + 6 + 20;
  EXPECT_EQ(inkBelow(below), 0) << "all is in one line";
  notes.SetPosSizePixel({0, 0}, {60, 200});
  EXPECT_GT(inkBelow(below), 0);
}

TEST_F(ModelerParts, StatusBarLeavesTheRoomOfItsRightTextFree) {
  String const longText = "A text that is much longer than a bar of this width has room for, whatever the font";
  modeler::StatusBar shortBar(
      frame(), [] { return String("Left"); }, [] { return String("Right"); });
  modeler::StatusBar longBar(
      frame(), [&longText] { return longText; }, [] { return String("Right"); });
  for (modeler::StatusBar * const each : {&shortBar, &longBar})
    each->SetPosSizePixel({0, 0}, {200, each->GetHeight()});
  support::Pixels const few = painted(shortBar);
  support::Pixels const many = painted(longBar);
  SV::VirtualDevice ruler;
  ruler.ChangeFont(longBar.GetFont());
  int const right = 200 - static_cast<int>(ruler.GetTextSize("Right").width) - 8 - 4; // with half of the gap
  EXPECT_FALSE(few == many);
  for (int x = right; x < 200; ++x)
    for (int y = 0; y < few.height(); ++y)
      ASSERT_EQ(few.at(x, y), many.at(x, y)) << x;
}

TEST_F(ModelerParts, StatusBarHasATextAtEachEnd) {
  modeler::StatusBar empty(
      frame(), [] { return String(); }, [] { return String(); });
  modeler::StatusBar bar(
      frame(), [] { return String("Left"); }, [] { return String("Right"); });
  for (modeler::StatusBar * const each : {&empty, &bar})
    each->SetPosSizePixel({0, 0}, {400, each->GetHeight()});
  support::Pixels const without = painted(empty);
  support::Pixels const with = painted(bar);
  auto const differ = [&](int from, int to) {
    for (int y = 0; y < with.height(); ++y)
      for (int x = from; x < to; ++x)
        if (with.at(x, y) != without.at(x, y))
          return true;
    return false;
  };
  EXPECT_TRUE(differ(0, 60));
  EXPECT_FALSE(differ(100, 300));
  EXPECT_TRUE(differ(340, 400));
}

} // namespace

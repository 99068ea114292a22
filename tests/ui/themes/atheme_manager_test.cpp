// Which theme is current, and what depends on it.

#include "atheme_manager.hpp"

#include "aevent_dispatcher.hpp"
#include "aevents.hpp"
#include "support/imports/import_spy.hpp"
#include "ui/themes/stylecalls.hpp"
#include "ui/themes/themetest.hpp"

#include <memory>
#include <type_traits>

namespace {

using namespace themetest;

KivThemeManager & manager() { return KivThemeManager::Instance(); }

/// The manager, if there is one; unlike Instance it makes none.
KivThemeManager * existingManager() {
  auto const & dispatcher = KivEventDispatcher::Instance();
  auto const entry = dispatcher.find(KIV_EVENT_AppExit);
  if (entry == dispatcher.end())
    return nullptr;
  for (KivEventAction const * const action : entry->second->actions())
    if (auto * const found = action->removed ? nullptr : dynamic_cast<KivThemeManager *>(action->listener))
      return found;
  return nullptr;
}

std::vector<HWND> & painted() {
  static std::vector<HWND> windows;
  return windows;
}

/// Windows that are to be painted anew, in place of the painting.
class ThemeManager : public ToolkitTest {
protected:
  ThemeManager() {
    painted().clear();
    support::spyOnImport("SV0105.dll", "InvalidateRect", [](support::SpiedCall & call) {
      painted().push_back(reinterpret_cast<HWND>(call.arguments[0]));
    });
  }
};

TEST_F(ThemeManager, ListensToEvents) {
  EXPECT_TRUE((std::is_base_of_v<KivEventListener, KivThemeManager>));
  EXPECT_TRUE(std::has_virtual_destructor_v<KivThemeManager>);
}

TEST_F(ThemeManager, IsMadeWhenItIsFirstAskedFor) {
  EXPECT_EQ(existingManager(), nullptr);
  KivThemeManager & first = manager();
  EXPECT_EQ(existingManager(), &first);
  EXPECT_EQ(&manager(), &first);
}

TEST_F(ThemeManager, HasClassicAndModern) {
  ASSERT_EQ(manager().GetThemeCount(), 2);
  EXPECT_STREQ(manager().GetTheme(0).GetName().c_str(), "Classic");
  EXPECT_STREQ(manager().GetTheme(1).GetName().c_str(), "Modern");
  EXPECT_NE(dynamic_cast<KivThemeClassic const *>(&manager().GetTheme(0)), nullptr);
  EXPECT_NE(dynamic_cast<KivThemeModern const *>(&manager().GetTheme(1)), nullptr);
}

TEST_F(ThemeManager, BeginsWithModern) { EXPECT_EQ(&KivThemeManager::CurrentTheme(), &manager().GetTheme(1)); }

TEST_F(ThemeManager, TakesAThemeByItsPlace) {
  manager().SetCurrentTheme(0L);
  EXPECT_EQ(&KivThemeManager::CurrentTheme(), &manager().GetTheme(0));
  manager().SetCurrentTheme(1L);
  EXPECT_EQ(&KivThemeManager::CurrentTheme(), &manager().GetTheme(1));
}

TEST_F(ThemeManager, KeepsItsThemeForAPlaceThatIsNone) {
  SV::Window window(nullptr);
  manager().AddWindow(&window);
  manager().SetCurrentTheme(0L);
  for (long const index : {-1L, 2L, 2'000'000'000L, -2'000'000'000L}) {
    painted().clear();
    manager().SetCurrentTheme(index);
    EXPECT_STREQ(KivThemeManager::CurrentTheme().GetName().c_str(), "Classic") << index;
    EXPECT_EQ(painted(), std::vector<HWND>{window.GethWnd()}) << index;
    EXPECT_EQ(&manager().GetTheme(index), &KivThemeManager::CurrentTheme()) << index;
  }
  manager().RemoveWindow(&window);
}

TEST_F(ThemeManager, TakesAThemeByItsName) {
  for (char const * const name : {"Classic", "Modern", "Classic"}) {
    manager().SetCurrentTheme(SV::String(name));
    EXPECT_STREQ(KivThemeManager::CurrentTheme().GetName().c_str(), name);
  }
}

TEST_F(ThemeManager, TakesAThemeByTheNameItGave) {
  manager().SetCurrentTheme(manager().GetTheme(0).GetName());
  EXPECT_EQ(&KivThemeManager::CurrentTheme(), &manager().GetTheme(0));
}

TEST_F(ThemeManager, KeepsItsThemeForAnUnknownNameAndRepaints) {
  SV::Window window(nullptr);
  manager().AddWindow(&window);
  manager().SetCurrentTheme("Classic");
  for (SV::String const & name : {SV::String("modern"), SV::String("Moder"), SV::String("Modern "), SV::String(""),
                                  SV::String("Modern\0", 7), SV::String("Dark")}) {
    painted().clear();
    manager().SetCurrentTheme(name);
    EXPECT_STREQ(KivThemeManager::CurrentTheme().GetName().c_str(), "Classic") << name.c_str();
    EXPECT_EQ(painted(), std::vector<HWND>{window.GethWnd()}) << name.c_str();
  }
  manager().RemoveWindow(&window);
}

TEST_F(ThemeManager, RepaintsEachOfItsWindowsOnce) {
  SV::Window first(nullptr);
  SV::Window second(nullptr);
  SV::Window third(nullptr);
  for (SV::Window * const window : {&first, &second, &second, &third, static_cast<SV::Window *>(nullptr)})
    manager().AddWindow(window);
  manager().RemoveWindow(&third);
  manager().RemoveWindow(&third);
  manager().RemoveWindow(nullptr);
  manager().SetCurrentTheme("Classic");
  std::vector<HWND> const expected = &first < &second ? std::vector<HWND>{first.GethWnd(), second.GethWnd()}
                                                      : std::vector<HWND>{second.GethWnd(), first.GethWnd()};
  EXPECT_EQ(painted(), expected) << "in the order of their addresses";
  manager().RemoveWindow(&first);
  manager().RemoveWindow(&second);
}

TEST_F(ThemeManager, RepaintsTheClientAreaOfAnMDIApplicationAfterTheWindows) {
  SV::Window window(nullptr);
  SV::MDIFrame frame("Frame");
  manager().AddWindow(&window);
  manager().SetCurrentTheme(0L);
  EXPECT_EQ(painted(), (std::vector<HWND>{window.GethWnd(), frame.GetClient().GethWnd()}));
  manager().RemoveWindow(&window);
}

TEST_F(ThemeManager, PaintsItsWindowsInTheNewTheme) {
  class Bar : public SV::Window {
  public:
    using Window::Window;
    void Paint(SV::OutputDevice &, SV::Rectangle const &) override {
      names.emplace_back(KivThemeManager::CurrentTheme().GetName().c_str());
    }
    std::vector<std::string> names;
  } bar(nullptr);
  bar.SetPosSizePixel({0, 0}, {20, 20});
  bar.Show();
  SV::Application::Reschedule();
  bar.Update();
  bar.names.clear();
  manager().AddWindow(&bar);
  manager().SetCurrentTheme("Classic");
  bar.Update();
  EXPECT_EQ(bar.names, std::vector<std::string>{"Classic"});
  manager().RemoveWindow(&bar);
}

TEST(ThemeManagerOfAPlainApplication, ChangesTheThemeThoughThereIsNoClientArea) {
  manager().SetCurrentTheme("Classic");
  EXPECT_EQ(&KivThemeManager::CurrentTheme(), &manager().GetTheme(0)) << "without an application";
  class Plain : public SV::Application {
    void Main(int, char **) override {}
  } const application;
  manager().SetCurrentTheme("Modern");
  EXPECT_EQ(&KivThemeManager::CurrentTheme(), &manager().GetTheme(1));
}

// Use of visual styles

TEST_F(ThemeManager, UsesVisualStylesAtFirst) { EXPECT_TRUE(manager().IsVisualStylesXPEnabled()); }

TEST_F(ThemeManager, RepaintsBeforeItBeginsToUseVisualStylesAndNotWhenItEnds) {
  static std::vector<bool> used;
  used.clear();
  support::spyOnImport("SV0105.dll", "InvalidateRect",
                       [](support::SpiedCall &) { used.push_back(manager().IsVisualStylesXPEnabled()); });
  SV::Window window(nullptr);
  manager().AddWindow(&window);
  manager().SetVisualStylesXPEnabled(false);
  EXPECT_FALSE(manager().IsVisualStylesXPEnabled());
  EXPECT_EQ(used.size(), 0u);
  manager().SetVisualStylesXPEnabled(true);
  EXPECT_TRUE(manager().IsVisualStylesXPEnabled());
  EXPECT_EQ(used, std::vector<bool>{false});
  manager().RemoveWindow(&window);
}

using Open = void * (KivThemeManager::*)(SV::Window const &) const;
constexpr Open kOpens[] = {
    &KivThemeManager::OpenWindowTheme, &KivThemeManager::OpenButtonTheme,   &KivThemeManager::OpenToolbarTheme,
    &KivThemeManager::OpenStatusTheme, &KivThemeManager::OpenTreeViewTheme, &KivThemeManager::OpenProgressTheme,
    &KivThemeManager::OpenTabTheme,    &KivThemeManager::OpenSpinTheme,     &KivThemeManager::OpenEditTheme};

class ThemeHandles : public ToolkitTest {
protected:
  ThemeHandles() { noteStyleCalls(); }
};

TEST_F(ThemeHandles, AreOfTheClassesOfTheirNames) {
  EXPECT_TRUE(KivThemeManager::IsThemed());
  SV::Window const window(nullptr);
  for (Open const open : kOpens) {
    void * const theme = (manager().*open)(window);
    EXPECT_NE(theme, nullptr);
    manager().CloseTheme(theme);
  }
  EXPECT_EQ(styleCalls().opened, (std::vector<std::string>{"Window", "Button", "Toolbar", "Status", "TreeView",
                                                           "Progress", "Tab", "Spin", "Edit"}));
  EXPECT_EQ(styleCalls().windows, std::vector<HWND>(9, window.GethWnd()));
  EXPECT_EQ(styleCalls().open, 0);
}

TEST_F(ThemeHandles, AreNullWhereVisualStylesAreNotUsed) {
  SV::Window const window(nullptr);
  manager().SetVisualStylesXPEnabled(false);
  for (Open const open : kOpens)
    EXPECT_EQ((manager().*open)(window), nullptr);
  EXPECT_TRUE(styleCalls().opened.empty());
}

TEST_F(ThemeHandles, NeedNotBeThereToBeClosed) {
  manager().CloseTheme(nullptr);
  EXPECT_EQ(styleCalls().open, 0);
}

TEST(ThemeHandlesWithoutStyles, AreNull) {
  support::VisualStylesOff const off;
  TestApplication application;
  SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWNORMAL);
  ASSERT_TRUE(SV::InitSV(0, nullptr));
  {
    SV::Window const window(nullptr);
    EXPECT_FALSE(KivThemeManager::IsThemed());
    EXPECT_TRUE(manager().IsVisualStylesXPEnabled());
    for (Open const open : kOpens)
      EXPECT_EQ((manager().*open)(window), nullptr);
  }
  SV::DeInitSV();
}

// The end

TEST_F(ThemeManager, EndsWithTheApplicationAndIsMadeAnewAfterwards) {
  SV::Window window(nullptr);
  manager().AddWindow(&window);
  manager().SetCurrentTheme("Classic");
  manager().SetVisualStylesXPEnabled(false);
  painted().clear();
  KivExitAppEvent("end(0)").trigger();
  EXPECT_EQ(existingManager(), nullptr);
  EXPECT_TRUE(painted().empty());
  EXPECT_STREQ(KivThemeManager::CurrentTheme().GetName().c_str(), "Modern");
  EXPECT_TRUE(manager().IsVisualStylesXPEnabled());
  manager().SetCurrentTheme("Classic");
  EXPECT_TRUE(painted().empty()) << "the new one does not know the windows of the former";
}

TEST_F(ThemeManager, WithoutOneAChangeOfTheSystemMakesNone) {
  KivThemeManager::SysThemeChanged();
  EXPECT_EQ(existingManager(), nullptr);
}

// Themes

class Plain : public KivTheme {
public:
  using KivTheme::KivTheme;
  SV::Color GetColor(long) const override { return SV::COL_RED; }
};

TEST(Theme, KeepsItsName) {
  Plain const first("First");
  Plain second(first);
  EXPECT_STREQ(second.GetName().c_str(), "First");
  Plain const other(SV::String("a\0b", 3));
  second = other;
  EXPECT_EQ(second.GetName(), SV::String("a\0b", 3));
  EXPECT_STREQ(first.GetName().c_str(), "First");
  EXPECT_EQ(KivThemeClassic().GetName(), "Classic");
  EXPECT_EQ(KivThemeModern(KivThemeModern()).GetName(), "Modern");
}

/// The place of a virtual operation among those of its class.
template <class Member> std::ptrdiff_t slotOf(Member member) {
  struct Layout {
    std::ptrdiff_t function;
    std::ptrdiff_t adjustment;
  };
  return (std::bit_cast<Layout>(member).function - 1) / static_cast<std::ptrdiff_t>(sizeof(void *));
}

// Products that were built earlier call by place.
TEST(Theme, HasItsVirtualOperationsInTheirSlots) {
  std::ptrdiff_t const slots[] = {slotOf(&KivTheme::GetColor),           slotOf(&KivTheme::Draw),
                                  slotOf(&KivTheme::DrawText),           slotOf(&KivTheme::DrawCloseButton),
                                  slotOf(&KivTheme::DrawMenuBackground), slotOf(&KivTheme::DrawToolbarBackground),
                                  slotOf(&KivTheme::DrawToolbarButton),  slotOf(&KivTheme::DrawStatusBarBackground)};
  std::ptrdiff_t expected = 2; // the destructor takes two places
  for (std::ptrdiff_t const slot : slots)
    EXPECT_EQ(slot, expected++);
}

TEST(Theme, ClassesHaveTheirNumbers) {
  KivThemeClass const parts[] = {CaptionActive,     CaptionInactive,    PlainCaptionActive, PlainCaptionInactive,
                                 FrameLeftActive,   FrameLeftInactive,  FrameRightActive,   FrameRightInactive,
                                 FrameBottomActive, FrameBottomInactive};
  int number = 0;
  for (KivThemeClass const part : parts)
    EXPECT_EQ(part, number++);
}

} // namespace

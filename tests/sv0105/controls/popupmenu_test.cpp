#include "sv0105/controls/dialogtest.hpp"

namespace {

class PopupMenuTest : public svtest::DialogTest {
protected:
  PopupMenuTest() {
    main.SetPosSizePixel({50, 50}, {300, 200});
    main.Show();
    main.ToTop();
    menu.InsertItem(11, "~First");
    menu.InsertItem(12, "~Second");
    menu.ChangeSelectHdl([this](unsigned short id) { selected.push_back(id); });
  }

  /// The window of the open menu of this thread; null when none is open.
  static HWND openMenu() {
    for (HWND window = nullptr; (window = FindWindowExA(nullptr, window, "#32768", nullptr)) != nullptr;)
      if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() && IsWindowVisible(window))
        return window;
    return nullptr;
  }

  static void postMenuKey(WPARAM key) { PostMessageA(openMenu(), WM_KEYDOWN, key, 1); }

  SV::Window main{nullptr, SV::WB_TITLE};
  SV::PopupMenu menu;
  std::vector<unsigned short> selected;
};

TEST_F(PopupMenuTest, GivesTheItemThatTheUserChooses) {
  script->then([] { postMenuKey(VK_DOWN); }).then([] { postMenuKey(VK_DOWN); }).then([] { postMenuKey(VK_RETURN); });
  EXPECT_EQ(menu.Execute({100, 100}), 12);
  EXPECT_EQ(selected, (std::vector<unsigned short>{12}));
}

TEST_F(PopupMenuTest, GivesNothingWhenTheUserGivesUp) {
  script->then([] { postMenuKey(VK_ESCAPE); });
  EXPECT_EQ(menu.Execute({100, 100}), 0);
  EXPECT_TRUE(selected.empty());
}

TEST_F(PopupMenuTest, IsNotOpenedWithoutItemsOrUnderSuppression) {
  SV::PopupMenu empty;
  EXPECT_EQ(empty.Execute({100, 100}), 0);
  SV::Application::SetShowWindowSuppression(true);
  EXPECT_EQ(menu.Execute({100, 100}), 0);
}

TEST_F(PopupMenuTest, ThatIsOpenWhenADialogComesIsGivenUp) {
  svtest::Question question(&main);
  script->then([&] {
    EXPECT_NE(openMenu(), nullptr);
    script->then([&] { question.EndDialog(5); });
    EXPECT_EQ(question.Execute(), 5);
  });
  EXPECT_EQ(menu.Execute({100, 100}), 0);
  EXPECT_EQ(openMenu(), nullptr);
  EXPECT_TRUE(selected.empty());
}

TEST_F(PopupMenuTest, ThatDiesWhileItIsOpenCloses) {
  auto fleeting = std::make_unique<SV::PopupMenu>();
  fleeting->InsertItem(1, "Item");
  script->then([&] {
    EXPECT_NE(openMenu(), nullptr);
    fleeting.reset();
  });
  EXPECT_EQ(fleeting->Execute({100, 100}), 0);
  EXPECT_EQ(openMenu(), nullptr);
}

} // namespace

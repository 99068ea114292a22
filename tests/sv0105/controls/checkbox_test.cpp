#include "sv0105/controls/dialogtest.hpp"

namespace {

class CheckBox : public svtest::DialogTest {
protected:
  CheckBox() {
    dialog.ChangeOutputSizePixel({200, 80});
    SV::Control * const controls[] = {&box, &ok, &cancel};
    for (long i = 0; i < 3; ++i) {
      controls[i]->SetPosSizePixel({10, 10 + 20 * i}, {120, 18});
      controls[i]->Show();
    }
    box.SetText("~Case-sensitive");
    box.ChangeClickHdl([this](SV::CheckBox * of) { clicks.push_back(of->IsChecked()); });
  }

  SV::ModalDialog dialog{nullptr};
  SV::CheckBox box{&dialog};
  SV::OKButton ok{&dialog};
  SV::CancelButton cancel{&dialog};
  std::vector<bool> clicks;
};

TEST_F(CheckBox, IsOffAtFirstAndSetByTheProgramWithoutItsHandler) {
  EXPECT_FALSE(box.IsChecked());
  box.Check();
  EXPECT_TRUE(box.IsChecked());
  box.Check(false);
  EXPECT_FALSE(box.IsChecked());
  EXPECT_TRUE(clicks.empty());
}

TEST_F(CheckBox, IsChangedByTheSpaceKeyAClickAndItsMnemonic) {
  script->key(VK_SPACE).then([this] { svtest::postClick(box.GethWnd()); }).key(VK_TAB).mnemonic('c').then([this] {
    dialog.EndDialog();
  });
  dialog.Execute();
  EXPECT_EQ(clicks, (std::vector<bool>{true, false, true}));
  EXPECT_TRUE(box.IsChecked());
}

TEST_F(CheckBox, LeavesReturnAndEscapeToTheDialog) {
  script->key(VK_RETURN);
  EXPECT_EQ(dialog.Execute(), SV::RET_OK);
  script->key(VK_ESCAPE);
  EXPECT_EQ(dialog.Execute(), SV::RET_CANCEL);
  EXPECT_TRUE(clicks.empty());
}

TEST_F(CheckBox, ShowsItsMnemonicAsEveryLabel) {
  char shown[32] = "";
  GetWindowTextA(box.GethWnd(), shown, sizeof shown);
  EXPECT_STREQ(shown, "&Case-sensitive");
  EXPECT_STREQ(box.GetText().c_str(), "~Case-sensitive");
}

TEST_F(CheckBox, DisabledIsPassedOverByTheKeyboard) {
  box.SetEnabled(false);
  script->then([this] { EXPECT_EQ(GetFocus(), ok.GethWnd()); }).mnemonic('c').then([this] { dialog.EndDialog(); });
  dialog.Execute();
  EXPECT_TRUE(clicks.empty());
}

TEST_F(CheckBox, MayDieInItsHandler) {
  auto dying = std::make_unique<SV::CheckBox>(&dialog);
  dying->ChangeClickHdl([&](SV::CheckBox *) { dying.reset(); });
  dying->SetPosSizePixel({10, 70}, {120, 10});
  dying->Show();
  script->then([&] { svtest::postClick(dying->GethWnd()); }).then([this] { dialog.EndDialog(); });
  dialog.Execute();
  EXPECT_FALSE(dying);
}

} // namespace

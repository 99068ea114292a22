#include "sv0105/controls/dialogtest.hpp"

namespace {

using SV::Accelerator;
using svtest::Question;

class AcceleratorTest : public svtest::DialogTest {
protected:
  /// A handler that notes the current item and answers.
  Accelerator::SelectHandler noting(long answer) {
    return [this, answer](Accelerator * of) {
      pressed.push_back(of->GetCurItemId());
      return answer;
    };
  }

  std::vector<unsigned short> pressed;
};

TEST_F(AcceleratorTest, RefusesKeysAndItemsThatItHas) {
  Accelerator accelerator;
  EXPECT_TRUE(accelerator.InsertItem(1, 0x402));
  EXPECT_FALSE(accelerator.InsertItem(1, 0x403));
  EXPECT_FALSE(accelerator.InsertItem(2, 0x402));
  EXPECT_FALSE(accelerator.InsertItem(3, 0));
  EXPECT_EQ(accelerator.GetItemCount(), 1);
  EXPECT_TRUE(accelerator.RemoveItem(1));
  EXPECT_FALSE(accelerator.RemoveItem(1));
}

TEST_F(AcceleratorTest, AsksTheHandlerThatWasPushedLastFirst) {
  Accelerator accelerator;
  accelerator.InsertItem(7, SV::KEY_F1);
  accelerator.PushSelectHdl(noting(5));
  accelerator.PushSelectHdl(noting(0));
  EXPECT_TRUE(accelerator.Press(SV::KEY_F1));
  EXPECT_EQ(pressed, (std::vector<unsigned short>{7, 7}));
  EXPECT_EQ(accelerator.GetCurItemId(), 0);
  accelerator.PopSelectHdl();
  accelerator.PopSelectHdl();
  accelerator.PopSelectHdl();
  EXPECT_FALSE(accelerator.Press(SV::KEY_F1)) << "nobody deals with it";
}

TEST_F(AcceleratorTest, MayDieInItsOwnHandler) {
  auto accelerator = std::make_unique<Accelerator>();
  accelerator->InsertItem(1, SV::KEY_F1);
  accelerator->PushSelectHdl(noting(1));
  accelerator->PushSelectHdl([&](Accelerator *) {
    accelerator.reset();
    return 0L;
  });
  accelerator->Press(SV::KEY_F1);
  EXPECT_TRUE(pressed.empty()) << "the handler before it went with it";
}

TEST_F(AcceleratorTest, IsInTheApplicationOnce) {
  Accelerator accelerator;
  EXPECT_FALSE(SV::Application::InsertAccel(nullptr));
  EXPECT_TRUE(SV::Application::InsertAccel(&accelerator));
  EXPECT_FALSE(SV::Application::InsertAccel(&accelerator));
  EXPECT_TRUE(SV::Application::RemoveAccel(&accelerator));
  EXPECT_FALSE(SV::Application::RemoveAccel(&accelerator));
}

TEST_F(AcceleratorTest, ComesBeforeTheArrowKeysOfTheDialog) {
  Question question(nullptr);
  Accelerator accelerator;
  accelerator.InsertItem(1, 0x402);
  accelerator.InsertItem(2, 0x403);
  accelerator.PushSelectHdl(noting(-1));
  SV::Application::InsertAccel(&accelerator, 1);
  script->key(VK_LEFT).key(VK_RIGHT).then([&] {
    EXPECT_EQ(GetFocus(), question.first.GethWnd()) << "the dialog has not seen them";
    question.EndDialog();
  });
  question.Execute();
  EXPECT_EQ(pressed, (std::vector<unsigned short>{1, 2}));
}

TEST_F(AcceleratorTest, OfTheProgramRestsWhileADialogRuns) {
  Question question(nullptr);
  Accelerator accelerator;
  accelerator.InsertItem(1, SV::KEY_F1 + 4);
  accelerator.PushSelectHdl(noting(1));
  SV::Application::InsertAccel(&accelerator);
  script->key(VK_F5).then([&] { question.EndDialog(); });
  question.Execute();
  EXPECT_TRUE(pressed.empty());
  SV::Window main(nullptr, SV::WB_TITLE);
  main.Show();
  main.GrabFocus();
  script->key(VK_F5);
  play();
  EXPECT_EQ(pressed, (std::vector<unsigned short>{1}));
}

TEST_F(AcceleratorTest, OfADialogRestsInTheOneThatItOpens) {
  Question outer(nullptr);
  Question inner(&outer);
  Accelerator accelerator;
  accelerator.InsertItem(1, 0x402);
  accelerator.PushSelectHdl(noting(-1));
  SV::Application::InsertAccel(&accelerator, 1);
  script->then([&] {
    script->key(VK_LEFT).then([&] { inner.EndDialog(); });
    inner.Execute();
    outer.EndDialog();
  });
  outer.Execute();
  EXPECT_TRUE(pressed.empty());
}

TEST_F(AcceleratorTest, WantsItsModifiersAndNoOthers) {
  SV::Window main(nullptr, SV::WB_TITLE);
  main.Show();
  main.GrabFocus();
  Accelerator accelerator;
  accelerator.InsertItem(1, SV::KEY_CONTROL | (SV::KEY_A + 18));
  accelerator.PushSelectHdl(noting(1));
  SV::Application::InsertAccel(&accelerator);
  auto const press = [&](std::initializer_list<int> held) {
    svtest::HeldKeys const keys(held);
    PostMessageA(main.GethWnd(), WM_KEYDOWN, 'S', 1);
    SV::Application::Reschedule();
  };
  press({});
  press({VK_CONTROL, VK_SHIFT});
  EXPECT_TRUE(pressed.empty());
  press({VK_CONTROL});
  EXPECT_EQ(pressed.size(), 1u);
}

} // namespace

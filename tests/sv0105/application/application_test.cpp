#include "sv0105/application/testapplication.hpp"

#include <bit>
#include <optional>

namespace {

TEST(ApplicationObject, IsTheOneThatWasConstructedLast) {
  EXPECT_EQ(SV::GetpApp(), nullptr);
  TestApplication first;
  EXPECT_EQ(SV::GetpApp(), &first);
  {
    TestApplication second;
    EXPECT_EQ(SV::GetpApp(), &second);
  }
  EXPECT_EQ(SV::GetpApp(), nullptr);
}

TEST(ApplicationObject, ThatWasReplacedLeavesItsSuccessorInPlace) {
  std::optional<TestApplication> first(std::in_place);
  TestApplication second;
  first.reset();
  EXPECT_EQ(SV::GetpApp(), &second);
}

/// The offset into the table of virtual operations, which a pointer to a virtual member holds.
template <class Member> std::ptrdiff_t slotOf(Member member) {
  struct Layout {
    std::ptrdiff_t function;
    std::ptrdiff_t adjustment;
  };
  return (std::bit_cast<Layout>(member).function - 1) / static_cast<std::ptrdiff_t>(sizeof(void *));
}

TEST(ApplicationObject, HasItsVirtualOperationsInSlotOrder) {
  using SV::Application;
  using SV::MDIApplication;
  // The destructor has the first two.
  EXPECT_EQ(slotOf(&Application::QueryExit), 2);
  EXPECT_EQ(slotOf(&Application::SysChange), 3);
  EXPECT_EQ(slotOf(&Application::AppEvent), 4);
  EXPECT_EQ(slotOf(&Application::UserEvent), 5);
  EXPECT_EQ(slotOf(&Application::Activate), 6);
  EXPECT_EQ(slotOf(&Application::Deactivate), 7);
  EXPECT_EQ(slotOf(&Application::ActivateExtHelp), 8);
  EXPECT_EQ(slotOf(&Application::DeactivateExtHelp), 9);
  EXPECT_EQ(slotOf(&Application::Main), 10);
  EXPECT_EQ(slotOf(&Application::Exception), 11);
  EXPECT_EQ(slotOf(&MDIApplication::IsUserDefPaintMDIClient), 12);
  EXPECT_EQ(slotOf(&MDIApplication::PaintMDIClient), 13);
}

class PlainApplication : public SV::MDIApplication {
public:
  void Main(int, char **) override {}
};

TEST(ApplicationObject, LetsTheProgramEndUnlessADerivedClassObjects) {
  PlainApplication application;
  EXPECT_TRUE(application.QueryExit());
}

TEST(ApplicationObject, LeavesTheClientAreaToTheToolkitUnlessADerivedClassPaintsIt) {
  PlainApplication application;
  EXPECT_FALSE(application.IsUserDefPaintMDIClient());
}

TEST(ApplicationObject, EndsTheProcessWithOneOnASevereException) {
  PlainApplication application;
  EXPECT_EXIT(application.Exception(0x100, 7), testing::ExitedWithCode(1), "");
}

TEST_F(ToolkitTest, ExtendedHelpChangesThePointerWhileItIsOn) {
  application.ActivateExtHelp();
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_HELP));
  application.DeactivateExtHelp();
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_ARROW));
}

} // namespace

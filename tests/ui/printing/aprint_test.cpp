// The printer of the process.

#include "printtest.hpp"
#include "sv/system.hpp"
#include "tools/winapi.hpp"

#include <stdexcept>

using kivtest::choosePrinter;

namespace {

class ProcessPrinter : public support::PrintTest {};
class PageSizes : public support::PrintTest {};

SV::String nameOf(support::PrintQueue const & queue) { return SV::String(queue.name().c_str()); }

TEST_F(ProcessPrinter, IsNotCreatedUnlessAsked) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  EXPECT_EQ(Kiv_GetPrinter(false), nullptr);
  EXPECT_EQ(Kiv_GetPrinter(false), nullptr);
  KivPrinter * const printer = Kiv_GetPrinter(true);
  ASSERT_NE(printer, nullptr);
  EXPECT_EQ(Kiv_GetPrinter(false), printer);
  EXPECT_EQ(Kiv_GetPrinter(true), printer);
}

TEST_F(ProcessPrinter, IsTheOneOfTheCommandLine) {
  support::PrintQueue const first;
  support::PrintQueue const second;
  choosePrinter(second.name());
  EXPECT_EQ(Kiv_GetPrinter(true)->GetName(), nameOf(second));
}

TEST_F(ProcessPrinter, IsTheDefaultOneWithoutAName) {
  support::PrintQueue const first;
  support::PrintQueue const second;
  choosePrinter("");
  SV::Printer::GetNames();
  for (support::PrintQueue const * const queue : {&first, &second}) {
    ASSERT_TRUE(
        WriteProfileStringA("windows", "device", (queue->name() + ",wineps.drv,CUPS:" + queue->name()).c_str()));
    Kiv_DeletePrinter();
    ASSERT_NE(Kiv_GetPrinter(true), nullptr);
    EXPECT_EQ(Kiv_GetPrinter(true)->GetName(), nameOf(*queue));
  }
}

TEST_F(ProcessPrinter, ThatCannotBeMadeIsNeverTriedAgain) {
  support::PrintQueue const queue;
  support::PrintQueue const other;
  choosePrinter("no such printer");
  EXPECT_EQ(Kiv_GetPrinter(true), nullptr);
  choosePrinter(queue.name()); // the message about a second call is what the library reports
  EXPECT_EQ(Kiv_GetPrinter(true), nullptr);
  Kiv_DeletePrinter();
  EXPECT_EQ(Kiv_GetPrinter(true), nullptr);
  auto * const printer = new KivPrinter(nameOf(other));
  Kiv_ReplacePrinter(printer);
  EXPECT_EQ(Kiv_GetPrinter(true), printer);
  Kiv_DeletePrinter();
  EXPECT_EQ(Kiv_GetPrinter(true), nullptr);
}

TEST_F(ProcessPrinter, IsMadeAgainAfterItWasDeleted) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  ASSERT_NE(Kiv_GetPrinter(true), nullptr);
  Kiv_DeletePrinter();
  EXPECT_EQ(Kiv_GetPrinter(false), nullptr);
  EXPECT_EQ(SV::System::GetPrinterDriverName(), "") << "it was deleted";
  Kiv_DeletePrinter();
  ASSERT_NE(Kiv_GetPrinter(true), nullptr);
  EXPECT_EQ(Kiv_GetPrinter(true)->GetName(), nameOf(queue));
}

TEST_F(ProcessPrinter, IsDeletedWhenItIsReplaced) {
  support::PrintQueue const queue;
  support::PrintQueue const other;
  choosePrinter(queue.name());
  bool deleted = false;
  struct Watched : KivPrinter {
    Watched(SV::String const & name, bool & flag) : KivPrinter(name), gone(flag) {}
    ~Watched() override { gone = true; }
    bool & gone;
  };
  KivPrinter * const first = new Watched(nameOf(queue), deleted);
  Kiv_ReplacePrinter(first);
  EXPECT_EQ(Kiv_GetPrinter(false), first);
  Kiv_ReplacePrinter(first);
  EXPECT_FALSE(deleted) << "it is the same one";
  auto * const second = new KivPrinter(nameOf(other));
  Kiv_ReplacePrinter(second);
  EXPECT_TRUE(deleted);
  EXPECT_EQ(Kiv_GetPrinter(true), second);
}

TEST_F(ProcessPrinter, ReplacedByNoneIsDeleted) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  ASSERT_NE(Kiv_GetPrinter(true), nullptr);
  Kiv_ReplacePrinter(nullptr);
  EXPECT_EQ(Kiv_GetPrinter(false), nullptr);
  EXPECT_EQ(SV::System::GetPrinterDriverName(), "");
  Kiv_ReplacePrinter(nullptr);
  EXPECT_NE(Kiv_GetPrinter(true), nullptr);
}

TEST_F(ProcessPrinter, ThatWasTakenAwayGivesWayToAnotherOne) {
  support::PrintQueue const lost;
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  Kiv_ReplacePrinter(new KivPrinter(nameOf(lost)));
  support::removePrinter(lost.name());
  ASSERT_NE(Kiv_GetPrinter(false), nullptr);
  EXPECT_EQ(Kiv_GetPrinter(false)->GetName(), nameOf(lost)) << "nothing is looked at";
  ASSERT_NE(Kiv_GetPrinter(true), nullptr);
  EXPECT_EQ(Kiv_GetPrinter(true)->GetName(), nameOf(queue));
}

TEST_F(ProcessPrinter, ThatWasTakenAwayForGoodIsNone) {
  support::PrintQueue const queue;
  choosePrinter(queue.name());
  ASSERT_NE(Kiv_GetPrinter(true), nullptr);
  support::removePrinter(queue.name());
  EXPECT_EQ(Kiv_GetPrinter(true), nullptr);
  EXPECT_EQ(Kiv_GetPrinter(false), nullptr);
  EXPECT_FALSE(kivtest::printLines({"lost"}));
}

TEST_F(PageSizes, AreNothingInPortrait) {
  support::PrintQueue const queue;
  KivPrinter printer(nameOf(queue));
  EXPECT_EQ(printer.GetPortraitOutputSizePixel(), SV::Size());
  EXPECT_EQ(printer.GetLandscapeOutputSizePixel(), SV::Size());
}

TEST_F(PageSizes, AreBothThatOfLandscapeInLandscape) {
  support::PrintQueue const queue;
  KivPrinter printer(nameOf(queue));
  ASSERT_TRUE(printer.SetOrientation(SV::ORIENTATION_LANDSCAPE));
  SV::Size const landscape = printer.GetOutputSizePixel();
  EXPECT_EQ(printer.GetPortraitOutputSizePixel(), landscape);
  EXPECT_EQ(printer.GetLandscapeOutputSizePixel(), landscape);
  EXPECT_EQ(printer.GetOrientation(), SV::ORIENTATION_LANDSCAPE);
  EXPECT_EQ(printer.GetOutputSizePixel(), landscape);
}

TEST_F(PageSizes, AreKept) {
  support::PrintQueue const queue;
  KivPrinter printer(nameOf(queue));
  EXPECT_EQ(printer.GetPortraitOutputSizePixel(), SV::Size()) << "nothing is kept of this";
  ASSERT_TRUE(printer.SetOrientation(SV::ORIENTATION_LANDSCAPE));
  SV::Size const landscape = printer.GetOutputSizePixel();
  EXPECT_EQ(printer.GetPortraitOutputSizePixel(), landscape);
  ASSERT_TRUE(printer.SetOrientation(SV::ORIENTATION_PORTRAIT));
  EXPECT_EQ(printer.GetPortraitOutputSizePixel(), landscape);
  EXPECT_EQ(printer.GetLandscapeOutputSizePixel(), SV::Size()) << "it was not asked for in landscape";
}

TEST_F(PageSizes, ReadTheDeviceAfterItWasTurnedBack) {
  support::PrintQueue const queue;
  KivPrinter printer(nameOf(queue));
  ASSERT_TRUE(printer.SetOrientation(SV::ORIENTATION_LANDSCAPE));
  EXPECT_GT(printer.GetPortraitOutputSizePixel().width, printer.GetPortraitOutputSizePixel().height);
}

} // namespace

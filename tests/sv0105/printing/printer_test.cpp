// Printers of the window library: jobs, pages, drawing, orientation.

#include "handles/handle.hpp"
#include "support/imports/import_hook.hpp"
#include "support/servers/printing.hpp"
#include "sv/printer.hpp"
#include "sv/system.hpp"
#include "sv/virtualdevice.hpp"
#include "tools/winapi.hpp"

#include <winspool.h>

#include "tools/winnames.hpp"

#include <stdexcept>

using SV::Printer;
using SV::String;

namespace {

class PrinterTest : public support::PrintTest {};

String nameOf(support::PrintQueue const & queue) { return String(queue.name().c_str()); }

/// One page with one text on it.
bool printText(Printer & printer, char const * text) {
  if (!printer.StartJob("one text") || !printer.StartPage())
    return false;
  printer.ChangeMapMode(SV::MAP_10TH_MM);
  printer.ChangeFont(SV::Font("Arial", {0, 50}));
  printer.DrawText({100, 100}, text);
  return printer.EndPage() && printer.EndJob();
}

TEST_F(PrinterTest, PrintsATextWithUmlauts) {
  support::PrintQueue const queue;
  Printer printer(nameOf(queue));
  ASSERT_TRUE(printText(printer, "Gr\xFC\xDF"
                                 "e \xC4\xD6\xDC\xE4\xF6 \x80"));
  EXPECT_EQ(queue.job().lines(), std::vector<std::string>{"Gr\xC3\xBC\xC3\x9F"
                                                          "e \xC3\x84\xC3\x96\xC3\x9C\xC3\xA4\xC3\xB6 \xE2\x82\xAC"});
}

TEST_F(PrinterTest, HasTheNameAndDriverOfTheSystem) {
  support::PrintQueue const queue;
  Printer const printer(nameOf(queue));
  EXPECT_EQ(printer.GetName(), nameOf(queue));
  EXPECT_GT(printer.GetDriverName().Len(), 0);
  EXPECT_TRUE(printer.IsUsable());
}

TEST_F(PrinterTest, ThatDoesNotExistCannotBeMade) {
  support::PrintQueue const queue;
  EXPECT_THROW(Printer("no such printer"), std::runtime_error);
  EXPECT_THROW(Printer(""), std::runtime_error);
}

TEST_F(PrinterTest, WithoutANameIsTheDefaultOne) {
  support::PrintQueue const first;
  support::PrintQueue const second;
  for (support::PrintQueue const * const queue : {&first, &second}) {
    std::string name = queue->name();
    Printer::GetNames();
    ASSERT_TRUE(SetDefaultPrinterA(name.data()));
    EXPECT_EQ(Printer::GetDefaultName(), name.c_str());
    EXPECT_EQ(Printer().GetName(), name.c_str());
  }
}

TEST_F(PrinterTest, CountsPixelsOfItsResolution) {
  support::PrintQueue const queue;
  Printer const printer(nameOf(queue));
  handles::MemoryDevice const device(CreateDCA("WINSPOOL", queue.name().c_str(), nullptr, nullptr));
  EXPECT_EQ(printer.GetOutputSizePixel(),
            (SV::Size{GetDeviceCaps(device.get(), HORZRES), GetDeviceCaps(device.get(), VERTRES)}));
  EXPECT_EQ(printer.LogicToPixel(SV::Size{254, 2540}, SV::MAP_10TH_MM),
            (SV::Size{GetDeviceCaps(device.get(), LOGPIXELSX), 10 * GetDeviceCaps(device.get(), LOGPIXELSY)}));
}

TEST_F(PrinterTest, DrawsLinesAreasAndPictures) {
  support::PrintQueue const queue;
  Printer printer(nameOf(queue));
  ASSERT_TRUE(printer.StartJob("drawing") && printer.StartPage());
  printer.ChangeMapMode(SV::MAP_10TH_MM);
  printer.ChangeFillInBrush(SV::Brush(SV::COL_BLACK));
  printer.DrawRect({{200, 200}, {300, 300}});
  printer.ChangePen(SV::Pen(SV::COL_BLACK, 30));
  printer.DrawLine({800, 200}, {800, 1200});
  SV::VirtualDevice picture;
  picture.SetOutputSizePixel({8, 8});
  picture.ChangeFillInBrush(SV::Brush(SV::COL_GRAY));
  picture.DrawRect({{0, 0}, {8, 8}});
  printer.DrawBitmap(SV::Rectangle({200, 800}, {300, 300}), picture.GetBitmap({0, 0}, {8, 8}));
  ASSERT_TRUE(printer.EndJob());
  support::PrintedJob const job = queue.job();
  auto const gray = [&](int tenthsX, int tenthsY) {
    // Some six millimetres cannot be printed on.
    return job.grayAt(tenthsX * 72 / 254 + 18, tenthsY * 72 / 254 + 18);
  };
  EXPECT_EQ(gray(350, 350), 0);
  EXPECT_EQ(gray(650, 350), 255);
  EXPECT_EQ(gray(800, 700), 0);
  EXPECT_NEAR(gray(350, 950), 128, 40);
}

TEST_F(PrinterTest, PrintsPageByPageWithTheSamePen) {
  support::PrintQueue const queue;
  Printer printer(nameOf(queue));
  printer.ChangeFont(SV::Font("Arial", {0, 60}));
  ASSERT_TRUE(printer.StartJob("pages"));
  for (char const * const text : {"first", "second", "third"}) {
    ASSERT_TRUE(printer.StartPage());
    printer.DrawText({100, 100}, text);
    ASSERT_TRUE(printer.EndPage());
  }
  ASSERT_TRUE(printer.EndJob());
  support::PrintedJob const job = queue.job();
  ASSERT_EQ(job.papers.size(), 3u);
  EXPECT_EQ(job.lines(0), std::vector<std::string>{"first"});
  EXPECT_EQ(job.lines(1), std::vector<std::string>{"second"});
  EXPECT_EQ(job.lines(2), std::vector<std::string>{"third"});
  EXPECT_NEAR(job.papers[0].words[0].y, job.papers[2].words[0].y, 0.1);
}

TEST_F(PrinterTest, EndsAnOpenPageWithItsJob) {
  support::PrintQueue const queue;
  Printer printer(nameOf(queue));
  ASSERT_TRUE(printer.StartJob("open") && printer.StartPage());
  printer.DrawText({100, 100}, "open");
  EXPECT_TRUE(printer.EndJob());
  EXPECT_FALSE(printer.EndPage());
  EXPECT_EQ(queue.job().lines(), std::vector<std::string>{"open"});
}

TEST_F(PrinterTest, RefusesWhatHasNoCounterpart) {
  support::PrintQueue const queue;
  Printer printer(nameOf(queue));
  EXPECT_FALSE(printer.StartPage());
  EXPECT_FALSE(printer.EndPage());
  EXPECT_FALSE(printer.EndJob());
  EXPECT_FALSE(printer.AbortJob());
  ASSERT_TRUE(printer.StartJob("job"));
  EXPECT_FALSE(printer.StartJob("second"));
  ASSERT_TRUE(printer.StartPage());
  EXPECT_FALSE(printer.StartPage());
  EXPECT_TRUE(printer.AbortJob());
  EXPECT_FALSE(printer.EndPage());
  EXPECT_FALSE(printer.EndJob());
}

TEST_F(PrinterTest, LeavesNoTraceOfWhatIsDrawnOutsideOfAPage) {
  support::PrintQueue const queue;
  Printer printer(nameOf(queue));
  printer.ChangeFont(SV::Font("Arial", {0, 60}));
  printer.DrawText({100, 100}, "before");
  ASSERT_TRUE(printText(printer, "inside"));
  printer.DrawText({100, 100}, "after");
  ASSERT_TRUE(printText(printer, "again"));
  EXPECT_EQ(queue.job(1).lines(), std::vector<std::string>{"inside"});
  EXPECT_EQ(queue.job(2).lines(), std::vector<std::string>{"again"});
  EXPECT_EQ(queue.jobCount(), 2u);
}

TEST_F(PrinterTest, PrintsNothingOfAJobThatIsAborted) {
  support::PrintQueue const queue;
  Printer printer(nameOf(queue));
  ASSERT_TRUE(printer.StartJob("aborted") && printer.StartPage());
  printer.DrawText({100, 100}, "aborted");
  EXPECT_TRUE(printer.AbortJob());
  ASSERT_TRUE(printText(printer, "kept"));
  EXPECT_EQ(queue.job(1).lines(), std::vector<std::string>{"kept"});
}

TEST_F(PrinterTest, CancelsTheJobOfAPrinterThatGoes) {
  support::PrintQueue const queue;
  {
    Printer printer(nameOf(queue));
    ASSERT_TRUE(printer.StartJob("cancelled") && printer.StartPage());
    printer.DrawText({100, 100}, "cancelled");
  }
  Printer printer(nameOf(queue));
  ASSERT_TRUE(printText(printer, "kept"));
  EXPECT_EQ(queue.job(1).lines(), std::vector<std::string>{"kept"});
}

TEST_F(PrinterTest, ThatIsTakenAwayWithinAJobFailsAtItsEnd) {
  support::PrintQueue queue;
  Printer printer(nameOf(queue));
  ASSERT_TRUE(printer.StartJob("lost") && printer.StartPage());
  printer.DrawText({100, 100}, "lost");
  queue.remove();
  EXPECT_TRUE(printer.EndPage());
  EXPECT_FALSE(printer.EndJob());
  EXPECT_FALSE(printer.EndJob());
}

TEST_F(PrinterTest, ThatIsTakenAwayIsNotUsable) {
  support::PrintQueue const queue;
  Printer const printer(nameOf(queue));
  ASSERT_TRUE(printer.IsUsable());
  support::removePrinter(queue.name());
  EXPECT_FALSE(printer.IsUsable());
  EXPECT_THROW(Printer(nameOf(queue)), std::runtime_error);
}

TEST_F(PrinterTest, SwapsItsSidesWithTheOrientation) {
  support::PrintQueue const queue;
  Printer printer(nameOf(queue));
  SV::Size const portrait = printer.GetOutputSizePixel();
  EXPECT_EQ(printer.GetOrientation(), SV::ORIENTATION_PORTRAIT);
  ASSERT_LT(portrait.width, portrait.height);
  ASSERT_TRUE(printer.SetOrientation(SV::ORIENTATION_LANDSCAPE));
  EXPECT_EQ(printer.GetOrientation(), SV::ORIENTATION_LANDSCAPE);
  EXPECT_EQ(printer.GetOutputSizePixel(), (SV::Size{portrait.height, portrait.width}));
  ASSERT_TRUE(printer.SetOrientation(SV::ORIENTATION_PORTRAIT));
  EXPECT_EQ(printer.GetOutputSizePixel(), portrait);
}

/// As a driver answers that has none.
LONG WINAPI refuseSettings(HWND, HANDLE, char *, DEVMODEA *, DEVMODEA const *, DWORD) { return -1; }

/// As a driver answers that cannot turn its paper, whatever the field says.
LONG WINAPI giveSettingsWithoutOrientation(HWND, HANDLE, char *, DEVMODEA * settings, DEVMODEA const *, DWORD mode) {
  if ((mode & DM_OUT_BUFFER) == 0)
    return sizeof *settings;
  *settings = {};
  settings->dmSize = sizeof *settings;
  settings->dmOrientation = DMORIENT_LANDSCAPE;
  return IDOK;
}

void giveSettingsBy(decltype(&refuseSettings) function) {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "WINSPOOL.DRV",
                          {{"DocumentPropertiesA", reinterpret_cast<void *>(function)}});
}

TEST_F(PrinterTest, WithoutSettingsIsUprightAndStaysSo) {
  support::PrintQueue const queue;
  giveSettingsBy(refuseSettings);
  Printer printer(nameOf(queue));
  EXPECT_EQ(printer.GetOrientation(), SV::ORIENTATION_PORTRAIT);
  EXPECT_FALSE(printer.SetOrientation(SV::ORIENTATION_LANDSCAPE));
}

TEST_F(PrinterTest, WhoseSettingsHaveNoOrientationIsUpright) {
  support::PrintQueue const queue;
  giveSettingsBy(giveSettingsWithoutOrientation);
  EXPECT_EQ(Printer(nameOf(queue)).GetOrientation(), SV::ORIENTATION_PORTRAIT);
}

TEST_F(PrinterTest, PrintsInLandscapeWithTheFontThatWasSetBefore) {
  support::PrintQueue const queue;
  Printer printer(nameOf(queue));
  printer.ChangeFont(SV::Font("Arial", {0, 100}));
  printer.DrawText({0, 0}, "");
  SV::Size const size = printer.GetTextSize("text");
  ASSERT_TRUE(printer.SetOrientation(SV::ORIENTATION_LANDSCAPE));
  EXPECT_EQ(printer.GetTextSize("text"), size);
  ASSERT_TRUE(printer.StartJob("landscape") && printer.StartPage());
  EXPECT_FALSE(printer.SetOrientation(SV::ORIENTATION_PORTRAIT)) << "within a page";
  printer.DrawText({2400, 100}, "right"); // beyond the width in portrait
  ASSERT_TRUE(printer.EndJob());
  support::PrintedJob const job = queue.job();
  EXPECT_EQ(job.lines(), std::vector<std::string>{"right"});
  // The paper is fed as ever, and what is on it is turned: what lies right is near the upper edge.
  EXPECT_LT(job.papers[0].words[0].x, 60);
  EXPECT_LT(job.papers[0].words[0].y, 250);
}

TEST_F(PrinterTest, NamesTheDriverOfTheYoungestForReports) {
  support::PrintQueue const first;
  support::PrintQueue const second;
  EXPECT_EQ(SV::System::GetPrinterDriverName(), "");
  Printer const one(nameOf(first));
  EXPECT_EQ(SV::System::GetPrinterDriverName(), one.GetDriverName());
  {
    Printer const two(nameOf(second));
    EXPECT_EQ(SV::System::GetPrinterDriverName(), two.GetDriverName());
    EXPECT_FALSE(one.GetDriverName() == two.GetDriverName());
  }
  EXPECT_EQ(SV::System::GetPrinterDriverName(), one.GetDriverName());
}

} // namespace

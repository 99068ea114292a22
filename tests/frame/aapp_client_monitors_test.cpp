// The picture behind the MDI windows with two real monitors: the main one of 480 x 700 pixels at the left, the other one of
// 800 x 1024 beside it.

#include "adrawcch.hpp"
#include "frame/recording_application.hpp"
#include "support/windows/pixels.hpp"
#include "sv/image.hpp"
#include "sv/mdi.hpp"
#include "sv/system.hpp"
#include "sv/virtualdevice.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace {

using SV::Size;

constexpr Size kMain = {480, 700};
constexpr Size kAll = {1280, 1024};

/// Its picture is red at the left and blue at the right.
class TwoColours : public kivtest::RecordingApplication {
public:
  bool getMDIClientImage(SV::Image & image, int & mode) override {
    SV::VirtualDevice device;
    device.SetOutputSizePixel(size);
    device.ChangePen(SV::Pen());
    device.ChangeFillInBrush(SV::Brush(SV::COL_LIGHTRED));
    device.DrawRect({{0, 0}, {size.width / 2, size.height}});
    device.ChangeFillInBrush(SV::Brush(SV::COL_LIGHTBLUE));
    device.DrawRect({{size.width / 2, 0}, {size.width - size.width / 2, size.height}});
    image = SV::Image(device.GetBitmap({0, 0}, size));
    mode = layout;
    return true;
  }

  Size size = {40, 20};
  int layout = KIV_MDI_CLIENT_COVER;
};

class TwoMonitors : public testing::Test {
protected:
  TwoMonitors() {
    SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWNORMAL);
    EXPECT_TRUE(SV::InitSV(0, nullptr));
  }
  ~TwoMonitors() override { SV::DeInitSV(); }

  static support::Pixels clientPixels(SV::MDIFrame & frame) {
    frame.Show();
    HWND const client = frame.GetClient().GethWnd();
    RedrawWindow(client, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ERASENOW);
    return support::readWindow(client);
  }

  TwoColours application;
};

TEST_F(TwoMonitors, AreThere) {
  ASSERT_EQ(GetSystemMetrics(SM_CMONITORS), 2);
  EXPECT_EQ(SV::System::GetScreenSizePixel(), kMain);
  EXPECT_EQ(SV::System::GetVirtualScreenSizePixel(), kAll);
}

TEST_F(TwoMonitors, GiveThePictureTheSizeOfTheOtherOne) {
  application.size = {800, 1024};
  application.layout = KIV_MDI_CLIENT_CENTER; // in which no picture is scaled
  EXPECT_TRUE(application.MakeMDIClientImg(true));
  EXPECT_FALSE(application.MakeMDIClientImg(true)) << "it has that size";
  EXPECT_TRUE(application.MakeMDIClientImg(false)) << "but not that of the main one";
  EXPECT_FALSE(application.MakeMDIClientImg(false));
}

TEST_F(TwoMonitors, ShowTheMiddleOfAPictureForBoth) {
  EXPECT_TRUE(application.MakeMDIClientImg(true));
  SV::MDIFrame frame("Frame");
  frame.SetPosSizePixel({300, 10}, {600, 500});
  support::Pixels const pixels = clientPixels(frame);
  int const middle = (pixels.width() - 2) / 2;
  ASSERT_GT(middle, 200);
  EXPECT_EQ(pixels.at(1, 1), 0x0000FFu);
  EXPECT_EQ(pixels.at(middle - 2, pixels.height() / 2), 0x0000FFu);
  EXPECT_EQ(pixels.at(middle + 2, pixels.height() / 2), 0xFF0000u);
  EXPECT_EQ(pixels.at(pixels.width() - 2, pixels.height() - 2), 0xFF0000u);
}

TEST_F(TwoMonitors, CoverAreOneBufferForPainting) { EXPECT_EQ(KivPaintBuffer::VD().GetOutputSizePixel(), kAll); }

} // namespace

// The drawing of a process model as a file, read by the system.
#include "apps/modeler/in_process.hpp"

#include "printing/picturefile.hpp"
#include "support/windows/pixels.hpp"
#include "sv/virtualdevice.hpp"
#include "windows/documents/processdrawing.hpp"

namespace {

class ModelerPicture : public modeler::InProcess {
protected:
  /// Activities one below the other, higher than what is written at a time.
  static modeler::Layout layout(int activities) {
    modeler::ProcessModel model;
    for (int place = 0; place < activities; ++place)
      model.nodes.push_back({modeler::NodeKind::Activity, SV::String(place), "Activity " + SV::String(place), 0});
    SV::VirtualDevice ruler;
    ruler.ChangeFont(SV::Application::GetAppFont());
    return layOut(model, {[&ruler](SV::String const & text) { return ruler.GetTextSize(text); },
                          [](modeler::Node const &) { return SV::String(); }});
  }

  static support::Pixels readBitmap(std::string const & file) {
    auto const bitmap = static_cast<HBITMAP>(LoadImageA(nullptr, file.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE));
    BITMAP facts = {};
    GetObjectA(bitmap, sizeof facts, &facts);
    HDC const memory = CreateCompatibleDC(nullptr);
    HGDIOBJ const former = SelectObject(memory, bitmap);
    support::Pixels pixels = support::readPixels(memory, {0, 0, facts.bmWidth, facts.bmHeight});
    SelectObject(memory, former);
    DeleteDC(memory);
    DeleteObject(bitmap);
    return pixels;
  }

  static support::Pixels drawn(modeler::Layout const & layout) {
    SV::Bitmap const bitmap(layout.size);
    HDC const memory = CreateCompatibleDC(nullptr);
    HGDIOBJ const former = SelectObject(memory, bitmap.GethBitmap());
    SV::Rectangle const whole({0, 0}, layout.size);
    {
      SV::OutputDevice device(memory);
      device.ChangePen(SV::Pen());
      device.ChangeFillInBrush(SV::Brush(getColorOfColorName(modeler::kPaper)));
      device.DrawRect(whole);
      drawProcess(device, SV::Application::GetAppFont(), layout, whole);
    }
    support::Pixels pixels = support::readPixels(memory, {0, 0, layout.size.width, layout.size.height});
    SelectObject(memory, former);
    DeleteDC(memory);
    return pixels;
  }

  static bool write(std::string const & file, modeler::Layout const & layout) {
    return modeler::writePicture(file.c_str(), SV::Application::GetAppFont(), layout);
  }
};

TEST_F(ModelerPicture, HoldsTheWholeDrawingPixelByPixel) {
  modeler::Layout const high = layout(20);
  ASSERT_GT(high.size.height, 512);
  ASSERT_TRUE(write(folder / "model.bmp", high));
  support::Pixels const picture = readBitmap(folder / "model.bmp");
  EXPECT_EQ(picture.width(), high.size.width);
  EXPECT_EQ(picture.height(), high.size.height);
  EXPECT_TRUE(picture == drawn(high));
}

TEST_F(ModelerPicture, OfAnEmptyModelIsPaper) {
  ASSERT_TRUE(write(folder / "empty.bmp", layout(0)));
  EXPECT_EQ(readBitmap(folder / "empty.bmp").colours(), 1u);
}

TEST_F(ModelerPicture, ThatCannotBeWrittenIsAFailure) { EXPECT_FALSE(write(folder / "none\\model.bmp", layout(1))); }

TEST_F(ModelerPicture, BeyondWhatAFileHoldsIsAFailure) {
  modeler::Layout huge = layout(1);
  huge.size = {60'000, 60'000};
  EXPECT_FALSE(write(folder / "huge.bmp", huge));
  EXPECT_FALSE(support::readFile(folder / "huge.bmp"));
}

} // namespace

// The area behind the MDI windows, painted with a picture that covers it, beside the system's own calls for the same pixels.

#include "aapp.hpp"
#include "support/ratio.hpp"
#include "sv/image.hpp"
#include "sv/system.hpp"
#include "tools/winapi.hpp"

namespace {

constexpr int kWidth = 1000;
constexpr int kHeight = 700;
constexpr COLORREF kFrameColor = 0xC7AE9C;

class PictureApplication : public KivMDIApplication {
public:
  PictureApplication() : KivMDIApplication("Picture", true, "") {}

  int prepareApplication() override { return 0; }
  int runApplication() override { return 0; }
  bool getMDIClientImage(SV::Image & image, int & mode) override {
    image = SV::Image(SV::Bitmap(SV::System::GetScreenSizePixel()));
    mode = KIV_MDI_CLIENT_COVER;
    return true;
  }
};

/// A window in front of all others, and the picture for the system's own calls.
struct Scene {
  Scene()
      : window(CreateWindowExA(WS_EX_TOPMOST, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, kWidth, kHeight, nullptr,
                               nullptr, nullptr, nullptr)),
        size(SV::System::GetScreenSizePixel()), picture(size) {
    application.MakeMDIClientImg(false);
  }
  Scene(Scene const &) = delete;
  Scene & operator=(Scene const &) = delete;
  ~Scene() { DestroyWindow(window); }

  PictureApplication application;
  HWND window;
  SV::Size size;
  SV::Bitmap picture;
};

void ours(benchmark::State & state) {
  Scene scene;
  for (auto _ : state)
    scene.application.PaintMDIClient(scene.window);
}

void bare(benchmark::State & state) {
  Scene const scene;
  for (auto _ : state) {
    HDC const device = GetDC(scene.window);
    HDC const source = CreateCompatibleDC(device);
    HGDIOBJ const formerBitmap = SelectObject(source, scene.picture.GethBitmap());
    BitBlt(device, 1, 1, kWidth - 2, kHeight - 2, source, (static_cast<int>(scene.size.width) - kWidth + 2) / 2,
           (static_cast<int>(scene.size.height) - kHeight + 2) / 2, SRCCOPY);
    SelectObject(source, formerBitmap);
    DeleteDC(source);
    HPEN const pen = CreatePen(PS_SOLID, 0, kFrameColor);
    HGDIOBJ const formerPen = SelectObject(device, pen);
    HGDIOBJ const formerBrush = SelectObject(device, GetStockObject(NULL_BRUSH));
    Rectangle(device, 0, 0, kWidth, kHeight);
    SelectObject(device, formerBrush);
    SelectObject(device, formerPen);
    DeleteObject(pen);
    ReleaseDC(scene.window, device);
  }
}

bench::Pair const covered{"Area behind the MDI windows: 1,000 x 700 pixels of a picture", bench::atMost(1.2), ours,
                          "GetDC, BitBlt, Rectangle", bare};

} // namespace

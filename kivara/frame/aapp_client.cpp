#include "aapp.hpp"
#include "acolor.hpp"
#include "atheme.hpp"
#include "atheme_manager.hpp"
#include "handles/handle.hpp"
#include "sv/image.hpp"
#include "sv/system.hpp"
#include "sv/virtualdevice.hpp"
#include "time/wholenumber.hpp"
#include "tools/winapi.hpp"

#include <algorithm>

using SV::Bitmap;
using SV::Image;
using SV::Size;

namespace {

constexpr unsigned short kDepth = 32;
constexpr int kFrameColor = 0;
constexpr int kBackgroundColor = 11;
constexpr double kFrameShade = 0.2;

Size screenSize(bool multiMonitor) {
  Size const screen = SV::System::GetScreenSizePixel();
  if (!multiMonitor)
    return screen;
  // What lies beside the main screen: products count on it.
  Size const all = SV::System::GetVirtualScreenSizePixel();
  return {all.width - screen.width, std::max(all.height, screen.height)};
}

long scaled(long side, double factor) { return kivara::wholeNumber<long>(static_cast<double>(side) * factor + 0.5); }

/// Scales the image so that it covers the screen; an empty one has no sides to scale by.
/// \return its size, also when the system has refused it
Size coverScreen(Image & image, Size const & screen) {
  Size const size = image.GetSizePixel();
  if (image.IsEmpty() || size == screen)
    return size;
  double const factor = std::max(static_cast<double>(screen.height) / static_cast<double>(size.height),
                                 static_cast<double>(screen.width) / static_cast<double>(size.width));
  Size const covering = {scaled(size.width, factor), scaled(size.height, factor)};
  image.Rescale(covering, SV::IMAGE_FILTER_NEAREST);
  return covering;
}

/// Cuts off on the left and at the top what leaves the middle of the image in the middle of the screen. The device cuts the rest.
/// \return the size that the device gets
Size cropToScreen(Image & image, Size size, Size const & screen) {
  if (size.width <= screen.width && size.height <= screen.height)
    return size;
  long left = 0;
  long top = 0;
  long right = size.width - 1;
  long bottom = size.height - 1;
  if (size.width > screen.width) {
    left = (size.width - screen.width) / 2;
    right = left + size.width - 1;
    size.width = screen.width;
  }
  if (size.height > screen.height) {
    top = (size.height - screen.height) / 2;
    bottom = top + size.height - 1;
    size.height = screen.height;
  }
  image.Crop(SV::Rectangle(left, top, right, bottom));
  return size;
}

Bitmap drawn(Image const & image, Size const & size) {
  SV::VirtualDevice device(kDepth);
  device.SetOutputSizePixel(size, true);
  device.DrawImage({0, 0}, image);
  return device.GetBitmap({0, 0}, size);
}

COLORREF themeColor(int index) { return KivThemeManager::CurrentTheme().GetColor(index).GetRGB(); }

/// The area inside of the line around it, and what is drawn into it.
class ClientArea {
public:
  ClientArea(HDC device, RECT const & inside)
      : device_(device), inside_(inside), width_(inside.right - inside.left), height_(inside.bottom - inside.top) {}

  void paint(Bitmap const & bitmap, int mode) const {
    if (width_ < 1 || height_ < 1)
      return;
    if (mode == KIV_MDI_CLIENT_COLOR || mode == KIV_MDI_CLIENT_CENTER)
      fill();
    if (!bitmap.IsEmpty() && mode >= KIV_MDI_CLIENT_STRETCH && mode <= KIV_MDI_CLIENT_TILE)
      paintPicture(bitmap, mode);
  }

  void frame() const {
    SV::Color const color = srcOver(KivThemeManager::CurrentTheme().GetColor(kFrameColor), SV::COL_BLACK, kFrameShade);
    HPEN const pen = CreatePen(PS_SOLID, 0, color.GetRGB());
    HGDIOBJ const formerPen = SelectObject(device_, pen);
    HGDIOBJ const formerBrush = SelectObject(device_, GetStockObject(NULL_BRUSH));
    Rectangle(device_, 0, 0, width_ + 2, height_ + 2);
    SelectObject(device_, formerBrush);
    SelectObject(device_, formerPen);
    DeleteObject(pen);
  }

private:
  void fill() const {
    HBRUSH const brush = CreateSolidBrush(themeColor(kBackgroundColor));
    FillRect(device_, &inside_, brush);
    DeleteObject(brush);
  }

  void paintPicture(Bitmap const & bitmap, int mode) const {
    handles::MemoryDevice const source(CreateCompatibleDC(device_));
    HGDIOBJ const former = SelectObject(source.get(), bitmap.GethBitmap());
    int const width = static_cast<int>(bitmap.GetSizePixel().width);
    int const height = static_cast<int>(bitmap.GetSizePixel().height);
    switch (mode) {
    case KIV_MDI_CLIENT_STRETCH:
      StretchBlt(device_, 1, 1, width_, height_, source.get(), 0, 0, width, height, SRCCOPY);
      break;
    case KIV_MDI_CLIENT_COVER:
      BitBlt(device_, 1, 1, width_, height_, source.get(), (width - width_) / 2, (height - height_) / 2, SRCCOPY);
      break;
    case KIV_MDI_CLIENT_CENTER:
      BitBlt(device_, (width_ - width) / 2, (height_ - height) / 2, width, height, source.get(), 0, 0, SRCCOPY);
      break;
    default: tile(source.get(), width, height); break;
    }
    SelectObject(source.get(), former);
  }

  void tile(HDC source, int width, int height) const {
    int const columns = (width_ + width - 1) / width;
    int const rows = (height_ + height - 1) / height;
    for (int row = 0; row < rows; ++row)
      for (int column = 0; column < columns; ++column)
        BitBlt(device_, 1 + column * width, 1 + row * height, width, height, source, 0, 0, SRCCOPY);
  }

  HDC device_;
  RECT inside_;
  int width_;
  int height_;
};

} // namespace

bool KivMDIApplication::MakeMDIClientImg(bool multiMonitor) {
  Image image;
  if (!getMDIClientImage(image, mdiClientImageMode))
    return false;
  Size const screen = screenSize(multiMonitor);
  if (mdiClientBitmap.GetSizePixel() == screen)
    return false;
  Size const size = mdiClientImageMode == KIV_MDI_CLIENT_COVER ? coverScreen(image, screen) : image.GetSizePixel();
  mdiClientBitmap = drawn(image, cropToScreen(image, size, screen));
  return true;
}

bool KivMDIApplication::IsUserDefPaintMDIClient() { return true; }

void KivMDIApplication::PaintMDIClient(HWND hwnd) {
  RECT inside;
  HDC const device = GetClientRect(hwnd, &inside) ? GetDC(hwnd) : nullptr;
  if (device == nullptr)
    return;
  InflateRect(&inside, -1, -1);
  ClientArea const area(device, inside);
  area.paint(mdiClientBitmap, mdiClientImageMode);
  area.frame();
  ReleaseDC(hwnd, device);
}

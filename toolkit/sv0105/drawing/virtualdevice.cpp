#include "sv/virtualdevice.hpp"

#include "application/toolkit.hpp"
#include "drawing/colortable.hpp"
#include "drawing/sourcedevice.hpp"
#include "handles/handle.hpp"

#include <algorithm>
#include <utility>

namespace SV {

namespace {

unsigned short supported(unsigned short depth) {
  switch (depth) {
  case 1:
  case 4:
  case 8:
  case 16:
  case 24: return depth;
  default: return 32;
  }
}

} // namespace

VirtualDevice::VirtualDevice(unsigned short depth) : depth_(supported(depth)), memory_(CreateCompatibleDC(nullptr)) {
  if (memory_)
    openContext(memory_);
}

VirtualDevice::~VirtualDevice() {
  closeContext();
  if (former_)
    SelectObject(memory_, former_);
  if (memory_)
    DeleteDC(memory_);
  if (pixels_)
    DeleteObject(pixels_);
}

HBITMAP VirtualDevice::makePixels(Size const & size) const {
  detail::PictureLayout const layout = detail::pictureLayout(size.width, size.height, depth_);
  void * bits;
  return CreateDIBSection(nullptr, reinterpret_cast<BITMAPINFO const *>(&layout), DIB_RGB_COLORS, &bits, nullptr, 0);
}

bool VirtualDevice::SetOutputSizePixel(Size const & size, bool erase) {
  Size const wanted = size.width < 1 || size.height < 1 ? Size() : size;
  if (wanted == size_) {
    if (erase)
      eraseAll();
    return true;
  }
  SetLastError(0);
  HBITMAP const made = wanted == Size() ? nullptr : makePixels(wanted);
  if (!memory_ || (!made && !(wanted == Size()))) {
    detail::raiseException(EXC_SYSTEM_OBJECT_NOT_CREATED, GetLastError());
    return false;
  }
  handles::BitmapObject const old(exchangePixels(made));
  Size const common = {std::min(size_.width, wanted.width), std::min(size_.height, wanted.height)};
  size_ = wanted;
  eraseAll();
  if (!erase && old)
    copyBack(old.get(), common);
  return true;
}

/// The former ones, which are in no device any more.
HBITMAP VirtualDevice::exchangePixels(HBITMAP pixels) {
  HGDIOBJ const former = SelectObject(memory_, pixels ? pixels : former_);
  if (!pixels_)
    former_ = static_cast<HBITMAP>(former);
  return std::exchange(pixels_, pixels);
}

void VirtualDevice::eraseAll() {
  Region const limit = ChangeClipRegion(Region());
  Erase();
  ChangeClipRegion(limit);
}

void VirtualDevice::copyBack(HBITMAP pixels, Size const & size) {
  Region const limit = ChangeClipRegion(Region());
  detail::SourceDevice const source(pixels);
  BitBlt(memory_, 0, 0, size.width, size.height, source.context(), 0, 0, SRCCOPY);
  ChangeClipRegion(limit);
}

Bitmap VirtualDevice::GetBitmap(Point const & position, Size const & size) const {
  Rectangle const part = LogicToPixel(Rectangle(position, size));
  Bitmap const copy(part.GetSize());
  if (copy.IsEmpty())
    return copy;
  Rectangle const there = part.GetIntersection({{0, 0}, size_});
  detail::SourceDevice const target(copy.GethBitmap());
  BitBlt(target.context(), there.Left() - part.Left(), there.Top() - part.Top(), there.GetWidth(), there.GetHeight(),
         memory_, there.Left(), there.Top(), SRCCOPY);
  return copy;
}

} // namespace SV

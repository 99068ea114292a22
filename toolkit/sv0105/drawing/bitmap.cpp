#include "sv/bitmap.hpp"

#include "application/toolkit.hpp"
#include "handles/handle.hpp"
#include "resources/loading.hpp"

#include <cstdint>
#include <cstring>

namespace SV {

namespace {

void deleteBitmap(HBITMAP bitmap) { DeleteObject(bitmap); }

BITMAPINFO descriptionOf32Bits(Size const & size) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size.width;
  info.bmiHeader.biHeight = size.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  return info;
}

HBITMAP create(Size const & size) {
  BITMAPINFO const info = descriptionOf32Bits(size);
  void * pixels;
  return CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
}

std::uint64_t colorCount(BITMAPINFOHEADER const & header) {
  if (header.biBitCount > 8)
    return header.biClrUsed;
  std::uint64_t const most = std::uint64_t{1} << header.biBitCount;
  return header.biClrUsed != 0 && header.biClrUsed < most ? header.biClrUsed : most;
}

/// Where the pixels begin; 0 unless header, colours and pixels are of a plain kind and lie within \p data.
std::size_t offsetOfPixels(std::span<std::byte const> data, BITMAPINFOHEADER & header) {
  if (data.size() < sizeof header)
    return 0;
  std::memcpy(&header, data.data(), sizeof header);
  bool const hasMasks = header.biCompression == BI_BITFIELDS;
  if (header.biSize < sizeof header || header.biWidth <= 0 || header.biHeight == 0 || header.biPlanes != 1 ||
      header.biBitCount == 0 || header.biBitCount > 32 || (header.biCompression != BI_RGB && !hasMasks))
    return 0;
  std::uint64_t const masks = hasMasks && header.biSize == sizeof header ? 3 * sizeof(DWORD) : 0;
  std::uint64_t const offset = std::uint64_t{header.biSize} + masks + colorCount(header) * sizeof(RGBQUAD);
  std::uint64_t const line = (static_cast<std::uint64_t>(header.biWidth) * header.biBitCount + 31) / 32 * 4;
  std::int64_t const height = header.biHeight;
  std::uint64_t const lines = static_cast<std::uint64_t>(height < 0 ? -height : height);
  if (offset > data.size() || line * lines > data.size() - offset)
    return 0;
  return static_cast<std::size_t>(offset);
}

HBITMAP load(std::span<std::byte const> data) {
  BITMAPINFOHEADER header;
  std::size_t const offset = offsetOfPixels(data, header);
  if (offset == 0)
    return nullptr;
  long const height = header.biHeight < 0 ? -header.biHeight : header.biHeight;
  handles::BitmapObject bitmap(create({header.biWidth, height}));
  if (!bitmap)
    return nullptr;
  handles::MemoryDevice const device(CreateCompatibleDC(nullptr));
  HGDIOBJ const former = SelectObject(device.get(), bitmap.get());
  int const lines =
      SetDIBitsToDevice(device.get(), 0, 0, static_cast<DWORD>(header.biWidth), static_cast<DWORD>(height), 0, 0, 0,
                        static_cast<UINT>(height), data.data() + offset,
                        reinterpret_cast<BITMAPINFO const *>(data.data()), DIB_RGB_COLORS);
  SelectObject(device.get(), former);
  return lines != 0 ? bitmap.release() : nullptr;
}

} // namespace

Bitmap::Bitmap() = default;

Bitmap::Bitmap(HBITMAP bitmap) {
  if (!bitmap)
    return;
  bitmap_.reset(bitmap, deleteBitmap);
  BITMAP description;
  if (GetObjectA(bitmap, sizeof description, &description))
    size_ = {description.bmWidth, description.bmHeight};
}

Bitmap::Bitmap(Size const & size) {
  if (size.width < 1 || size.height < 1)
    return;
  SetLastError(0);
  *this = Bitmap(create(size));
  if (IsEmpty())
    detail::raiseException(EXC_SYSTEM_OBJECT_NOT_CREATED, GetLastError());
}

Bitmap::Bitmap(ResId const & id) {
  detail::loadWithRetry(id, [&](ResMgr const & manager) {
    *this = Bitmap(load(detail::findResource(manager, id.GetNumber(), RT_BITMAP)));
    return !IsEmpty();
  });
}

Bitmap Bitmap::Clone() const {
  if (IsEmpty())
    return Bitmap();
  return Bitmap(static_cast<HBITMAP>(CopyImage(bitmap_.get(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
}

} // namespace SV

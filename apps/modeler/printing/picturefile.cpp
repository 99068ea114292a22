#include "printing/picturefile.hpp"

#include "acolor.hpp"
#include "tools/winapi.hpp"
#include "windows/documents/processdrawing.hpp"

#include <algorithm>
#include <cstdint>
#include <fstream>

namespace modeler {
namespace {

constexpr long kBandHeight = 256; // so much of the drawing is in memory at a time
constexpr std::int64_t kMostBytes = 0x7FFF'FFFF;

std::int64_t bytesOfLine(long width) { return (static_cast<std::int64_t>(width) * 3 + 3) / 4 * 4; }

BITMAPINFOHEADER infoOf(SV::Size const & size) {
  BITMAPINFOHEADER info = {};
  info.biSize = sizeof info;
  info.biWidth = size.width;
  info.biHeight = size.height;
  info.biPlanes = 1;
  info.biBitCount = 24;
  info.biSizeImage = static_cast<DWORD>(bytesOfLine(size.width) * size.height);
  return info;
}

template <class Record> void put(std::ostream & out, Record const & record) {
  out.write(reinterpret_cast<char const *>(&record), sizeof record);
}

void putHeader(std::ostream & out, SV::Size const & size) {
  BITMAPINFOHEADER const info = infoOf(size);
  BITMAPFILEHEADER header = {};
  header.bfType = 0x4D42; // "BM"
  header.bfOffBits = sizeof header + sizeof info;
  header.bfSize = header.bfOffBits + info.biSizeImage;
  put(out, header);
  put(out, info);
}

/// A part of the drawing that is as wide as all of it.
class Band {
public:
  explicit Band(SV::Size const & size) : context_(CreateCompatibleDC(nullptr)), size_(size) {
    BITMAPINFO info = {};
    info.bmiHeader = infoOf(size);
    bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
    former_ = bitmap_ != nullptr ? SelectObject(context_, bitmap_) : nullptr;
  }
  Band(Band const &) = delete;
  Band & operator=(Band const &) = delete;
  ~Band() {
    if (bitmap_ != nullptr)
      SelectObject(context_, former_);
    DeleteObject(bitmap_);
    DeleteDC(context_);
  }

  /// \param top  where it begins in the drawing
  /// \return false when there is no memory for it
  bool draw(long top, SV::Font const & font, Layout const & layout) {
    if (bitmap_ == nullptr)
      return false;
    SetWindowOrgEx(context_, 0, top, nullptr);
    SV::Rectangle const area({0, top}, size_);
    SV::OutputDevice device(context_);
    device.ChangePen(SV::Pen());
    device.ChangeFillInBrush(SV::Brush(getColorOfColorName(kPaper)));
    device.DrawRect(area);
    drawProcess(device, font, layout, area);
    GdiFlush();
    return true;
  }

  void put(std::ostream & out) const {
    out.write(static_cast<char const *>(bits_), static_cast<std::streamsize>(bytesOfLine(size_.width) * size_.height));
  }

private:
  HDC context_;
  SV::Size size_;
  void * bits_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ former_ = nullptr;
};

bool fitsIntoFile(SV::Size const & size) {
  return size.width > 0 && size.height > 0 && bytesOfLine(size.width) * size.height < kMostBytes;
}

} // namespace

/// Such a file begins with the line at the bottom, and so do the pixels of a band.
bool writePicture(SV::String const & fileName, SV::Font const & font, Layout const & layout) {
  if (!fitsIntoFile(layout.size))
    return false;
  std::ofstream file(fileName.c_str(), std::ios::binary);
  putHeader(file, layout.size);
  for (long bottom = layout.size.height; bottom > 0 && file;) {
    long const height = std::min(bottom, kBandHeight);
    bottom -= height;
    Band band({layout.size.width, height});
    if (!band.draw(bottom, font, layout))
      return false;
    band.put(file);
  }
  file.close();
  return static_cast<bool>(file);
}

} // namespace modeler

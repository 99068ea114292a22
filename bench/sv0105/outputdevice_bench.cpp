// Each drawing operation on 1, 16 and 300 pixels a side, beside the calls of the system that give the same pixels. Pen, brush and
// font are set before, as a program does that draws more than one thing.

#include "support/ratio.hpp"
#include "sv/sv.hpp"
#include "tools/winapi.hpp"

#include <deque>
#include <string>

namespace {

constexpr long kPage = 320;

/// A device with a picture and one without a pen, and the same for the system's own calls.
struct Scene {
  explicit Scene(long size)
      : side(size), picture(SV::Size{size, size}), image(picture, SV::IMAGE_MASK_COLOR, SV::COL_WHITE) {
    for (SV::VirtualDevice * each : {&device, &peer, &source})
      each->SetOutputSizePixel({kPage, kPage});
    device.ChangePen(SV::Pen(SV::COL_LIGHTRED));
    device.ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
    device.ChangeFont(SV::Font("Arial", {0, 12}));
    source.ChangePen(SV::Pen());
    source.ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
    SelectObject(context, GetStockObject(DC_PEN));
    SelectObject(context, GetStockObject(DC_BRUSH));
    SetDCPenColor(context, 0x0000FF);
    SetDCBrushColor(context, 0x00FFFF);
    font = SV::Font("Arial", {0, 12}).CreateSystemFont();
    SelectObject(context, font);
    SetStretchBltMode(context, COLORONCOLOR);
  }
  Scene(Scene const &) = delete;
  Scene & operator=(Scene const &) = delete;
  ~Scene() {
    SelectObject(context, GetStockObject(SYSTEM_FONT));
    DeleteObject(font);
    DeleteDC(memory);
  }

  int pixels() const { return static_cast<int>(side); }

  /// The picture in a memory device that is kept, as a program would that draws many.
  template <class Draw> void withPicture(Draw const & draw) {
    HGDIOBJ const former = SelectObject(memory, picture.GethBitmap());
    draw(memory);
    SelectObject(memory, former);
  }

  long side;
  SV::Bitmap picture;
  SV::Image image;
  SV::VirtualDevice device;
  SV::VirtualDevice peer;
  SV::VirtualDevice source;
  HDC context = peer.GethDC();
  HDC memory = CreateCompatibleDC(nullptr);
  HFONT font = nullptr;
};

using Draw = void (*)(Scene &);

struct Operation {
  char const * name;
  Draw ours;
  char const * peerName;
  Draw peer;
};

void drawLine(Scene & s) { s.device.DrawLine({4, 4}, {3 + s.side, 4}); }
void peerLine(Scene & s) {
  MoveToEx(s.context, 4, 4, nullptr);
  LineTo(s.context, 4 + s.pixels(), 4);
}

void drawSlope(Scene & s) { s.device.DrawLine({4, 4}, {3 + s.side, 3 + s.side}); }
void peerSlope(Scene & s) {
  MoveToEx(s.context, 4, 4, nullptr);
  LineTo(s.context, 3 + s.pixels(), 3 + s.pixels());
  SetPixelV(s.context, 3 + s.pixels(), 3 + s.pixels(), 0x0000FF);
}

void drawRectangle(Scene & s) { s.device.DrawRect({{4, 4}, {s.side, s.side}}); }
void peerRectangle(Scene & s) {
  if (s.side == 1)
    SetPixelV(s.context, 4, 4, 0x0000FF);
  else
    Rectangle(s.context, 4, 4, 4 + s.pixels(), 4 + s.pixels());
}

void fillRectangle(Scene & s) { s.source.DrawRect({{4, 4}, {s.side, s.side}}); }
void peerFill(Scene & s) { PatBlt(s.context, 4, 4, s.pixels(), s.pixels(), PATCOPY); }

/// As many letters as are about that wide.
SV::String lettersFor(Scene const & s) {
  return SV::String(std::string(static_cast<std::size_t>(1 + s.side / 8), 'n').c_str());
}

void drawText(Scene & s) { s.device.DrawText({4, 4}, lettersFor(s)); }
void peerText(Scene & s) {
  SV::String const text = lettersFor(s);
  TextOutA(s.context, 4, 4, text.c_str(), text.Len());
}

void measureText(Scene & s) { benchmark::DoNotOptimize(s.device.GetTextSize(lettersFor(s))); }
void peerMeasure(Scene & s) {
  SV::String const text = lettersFor(s);
  SIZE size;
  GetTextExtentPoint32A(s.context, text.c_str(), text.Len(), &size);
  benchmark::DoNotOptimize(size);
}

void drawBitmap(Scene & s) { s.device.DrawBitmap({4, 4}, s.picture); }
void peerBitmap(Scene & s) {
  s.withPicture([&](HDC from) { BitBlt(s.context, 4, 4, s.pixels(), s.pixels(), from, 0, 0, SRCCOPY); });
}

void stretchBitmap(Scene & s) { s.device.DrawBitmap({{4, 4}, {s.side + 3, s.side + 3}}, s.picture); }
void peerStretch(Scene & s) {
  s.withPicture([&](HDC from) {
    StretchBlt(s.context, 4, 4, s.pixels() + 3, s.pixels() + 3, from, 0, 0, s.pixels(), s.pixels(), SRCCOPY);
  });
}

void drawTransparent(Scene & s) { s.device.DrawTransparentBitmap({4, 4}, s.picture, SV::COL_WHITE); }
void drawImage(Scene & s) { s.device.DrawImage({4, 4}, s.image); }
void peerTransparent(Scene & s) {
  s.withPicture([&](HDC from) {
    TransparentBlt(s.context, 4, 4, s.pixels(), s.pixels(), from, 0, 0, s.pixels(), s.pixels(), 0xFFFFFF);
  });
}

void drawDevice(Scene & s) { s.device.DrawOutDev({4, 4}, {s.side, s.side}, {0, 0}, {s.side, s.side}, s.source); }
void peerDevice(Scene & s) { BitBlt(s.context, 4, 4, s.pixels(), s.pixels(), s.source.GethDC(), 0, 0, SRCCOPY); }

void fillGradient(Scene & s) { s.device.GradientFill(true, {{4, 4}, {s.side, s.side}}, SV::COL_RED, SV::COL_BLUE); }
void peerGradient(Scene & s) {
  TRIVERTEX corners[] = {{4, 4, 0x8000, 0, 0, 0}, {4 + s.side, 4 + s.side, 0, 0, 0x8000, 0}};
  GRADIENT_RECT whole = {0, 1};
  GradientFill(s.context, corners, 2, &whole, 1, GRADIENT_FILL_RECT_V);
}

bench::Body repeated(long side, Draw draw) {
  return [side, draw](benchmark::State & state) {
    Scene scene(side);
    for (auto _ : state)
      draw(scene);
  };
}

/// Every operation in every size.
std::deque<bench::Pair> pairs() {
  constexpr Operation kOperations[] = {
      {"a line", drawLine, "MoveToEx, LineTo", peerLine},
      {"a slope", drawSlope, "MoveToEx, LineTo, SetPixelV", peerSlope},
      {"a rectangle", drawRectangle, "Rectangle", peerRectangle},
      {"an area", fillRectangle, "PatBlt", peerFill},
      {"a text", drawText, "TextOutA", peerText},
      {"the size of a text", measureText, "GetTextExtentPoint32A", peerMeasure},
      {"a bitmap", drawBitmap, "SelectObject, BitBlt", peerBitmap},
      {"a stretched bitmap", stretchBitmap, "SelectObject, StretchBlt", peerStretch},
      {"a transparent bitmap", drawTransparent, "SelectObject, TransparentBlt", peerTransparent},
      {"an image", drawImage, "SelectObject, TransparentBlt", peerTransparent},
      {"another device", drawDevice, "BitBlt", peerDevice},
      {"a gradient", fillGradient, "GradientFill", peerGradient},
  };
  std::deque<bench::Pair> all;
  for (Operation const & operation : kOperations)
    for (long const side : {1L, 16L, 300L})
      all.emplace_back("OutputDevice: " + std::string(operation.name) + ", " + std::to_string(side) +
                           (side == 1 ? " pixel" : " pixels"),
                       bench::atMost(1.2), repeated(side, operation.ours), operation.peerName,
                       repeated(side, operation.peer));
  return all;
}

std::deque<bench::Pair> const registered = pairs();

} // namespace

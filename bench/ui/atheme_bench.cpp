// Each drawing of the themes beside the calls of the system that give the same pixels, handles of visual styles and fonts included: both
// are made for each drawing. Both draw in memory, and the window's context is open, as in a Paint.

#include "atheme_manager.hpp"

#include "acolor.hpp"
#include "aplatfrm.hpp"
#include "support/ratio.hpp"
#include "sv/sv.hpp"
#include "tools/winapi.hpp"

#include <deque>
#include <optional>
#include <string>
#include <uxtheme.h>

namespace {

constexpr long kPage = 320;
constexpr char kTitle[] = "Properties";

/// A window that draws in memory.
class MemoryWindow : public SV::Window {
public:
  explicit MemoryWindow(SV::VirtualDevice & memory) : Window(nullptr), memory_(memory) {}
  SV::Size GetOutputSizePixel() const override { return memory_.GetOutputSizePixel(); }

protected:
  HDC fetchContext() const override { return memory_.GethDC(); }
  void releaseContext(HDC) const override {}

private:
  SV::VirtualDevice & memory_;
};

/// A theme that draws on one device, and another device for the system's own calls.
struct Scene {
  Scene(long theTheme, bool styled, long theSide)
      : theme(KivThemeManager::Instance().GetTheme(theTheme)), side(theSide),
        area({4, 4}, {theSide, theSide == 1 ? 1 : 16}) {
    KivThemeManager::Instance().SetVisualStylesXPEnabled(styled);
    SV::Resource::SetResManager(&pack);
    SV::ImagePool::SetPoolFile(Kiv_GetProgramPathFilename("agfx.zip"));
    for (SV::VirtualDevice * each : {&ours, &peers})
      each->SetOutputSizePixel({kPage, kPage});
    scope.emplace(window);
    edges = area.ToSystem();
    SetBkMode(context, TRANSPARENT);
  }
  Scene(Scene const &) = delete;
  Scene & operator=(Scene const &) = delete;
  ~Scene() {
    DeleteDC(memory);
    SV::Resource::SetResManager(nullptr);
    KivThemeManager::Instance().SetVisualStylesXPEnabled(true);
  }

  COLORREF color(long index) const { return static_cast<COLORREF>(theme.GetColor(index).GetRGB()); }

  void fill(RECT const & rect, COLORREF with) const {
    SetDCBrushColor(context, with);
    PatBlt(context, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, PATCOPY);
  }
  void line(int x, int y, int toX, int toY) const {
    MoveToEx(context, x, y, nullptr);
    LineTo(context, toX, toY);
  }

  KivTheme const & theme;
  long side;
  SV::Rectangle area;
  RECT edges;
  SV::ResMgr pack{"language\\2057\\kivara72.dll"};
  SV::VirtualDevice ours;
  SV::VirtualDevice peers;
  MemoryWindow window{ours};
  std::optional<SV::DrawingScope> scope;
  HDC context = peers.GethDC();
  HDC memory = CreateCompatibleDC(nullptr);
};

/// What lines and areas are drawn with; the context has afterwards what it had, as ours has.
class PenAndBrush {
public:
  explicit PenAndBrush(HDC context)
      : context_(context), pen_(SelectObject(context, GetStockObject(DC_PEN))),
        brush_(SelectObject(context, GetStockObject(DC_BRUSH))) {}
  PenAndBrush(PenAndBrush const &) = delete;
  PenAndBrush & operator=(PenAndBrush const &) = delete;
  ~PenAndBrush() {
    SelectObject(context_, pen_);
    SelectObject(context_, brush_);
  }

private:
  HDC context_;
  HGDIOBJ pen_;
  HGDIOBJ brush_;
};

void styledPart(Scene const & s, HDC device, wchar_t const * classes, int part, int state, RECT const & area) {
  HTHEME const handle = IsAppThemed() ? OpenThemeData(s.window.GethWnd(), classes) : nullptr;
  DrawThemeBackground(handle, device, part, state, &area, nullptr);
  CloseThemeData(handle);
}

void gradient(Scene const & s, RECT const & area, bool vertical, SV::Color const & first, SV::Color const & last) {
  TRIVERTEX corners[] = {{area.left, area.top, first.GetRed(), first.GetGreen(), first.GetBlue(), 0},
                         {area.right, area.bottom, last.GetRed(), last.GetGreen(), last.GetBlue(), 0}};
  GRADIENT_RECT whole = {0, 1};
  GradientFill(s.context, corners, 2, &whole, 1, vertical ? GRADIENT_FILL_RECT_V : GRADIENT_FILL_RECT_H);
}

// Captions

void drawCaption(Scene & s) { s.theme.Draw(s.window, PlainCaptionActive, s.area); }
void drawFramedCaption(Scene & s) { s.theme.Draw(s.window, CaptionActive, s.area); }
void peerStyledCaption(Scene & s) { styledPart(s, s.context, L"Window", 2, 1, s.edges); }
void peerGradientCaption(Scene & s) { gradient(s, s.edges, true, s.theme.GetColor(7), s.theme.GetColor(8)); }
void peerStripes(Scene & s) {
  PenAndBrush const drawing(s.context);
  s.fill(s.edges, s.color(7));
  SetDCPenColor(s.context, s.color(8));
  for (int y = s.edges.top + 1; y < s.edges.bottom; y += 2)
    s.line(s.edges.left, y, s.edges.right, y);
}

// Texts

void drawText(Scene & s) { s.theme.DrawText(s.window, PlainCaptionActive, s.area, kTitle); }
void drawFramedText(Scene & s) { s.theme.DrawText(s.window, CaptionActive, s.area, kTitle); }
void write(Scene const & s, COLORREF shadow, COLORREF text) {
  SV::Font font = SV::Application::GetAppFont();
  font.ChangeSize({0, 12});
  font.ChangeWeight(SV::WEIGHT_BOLD);
  HFONT const bold = font.CreateSystemFont();
  HGDIOBJ const former = SelectObject(s.context, bold);
  SV::String const title(kTitle);
  SIZE size;
  GetTextExtentPoint32A(s.context, title.c_str(), title.Len(), &size);
  SetTextColor(s.context, shadow);
  TextOutA(s.context, s.edges.left + 4, s.edges.top + 3, title.c_str(), title.Len());
  SetTextColor(s.context, text);
  TextOutA(s.context, s.edges.left + 3, s.edges.top + 2, title.c_str(), title.Len());
  SelectObject(s.context, former);
  DeleteObject(bold);
}
void peerText(Scene & s) { write(s, s.color(8), 0xFFFFFF); }
void peerStyledText(Scene & s) {
  CloseThemeData(IsAppThemed() ? OpenThemeData(s.window.GethWnd(), L"Window") : nullptr);
  write(s, GetSysColor(COLOR_ACTIVECAPTION), GetSysColor(COLOR_CAPTIONTEXT));
}

// Close buttons

SV::Rectangle const kButton({4, 4}, {16, 16});

void drawClose(Scene & s) { s.theme.DrawCloseButton(s.window, CaptionActive, kButton, false, false); }
void drawInactiveClose(Scene & s) { s.theme.DrawCloseButton(s.window, CaptionInactive, kButton, false, false); }
void peerStyledClose(Scene & s) { styledPart(s, s.context, L"Window", 18, 1, kButton.ToSystem()); }

template <class Draw> void half(Scene const & s, Draw const & draw) {
  HDC const device = CreateCompatibleDC(s.context);
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof info.bmiHeader, 16, 16, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void * pixels;
  HBITMAP const picture = CreateDIBSection(device, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  HGDIOBJ const former = SelectObject(device, picture);
  BitBlt(device, 0, 0, 16, 16, s.context, 4, 4, SRCCOPY);
  draw(device);
  AlphaBlend(s.context, 4, 4, 16, 16, device, 0, 0, 16, 16, {AC_SRC_OVER, 0, 0x80, 0});
  SelectObject(device, former);
  DeleteObject(picture);
  DeleteDC(device);
}
void peerStyledHalf(Scene & s) {
  half(s, [&](HDC device) { styledPart(s, device, L"Window", 18, 1, {0, 0, 16, 16}); });
}

void blendClose(Scene const & s, HDC device, int place) {
  static SV::Image const image = SV::ImagePool::GetImage("control/close.png");
  HGDIOBJ const former = SelectObject(s.memory, image.GetBitmap().GethBitmap());
  AlphaBlend(device, place, place, 16, 16, s.memory, 0, 0, 16, 16, {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA});
  SelectObject(s.memory, former);
}
void peerImage(Scene & s) { blendClose(s, s.context, 4); }
void peerHalfImage(Scene & s) {
  half(s, [&](HDC device) { blendClose(s, device, 0); });
}

void peerHandMade(Scene & s) {
  static SV::Bitmap const cross{SV::ResId(0x2002BBB, &s.pack)};
  PenAndBrush const drawing(s.context);
  s.fill(kButton.ToSystem(), GetSysColor(COLOR_BTNFACE));
  SetDCPenColor(s.context, GetSysColor(COLOR_BTNHIGHLIGHT));
  s.line(4, 4, 20, 4);
  s.line(4, 4, 4, 20);
  SetDCPenColor(s.context, 0x404040);
  s.line(4, 19, 20, 19);
  s.line(19, 4, 19, 20);
  SetDCPenColor(s.context, GetSysColor(COLOR_BTNSHADOW));
  s.line(5, 18, 19, 18);
  s.line(18, 5, 18, 19);
  HGDIOBJ const former = SelectObject(s.memory, cross.GethBitmap());
  TransparentBlt(s.context, 8, 8, 8, 8, s.memory, 0, 0, 8, 8, GetNearestColor(s.context, 0xC0C0C0));
  SelectObject(s.memory, former);
}

// Bars

RECT const kWhole = {0, 0, kPage, kPage};

void drawMenu(Scene & s) { s.theme.DrawMenuBackground(s.window); }
void peerFill(Scene & s) {
  PenAndBrush const drawing(s.context);
  s.fill(kWhole, s.color(0));
}
void peerMenuGradient(Scene & s) {
  SV::Color left;
  SV::Color right;
  left.SetRGB(0xF5BE9E);
  right.SetRGB(0xF9DAC3);
  gradient(s, kWhole, false, left, right);
}

void drawToolbar(Scene & s) { s.theme.DrawToolbarBackground(s.window, true, s.area); }
void peerToolbar(Scene & s) {
  HRGN const region = CreateRectRgnIndirect(&s.edges);
  SelectClipRgn(s.context, region);
  gradient(s, kWhole, true, s.theme.GetColor(1), s.theme.GetColor(2));
  SelectClipRgn(s.context, nullptr);
  DeleteObject(region);
}

void drawButton(Scene & s) { s.theme.DrawToolbarButton(s.window, s.window, kButton, false, true, false, false); }
void peerStyledButton(Scene & s) { styledPart(s, s.context, L"Toolbar", 1, 2, kButton.ToSystem()); }
void peerButton(Scene & s) {
  PenAndBrush const drawing(s.context);
  SV::Color const color = srcOver(srcOver(s.theme.GetColor(0), SV::COL_HIGHLIGHT, 0.3), SV::COL_WHITE, 0.5);
  SetDCBrushColor(s.context, static_cast<COLORREF>(color.GetRGB()));
  SetDCPenColor(s.context,
                IsWindowEnabled(s.window.GethWnd()) ? GetSysColor(COLOR_HIGHLIGHT) : GetSysColor(COLOR_BTNSHADOW));
  Rectangle(s.context, 4, 4, 20, 20);
}

void drawStatus(Scene & s) { s.theme.DrawStatusBarBackground(s.window, s.area); }
void peerStatus(Scene & s) {
  PenAndBrush const drawing(s.context);
  s.fill(s.edges, s.color(0));
  if (!IsAppThemed())
    return;
  constexpr double kFactors[] = {0.632, 0.815, 0.912, 0.984, 1.011, 0.991, 0.975, 0.942, 0.919, 0.945};
  for (int i = 0; i < 10; ++i) {
    int const y = i < 5 ? i : kPage - 10 + i;
    SetDCPenColor(s.context, static_cast<COLORREF>(mulColor(s.theme.GetColor(0), kFactors[i]).GetRGB()));
    s.line(0, y, kPage, y);
  }
}

using Draw = void (*)(Scene &);

constexpr long kClassic = 0;
constexpr long kModern = 1;

struct Operation {
  char const * name;
  long theme;
  bool styled;
  Draw ours;
  char const * peerName;
  Draw peer;
  bool inOneSize = true;
};

constexpr Operation kOperations[] = {
    {"styled caption", kClassic, true, drawCaption, "DrawThemeBackground", peerStyledCaption, false},
    {"striped caption", kClassic, false, drawCaption, "PatBlt, LineTo", peerStripes, false},
    {"shaded caption", kModern, true, drawFramedCaption, "GradientFill", peerGradientCaption, false},
    {"styled text", kClassic, true, drawText, "OpenThemeData, CreateFont, TextOutA", peerStyledText},
    {"text", kModern, true, drawFramedText, "CreateFont, TextOutA", peerText},
    {"styled close button", kClassic, true, drawClose, "DrawThemeBackground", peerStyledClose},
    {"styled close button at half strength", kClassic, true, drawInactiveClose, "DrawThemeBackground, AlphaBlend",
     peerStyledHalf},
    {"close button by hand", kClassic, false, drawClose, "LineTo, TransparentBlt", peerHandMade},
    {"close button from a picture", kModern, true, drawClose, "AlphaBlend", peerImage},
    {"the same at half strength", kModern, true, drawInactiveClose, "AlphaBlend twice", peerHalfImage},
    {"plain menu", kClassic, true, drawMenu, "PatBlt", peerFill},
    {"shaded menu", kModern, true, drawMenu, "GradientFill", peerMenuGradient},
    {"tool bar", kClassic, true, drawToolbar, "SelectClipRgn, GradientFill", peerToolbar, false},
    {"styled button", kClassic, true, drawButton, "DrawThemeBackground", peerStyledButton},
    {"button by hand", kModern, false, drawButton, "Rectangle", peerButton},
    {"status bar with lines", kClassic, true, drawStatus, "PatBlt, LineTo", peerStatus, false},
    {"shaded status bar", kModern, true, drawStatus, "SelectClipRgn, GradientFill", peerToolbar, false},
};

bench::Body repeated(Operation const & operation, long side, Draw draw) {
  return [&operation, side, draw](benchmark::State & state) {
    Scene scene(operation.theme, operation.styled, side);
    for (auto _ : state)
      draw(scene);
  };
}

std::deque<bench::Pair> pairs() {
  std::deque<bench::Pair> all;
  for (Operation const & operation : kOperations)
    for (long const side : {1L, 16L, 300L}) {
      if (operation.inOneSize && side != 300)
        continue;
      std::string const size = operation.inOneSize ? "" : ", " + std::to_string(side) + " wide";
      all.emplace_back("Theme: " + std::string(operation.name) + size, bench::atMost(1.2),
                       repeated(operation, side, operation.ours), operation.peerName,
                       repeated(operation, side, operation.peer));
    }
  return all;
}

std::deque<bench::Pair> const registered = pairs();

} // namespace

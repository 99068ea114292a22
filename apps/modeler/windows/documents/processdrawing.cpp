#include "windows/documents/processdrawing.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <iterator>

using SV::Point;

namespace modeler {
namespace {

constexpr char kArrow[] = "#5d6f7d";
constexpr char kArrowBack[] = "#a8774c";
constexpr char kFaint[] = "#5d6f7d";

char const * colourOf(NodeKind kind) {
  switch (kind) {
  case NodeKind::Start: return "#dcf0dd";
  case NodeKind::Decision: return "#fcf2cf";
  case NodeKind::End: return "#f5dfe1";
  default: return "#dcebf7";
  }
}

bool touch(SV::Rectangle const & a, SV::Rectangle const & b) {
  return a.TopLeft().x < b.TopLeft().x + b.GetSize().width && b.TopLeft().x < a.TopLeft().x + a.GetSize().width &&
         a.TopLeft().y < b.TopLeft().y + b.GetSize().height && b.TopLeft().y < a.TopLeft().y + a.GetSize().height;
}

POINT systemPoint(Point const & point) { return {point.x, point.y}; }

/// A pen and a brush for the system's functions: those of the device are selected only when it draws itself.
class Ink {
public:
  Ink(SV::OutputDevice const & device, SV::Color const & edge, long thickness, SV::Color const & fill)
      : context_(device.GethDC()), pen_(CreatePen(PS_SOLID, static_cast<int>(thickness), edge.GetRGB())),
        brush_(CreateSolidBrush(fill.GetRGB())), formerPen_(SelectObject(context_, pen_)),
        formerBrush_(SelectObject(context_, brush_)) {}
  Ink(Ink const &) = delete;
  Ink & operator=(Ink const &) = delete;
  ~Ink() {
    SelectObject(context_, formerBrush_);
    SelectObject(context_, formerPen_);
    DeleteObject(brush_);
    DeleteObject(pen_);
  }

private:
  HDC context_;
  HPEN pen_;
  HBRUSH brush_;
  HGDIOBJ formerPen_;
  HGDIOBJ formerBrush_;
};

/// The same for texts.
class Letters {
public:
  Letters(SV::OutputDevice const & device, SV::Font const & font, char const * colour)
      : context_(device.GethDC()), font_(font.CreateSystemFont()), former_(SelectObject(context_, font_)),
        formerColour_(SetTextColor(context_, getColorOfColorName(colour).GetRGB())),
        formerMode_(SetBkMode(context_, TRANSPARENT)) {}
  Letters(Letters const &) = delete;
  Letters & operator=(Letters const &) = delete;
  ~Letters() {
    SetBkMode(context_, formerMode_);
    SetTextColor(context_, formerColour_);
    SelectObject(context_, former_);
    DeleteObject(font_);
  }

private:
  HDC context_;
  HFONT font_;
  HGDIOBJ former_;
  COLORREF formerColour_;
  int formerMode_;
};

/// A line that is too wide ends in an ellipsis. Nothing is clipped: some letters reach beyond the width that is measured.
void drawLine(SV::OutputDevice & device, TextLine const & line) {
  Point const & corner = line.area.TopLeft();
  RECT area{corner.x, corner.y, corner.x + line.area.GetSize().width, corner.y + line.area.GetSize().height};
  DrawTextA(device.GethDC(), line.text.c_str(), line.text.Len(), &area,
            DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX | DT_NOCLIP | DT_END_ELLIPSIS);
}

class Painter {
public:
  Painter(SV::OutputDevice & device, SV::Font const & font, Layout const & layout)
      : device_(device), font_(font), layout_(layout), thickness_(std::max(layout.line / 14, 1L)) {}

  void drawArrow(Arrow const & arrow) {
    SV::Color const colour = getColorOfColorName(arrow.leadsBack ? kArrowBack : kArrow);
    Ink const ink(device_, colour, thickness_, colour);
    std::vector<POINT> points;
    std::transform(arrow.points.begin(), arrow.points.end(), std::back_inserter(points), systemPoint);
    drawHead(points[points.size() - 2], points.back());
    Polyline(device_.GethDC(), points.data(), static_cast<int>(points.size()));
  }

  void drawBox(Box const & box) {
    SV::Color const fill = getColorOfColorName(colourOf(box.kind));
    Ink const ink(device_, mulColor(fill, 0.6), thickness_, fill);
    if (box.kind == NodeKind::Decision)
      drawDiamond(box.area);
    else
      drawRounded(box);
    for (TextLine const & line : box.lines) {
      Letters const letters(device_, font_, line.isDuration ? kFaint : kInk);
      drawLine(device_, line);
    }
  }

private:
  void drawHead(POINT const & from, POINT const & tip) {
    long const length = 2 * layout_.line / 3;
    long const half = std::max(layout_.line / 4, 2L);
    long const right = (tip.x > from.x) - (tip.x < from.x);
    long const down = (tip.y > from.y) - (tip.y < from.y);
    POINT const foot{tip.x - right * length, tip.y - down * length};
    POINT const corners[] = {
        tip, {foot.x + down * half, foot.y + right * half}, {foot.x - down * half, foot.y - right * half}};
    Polygon(device_.GethDC(), corners, static_cast<int>(std::size(corners)));
  }

  void drawDiamond(SV::Rectangle const & area) {
    Point const & corner = area.TopLeft();
    long const right = corner.x + area.GetSize().width - 1;
    long const bottom = corner.y + area.GetSize().height - 1;
    POINT const middle{(corner.x + right) / 2, (corner.y + bottom) / 2};
    POINT const corners[] = {{middle.x, corner.y}, {right, middle.y}, {middle.x, bottom}, {corner.x, middle.y}};
    Polygon(device_.GethDC(), corners, static_cast<int>(std::size(corners)));
  }

  void drawRounded(Box const & box) {
    Point const & corner = box.area.TopLeft();
    int const round = static_cast<int>(2 * box.corner);
    RoundRect(device_.GethDC(), corner.x, corner.y, corner.x + box.area.GetSize().width,
              corner.y + box.area.GetSize().height, round, round);
  }

  SV::OutputDevice & device_;
  SV::Font const & font_;
  Layout const & layout_;
  long thickness_;
};

/// The part of the picture that an arrow takes, with its head.
SV::Rectangle extentOf(Arrow const & arrow, long line) {
  auto const [left, right] = std::minmax_element(arrow.points.begin(), arrow.points.end(),
                                                 [](Point const & a, Point const & b) { return a.x < b.x; });
  auto const [top, bottom] = std::minmax_element(arrow.points.begin(), arrow.points.end(),
                                                 [](Point const & a, Point const & b) { return a.y < b.y; });
  return {{left->x - line, top->y - line}, {right->x - left->x + 2 * line, bottom->y - top->y + 2 * line}};
}

} // namespace

void drawProcess(SV::OutputDevice & device, SV::Font const & font, Layout const & layout, SV::Rectangle const & area) {
  Painter painter(device, font, layout);
  // The boxes cover the ends of the arrows.
  for (Arrow const & arrow : layout.arrows)
    if (touch(extentOf(arrow, layout.line), area))
      painter.drawArrow(arrow);
  for (Box const & box : layout.boxes)
    if (touch(box.area, area))
      painter.drawBox(box);
  Letters const letters(device, font, kInk);
  for (TextLine const & label : layout.labels)
    if (touch(label.area, area))
      drawLine(device, label);
}

} // namespace modeler

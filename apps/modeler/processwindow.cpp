#include "processwindow.hpp"

#include "sv/outputdevice.hpp"
#include "texts.hpp"

#include <algorithm>
#include <cmath>

using SV::Point;
using SV::Rectangle;
using SV::Size;
using SV::String;

namespace modeler {
namespace {

constexpr long kMargin = 12;
constexpr long kHeadline = 28;
constexpr long kArrowHead = 7;

char const * colourOf(NodeKind kind) {
  switch (kind) {
  case NodeKind::Start: return "palegreen";
  case NodeKind::Decision: return "lightgoldenrodyellow";
  case NodeKind::End: return "lightpink";
  default: return "lightskyblue";
  }
}

Point centreOf(Rectangle const & box) {
  return {box.TopLeft().x + box.GetSize().width / 2, box.TopLeft().y + box.GetSize().height / 2};
}

/// Where the line from the box's centre to \p target leaves the box.
Point edgeTowards(Rectangle const & box, Point const & target) {
  Point const centre = centreOf(box);
  double const dx = static_cast<double>(target.x - centre.x);
  double const dy = static_cast<double>(target.y - centre.y);
  double const byWidth = dx == 0 ? HUGE_VAL : box.GetSize().width / 2.0 / std::fabs(dx);
  double const byHeight = dy == 0 ? HUGE_VAL : box.GetSize().height / 2.0 / std::fabs(dy);
  double const part = std::min({byWidth, byHeight, 1.0});
  return {centre.x + std::lround(dx * part), centre.y + std::lround(dy * part)};
}

void drawArrowHead(SV::OutputDevice & device, Point const & from, Point const & to) {
  double const angle = std::atan2(static_cast<double>(to.y - from.y), static_cast<double>(to.x - from.x));
  for (double const side : {0.45, -0.45})
    device.DrawLine(to, {to.x - std::lround(kArrowHead * std::cos(angle + side)),
                         to.y - std::lround(kArrowHead * std::sin(angle + side))});
}

void drawDiamond(SV::OutputDevice & device, Rectangle const & box) {
  Point const centre = centreOf(box);
  Point const corners[] = {{centre.x, box.TopLeft().y},
                           {box.TopLeft().x + box.GetSize().width, centre.y},
                           {centre.x, box.TopLeft().y + box.GetSize().height},
                           {box.TopLeft().x, centre.y}};
  for (int i = 0; i < 4; ++i)
    device.DrawLine(corners[i], corners[(i + 1) % 4]);
}

void drawCentred(SV::OutputDevice & device, Point const & centre, String const & text) {
  Size const size = device.GetTextSize(text);
  device.DrawText({centre.x - size.width / 2, centre.y - size.height / 2}, text);
}

String durationText(long minutes) { return String(minutes) + " " + text(Text::Minutes); }

} // namespace

ProcessWindow::ProcessWindow(SV::MDIFrame & frame, ProcessModel const & model)
    : MDIChild(frame, model.name), model_(model), layout_(layOut(model)) {}

void ProcessWindow::Resize(Size const &) { Invalidate(); }

void ProcessWindow::Paint(SV::OutputDevice & device, Rectangle const &) {
  device.DrawText({kMargin, kMargin / 2}, model_.name + ": " + durationText(totalDuration(model_)));
  for (Flow const & flow : model_.flows)
    drawFlow(device, flow);
  for (std::size_t node = 0; node < model_.nodes.size(); ++node)
    drawNode(device, node);
}

/// The cells share the window evenly; a box takes the inner part of its cell.
Rectangle ProcessWindow::boxOf(std::size_t node) const {
  Size const window = GetOutputSizePixel();
  long const width = (window.width - 2 * kMargin) / std::max(layout_.columns, 1L);
  long const height = (window.height - kHeadline - kMargin) / std::max(layout_.rows, 1L);
  Cell const & cell = layout_.cells[node];
  long const gapX = width / 8;
  long const gapY = std::max(height / 4, 4L);
  return {{kMargin + cell.column * width + gapX, kHeadline + cell.row * height + gapY},
          {std::max(width - 2 * gapX, 1L), std::max(height - 2 * gapY, 1L)}};
}

void ProcessWindow::drawFlow(SV::OutputDevice & device, Flow const & flow) const {
  Rectangle const from = boxOf(flow.from);
  Rectangle const to = boxOf(flow.to);
  Point const start = edgeTowards(from, centreOf(to));
  Point const end = edgeTowards(to, centreOf(from));
  device.DrawLine(start, end);
  drawArrowHead(device, start, end);
  if (flow.text.Len() > 0)
    drawCentred(device, {(start.x + end.x) / 2, (start.y + end.y) / 2}, flow.text);
}

void ProcessWindow::drawNode(SV::OutputDevice & device, std::size_t place) const {
  Node const & node = model_.nodes[place];
  Rectangle const box = boxOf(place);
  device.ChangeFillInBrush(SV::Brush(getColorOfColorName(colourOf(node.kind))));
  device.DrawRect(box);
  if (node.kind == NodeKind::Decision)
    drawDiamond(device, box);
  Point centre = centreOf(box);
  long const line = device.GetTextSize(node.text).height;
  if (node.duration > 0) {
    drawCentred(device, {centre.x, centre.y + line}, durationText(node.duration));
    centre.y -= line / 4;
  }
  drawCentred(device, centre, node.text);
}

} // namespace modeler

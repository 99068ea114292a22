// Which activity is selected, and how its text is dragged.
#include "windows/documents/processwindow.hpp"

#include <algorithm>

using SV::Point;
using SV::Rectangle;
using SV::String;

namespace modeler {
namespace {

bool isInside(Rectangle const & area, Point const & point) {
  return point.x >= area.Left() && point.x <= area.Right() && point.y >= area.Top() && point.y <= area.Bottom();
}

} // namespace

void ProcessWindow::drawSelection(SV::OutputDevice & paper) const {
  if (selected_ >= layout_.boxes.size())
    return;
  paper.ChangePen(SV::Pen(SV::COL_HIGHLIGHT, std::max(layout_.line / 6, 2L)));
  paper.ChangeFillInBrush(SV::Brush());
  paper.DrawRect(layout_.boxes[selected_].area);
}

std::size_t ProcessWindow::activityAt(Point const & position) const {
  Point const scrolled = bars_.GetPosition();
  Point const inPicture{position.x + scrolled.x, position.y + scrolled.y - pictureTop()};
  auto const box = std::find_if(layout_.boxes.begin(), layout_.boxes.end(), [&](Box const & each) {
    return each.kind == NodeKind::Activity && isInside(each.area, inPicture);
  });
  return box != layout_.boxes.end() ? static_cast<std::size_t>(box - layout_.boxes.begin()) : kNone;
}

void ProcessWindow::Select(std::size_t node) {
  selected_ = node;
  Rectangle const & area = layout_.boxes[node].area;
  bars_.Reveal(GethWnd(), {{area.Left(), area.Top() + pictureTop()}, area.GetSize()});
  Invalidate();
}

/// The next activity, from the last one on to the first. False: the model has none.
bool ProcessWindow::selectNext(bool forwards) {
  std::size_t const count = layout_.boxes.size();
  std::size_t node = selected_ < count ? selected_ : (forwards ? count - 1 : 0);
  for (std::size_t step = 0; step < count; ++step) {
    node = (node + (forwards ? 1 : count - 1)) % count;
    if (layout_.boxes[node].kind == NodeKind::Activity) {
      Select(node);
      return true;
    }
  }
  return false;
}

String ProcessWindow::SelectedActivity() {
  bool const isActivity = selected_ < model_.nodes.size() && model_.nodes[selected_].kind == NodeKind::Activity;
  return isActivity || selectNext(true) ? model_.nodes[selected_].text : String();
}

void ProcessWindow::MouseButtonDown(SV::MouseEvent const & event) {
  if (event.button != SV::MOUSE_LEFT)
    return;
  std::size_t const node = activityAt(event.position);
  if (node != kNone)
    Select(node);
  drag_.Press(event.position, node != kNone ? model_.nodes[node].text : String());
}

void ProcessWindow::MouseMove(SV::MouseEvent const & event) { drag_.Move(event); }

void ProcessWindow::MouseButtonUp(SV::MouseEvent const & event) {
  if (event.button == SV::MOUSE_LEFT)
    drag_.Release(event.position);
}

void ProcessWindow::CaptureLost() { drag_.Cancel(); }

/// Escape ends what is dragged, and forgets what has been copied.
bool ProcessWindow::KeyInput(SV::KeyEvent const & event) {
  if (event.code == SV::KEY_TAB || event.code == (SV::KEY_TAB | SV::KEY_SHIFT))
    return selectNext(event.code == SV::KEY_TAB);
  if (event.code != SV::KEY_ESCAPE)
    return false;
  drag_.Cancel();
  KivDragManager::EndDragAction();
  return true;
}

} // namespace modeler

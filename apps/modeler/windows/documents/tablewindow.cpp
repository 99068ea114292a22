#include "windows/documents/tablewindow.hpp"

#include "tools/winapi.hpp"
#include "windows/backbuffer.hpp"
#include "windows/scaling.hpp"

#include <algorithm>
#include <utility>

using SV::Point;
using SV::Size;

namespace modeler {
namespace {

// At 96 dots per inch.
constexpr long kMargin = 12;
constexpr long kColumnGap = 24;
constexpr long kLineGap = 6;

} // namespace

TableWindow::TableWindow(SV::MDIFrame & frame, std::function<SV::String()> title, std::function<Rows()> rows)
    : DocumentWindow(frame), title_(std::move(title)), giveRows_(std::move(rows)) {}

TableWindow::~TableWindow() { MDIChild::Destroy(); }

void TableWindow::Show() {
  Retext();
  MDIChild::Show();
}

void TableWindow::Retext() {
  if (GethWnd() == nullptr) // the user has closed it
    return;
  SetText(title_());
  arrange();
}

void TableWindow::arrange() {
  rows_ = giveRows_();
  SV::VirtualDevice ruler;
  ruler.ChangeFont(GetFont());
  lineHeight_ = ruler.GetTextSize("Ag").height + scaledDown(kLineGap);
  ISequence<long> widths;
  for (Row const & row : rows_) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t column = 0; column < row.size(); ++column)
      widths[column] = std::max(widths[column], ruler.GetTextSize(row[column]).width);
  }
  long right = scaledAcross(kMargin);
  columns_.clear();
  for (long const width : widths) {
    columns_.push_back(right);
    right += width + scaledAcross(kColumnGap);
  }
  right += scaledAcross(kMargin - kColumnGap);
  bars_.SetWhole(GethWnd(), {right, 2 * scaledDown(kMargin) + lineHeight_ * static_cast<long>(rows_.size())},
                 lineHeight_);
}

void TableWindow::Resize(Size const &) { bars_.Fit(GethWnd()); }

void TableWindow::Paint(SV::OutputDevice & device, SV::Rectangle const & area) {
  BackBuffer const buffer(device.GethDC(), area);
  SV::OutputDevice paper(buffer.GethDC());
  paper.ChangePen(SV::Pen());
  paper.ChangeFillInBrush(SV::Brush(SV::COL_WINDOW));
  paper.DrawRect(area);
  SV::Font font = GetFont();
  font.ChangeColor(SV::COL_WINDOWTEXT);
  font.ChangeTransparent(true);
  paper.ChangeFont(font);
  Point const scrolled = bars_.GetPosition();
  long y = scaledDown(kMargin) - scrolled.y;
  for (Row const & row : rows_) {
    bool const isSeen = y + lineHeight_ >= area.Top() && y <= area.Bottom();
    for (std::size_t column = 0; isSeen && column < row.size(); ++column)
      paper.DrawText({columns_[column] - scrolled.x, y}, row[column]);
    y += lineHeight_;
  }
}

long long TableWindow::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == WM_ERASEBKGND)
    return 1; // Paint draws all, at once
  if (bars_.Handle(GethWnd(), message, wParam))
    return 0;
  long long const result = DocumentWindow::HandleMessage(message, wParam, lParam);
  if (message == WM_SETFONT && !rows_.empty())
    arrange();
  return result;
}

} // namespace modeler

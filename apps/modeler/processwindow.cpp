#include "processwindow.hpp"

#include "backbuffer.hpp"
#include "processdrawing.hpp"
#include "texts.hpp"

#include <algorithm>
#include <memory>

using SV::Point;
using SV::Size;
using SV::String;

namespace modeler {
namespace {

/// Measures texts in the font of a window.
class Ruler {
public:
  explicit Ruler(SV::Window const & window)
      : window_(window.GethWnd()), context_(GetDC(window_)), device_(std::make_unique<SV::OutputDevice>(context_)) {
    device_->ChangeFont(window.GetFont());
  }
  Ruler(Ruler const &) = delete;
  Ruler & operator=(Ruler const &) = delete;
  ~Ruler() {
    device_.reset();
    ReleaseDC(window_, context_);
  }

  SV::OutputDevice & GetDevice() { return *device_; }

private:
  HWND window_;
  HDC context_;
  std::unique_ptr<SV::OutputDevice> device_;
};

String durationText(long long minutes) { return String(minutes) + " " + text(Text::Minutes); }

} // namespace

ProcessWindow::ProcessWindow(SV::MDIFrame & frame, ProcessModel const & model)
    : MDIChild(frame, model.name), model_(model) {
  arrange();
  fitToPicture(frame.GetClient().GetOutputSizePixel());
}

ProcessWindow::~ProcessWindow() { MDIChild::Destroy(); }

void ProcessWindow::Retext() { arrange(); }

void ProcessWindow::Resize(Size const &) { bars_.Fit(GethWnd()); }

/// Texts are measured anew: font or language may be another one.
void ProcessWindow::arrange() {
  if (GethWnd() == nullptr) // the user has closed it
    return;
  Ruler ruler(*this);
  layout_ = layOut(model_, {[&](String const & line) { return ruler.GetDevice().GetTextSize(line); }, durationText});
  ruler.GetDevice().ChangeFont(headlineFont());
  headlineSize_ = ruler.GetDevice().GetTextSize(headline());
  bars_.SetWhole(GethWnd(), wholeSize(), layout_.line);
}

void ProcessWindow::fitToPicture(Size const & room) {
  Point const place = GetPosPixel();
  Size const frame{GetSizePixel().width - GetOutputSizePixel().width,
                   GetSizePixel().height - GetOutputSizePixel().height};
  Size const whole = wholeSize();
  long const width = std::min(whole.width + frame.width, room.width - place.x);
  long const height = std::min(whole.height + frame.height, room.height - place.y);
  if (width > 0 && height > 0)
    SetPosSizePixel(place, {width, height});
}

String ProcessWindow::headline() const { return model_.name + ": " + durationText(totalDuration(model_)); }

SV::Font ProcessWindow::headlineFont() const {
  SV::Font font = GetFont();
  font.ChangeSize({0, font.GetSize().height * 5 / 4});
  font.ChangeColor(getColorOfColorName(kInk));
  font.ChangeTransparent(true);
  return font;
}

/// The headline stands above the picture, with a line's room around it.
Size ProcessWindow::wholeSize() const {
  return {std::max(layout_.size.width, headlineSize_.width + 2 * layout_.line),
          layout_.size.height + headlineSize_.height + layout_.line};
}

void ProcessWindow::Paint(SV::OutputDevice & device, SV::Rectangle const & area) {
  BackBuffer const buffer(device.GethDC(), area);
  SV::OutputDevice paper(buffer.GethDC());
  paper.ChangePen(SV::Pen());
  paper.ChangeFillInBrush(SV::Brush(getColorOfColorName(kPaper)));
  paper.DrawRect(area);
  Point const scrolled = bars_.GetPosition();
  OffsetWindowOrgEx(paper.GethDC(), scrolled.x, scrolled.y, nullptr);
  paper.ChangeFont(headlineFont());
  paper.DrawText({layout_.line, layout_.line}, headline());
  long const top = headlineSize_.height + layout_.line;
  OffsetWindowOrgEx(paper.GethDC(), 0, -top, nullptr);
  drawProcess(paper, GetFont(), layout_,
              {{area.TopLeft().x + scrolled.x, area.TopLeft().y + scrolled.y - top}, area.GetSize()});
}

long long ProcessWindow::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == WM_ERASEBKGND)
    return 1; // Paint draws all, at once
  if (bars_.Handle(GethWnd(), message, wParam))
    return 0;
  long long const result = MDIChild::HandleMessage(message, wParam, lParam);
  if (message == WM_SETFONT)
    arrange();
  return result;
}

} // namespace modeler

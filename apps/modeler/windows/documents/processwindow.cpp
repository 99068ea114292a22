#include "windows/documents/processwindow.hpp"

#include "texts/modelnotes.hpp"
#include "windows/backbuffer.hpp"
#include "windows/documents/processdrawing.hpp"

#include <algorithm>
#include <memory>
#include <utility>

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

} // namespace

ProcessWindow::ProcessWindow(SV::MDIFrame & frame, ProcessModel const & model, std::function<void()> frontChanged)
    : DocumentWindow(frame, model.name), model_(model), frontChanged_(std::move(frontChanged)) {
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
  auto const sizeOf = [&](String const & line) { return ruler.GetDevice().GetTextSize(line); };
  layout_ = layOut(model_, {sizeOf, [this](Node const & node) { return durationText(model_, node); }});
  headline_ = headlineOf(model_);
  notes_ = notesOf(model_);
  headSize_ = {};
  for (String const & note : notes_)
    headSize_ = {std::max(headSize_.width, sizeOf(note).width), headSize_.height + layout_.line};
  ruler.GetDevice().ChangeFont(headlineFont());
  Size const headline = sizeOf(headline_);
  notesTop_ = layout_.line + headline.height;
  headSize_ = {std::max(headSize_.width, headline.width), headSize_.height + headline.height};
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

SV::Font ProcessWindow::headlineFont() const {
  SV::Font font = noteFont();
  font.ChangeSize({0, font.GetSize().height * 5 / 4});
  return font;
}

SV::Font ProcessWindow::noteFont() const {
  SV::Font font = GetFont();
  font.ChangeColor(getColorOfColorName(kInk));
  font.ChangeTransparent(true);
  return font;
}

/// Headline and notes stand above the picture, with a line's room around them.
Size ProcessWindow::wholeSize() const {
  return {std::max(layout_.size.width, headSize_.width + 2 * layout_.line), layout_.size.height + pictureTop()};
}

long ProcessWindow::pictureTop() const { return headSize_.height + layout_.line; }

void ProcessWindow::Paint(SV::OutputDevice & device, SV::Rectangle const & area) {
  BackBuffer const buffer(device.GethDC(), area);
  SV::OutputDevice paper(buffer.GethDC());
  paper.ChangePen(SV::Pen());
  paper.ChangeFillInBrush(SV::Brush(getColorOfColorName(kPaper)));
  paper.DrawRect(area);
  Point const scrolled = bars_.GetPosition();
  OffsetWindowOrgEx(paper.GethDC(), scrolled.x, scrolled.y, nullptr);
  paper.ChangeFont(headlineFont());
  paper.DrawText({layout_.line, layout_.line}, headline_);
  paper.ChangeFont(noteFont());
  for (std::size_t note = 0; note < notes_.size(); ++note)
    paper.DrawText({layout_.line, notesTop_ + static_cast<long>(note) * layout_.line}, notes_[note]);
  long const top = pictureTop();
  OffsetWindowOrgEx(paper.GethDC(), 0, -top, nullptr);
  drawProcess(paper, GetFont(), layout_,
              {{area.TopLeft().x + scrolled.x, area.TopLeft().y + scrolled.y - top}, area.GetSize()});
  drawSelection(paper);
}

long long ProcessWindow::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == WM_ERASEBKGND)
    return 1; // Paint draws all, at once
  if (message == WM_DESTROY)
    drag_.Cancel(); // a window that goes gets no message that it has lost the mouse
  if (bars_.Handle(GethWnd(), message, wParam))
    return 0;
  long long const result = DocumentWindow::HandleMessage(message, wParam, lParam);
  if (message == WM_SETFONT)
    arrange();
  if (message == WM_MDIACTIVATE || message == WM_DESTROY)
    frontChanged_();
  return result;
}

} // namespace modeler

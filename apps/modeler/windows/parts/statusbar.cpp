#include "windows/parts/statusbar.hpp"

#include "model/layout/wrapping.hpp"
#include "windows/backbuffer.hpp"
#include "windows/scaling.hpp"

#include <utility>

namespace modeler {
namespace {

constexpr long kMargin = 8; // at 96 dots per inch
constexpr long kAbove = 3;

} // namespace

StatusBar::StatusBar(SV::Window & frame, std::function<SV::String()> left, std::function<SV::String()> right)
    : ThemedWindow(frame), left_(std::move(left)), right_(std::move(right)) {}

long StatusBar::GetHeight() const { return lineHeight() + 2 * scaledDown(kAbove); }

void StatusBar::Paint(SV::OutputDevice & device, SV::Rectangle const &) {
  SV::Rectangle const whole({0, 0}, GetOutputSizePixel());
  BackBuffer const buffer(device.GethDC(), whole);
  SV::OutputDevice paper(buffer.GethDC());
  KivThemeManager::CurrentTheme().DrawStatusBarBackground(paper, whole);
  paper.ChangeFont(font());
  long const margin = scaledAcross(kMargin);
  SV::String const right = right_();
  SV::Size const size = paper.GetTextSize(right);
  long const top = (whole.GetHeight() - size.height) / 2;
  auto const sizeOf = [&paper](SV::String const & text) { return paper.GetTextSize(text); };
  paper.DrawText({margin, top}, shortened(left_(), whole.GetWidth() - size.width - 3 * margin, sizeOf));
  paper.DrawText({whole.GetWidth() - margin - size.width, top}, right);
}

} // namespace modeler

#include "ui/themes/captiontext.hpp"

#include "sv/application.hpp"
#include "sv/outputdevice.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <cstdint>

using SV::String;

namespace kivara {

namespace {

constexpr long kHeight = 12;
constexpr long kMargin = 3;

// Longer beginnings than this are measured only if it fits, so that a text of any length takes no longer than what is seen
// of it.
constexpr std::int32_t kUsualLength = 256;

SV::Font captionFont(SV::Color const & color) {
  SV::Font font = SV::Application::GetAppFont();
  font.ChangeSize({0, kHeight});
  font.ChangeWeight(SV::WEIGHT_BOLD);
  font.ChangeTransparent(true); // or the text would hide its shadow
  font.ChangeColor(color);
  return font;
}

/// The font of a device, which has its former one again afterwards.
class FontInUse {
public:
  FontInUse(SV::OutputDevice & device, SV::Font const & font) : device_(device), former_(device.ChangeFont(font)) {}
  FontInUse(FontInUse const &) = delete;
  FontInUse & operator=(FontInUse const &) = delete;
  ~FontInUse() { device_.ChangeFont(former_); }

private:
  SV::OutputDevice & device_;
  SV::Font former_;
};

/// A cut must not leave half of a character of two bytes.
std::int32_t characterStart(String const & text, std::int32_t position) {
  CPINFO page;
  if (!GetCPInfo(CP_ACP, &page) || page.MaxCharSize < 2)
    return position;
  std::int32_t start = 0;
  while (start < position) {
    std::int32_t const next = start + (IsDBCSLeadByte(static_cast<BYTE>(text.charAt(start))) ? 2 : 1);
    if (next > position)
      break;
    start = next;
  }
  return start;
}

class Fitting {
public:
  Fitting(SV::OutputDevice const & device, String const & text, long width)
      : device_(device), text_(text), width_(width) {}

  String result() const {
    std::int32_t const most = mostToTry();
    if (most == text_.Len() && fits(text_))
      return text_;
    if (text_.Len() == 0)
      return text_;
    return cut(longest(std::min(most, text_.Len() - 1)));
  }

private:
  bool fits(String const & text) const { return device_.GetTextSize(text).width <= width_; }

  String cut(std::int32_t length) const { return text_.substr(0, characterStart(text_, length)) + "..."; }

  /// A length at which the text is too wide already, or all of it.
  std::int32_t mostToTry() const {
    std::int32_t length = std::min(text_.Len(), kUsualLength);
    while (length < text_.Len() && fits(text_.substr(0, length)))
      length = length > text_.Len() / 2 ? text_.Len() : length * 2;
    return length;
  }

  /// The largest number of characters up to \p most that fit; 0 when none do.
  std::int32_t longest(std::int32_t most) const {
    std::int32_t good = 0;
    std::int32_t bad = most + 1;
    while (bad - good > 1) {
      std::int32_t const middle = good + (bad - good) / 2;
      (fits(cut(middle)) ? good : bad) = middle;
    }
    return good;
  }

  SV::OutputDevice const & device_;
  String const & text_;
  long width_;
};

} // namespace

String fittingText(SV::OutputDevice const & device, String const & text, long width) {
  return Fitting(device, text, width).result();
}

void drawCaptionText(SV::OutputDevice & device, SV::Rectangle const & area, String const & text,
                     CaptionColors const & colors) {
  SV::DrawingScope const scope(device);
  FontInUse const font(device, captionFont(colors.hasShadow ? colors.shadow : colors.text));
  String const shown = fittingText(device, text, area.GetWidth() - 2 * kMargin);
  SV::Point const place = {area.Left() + kMargin, area.Top() + (area.GetHeight() - kHeight) / 2};
  if (colors.hasShadow) {
    device.DrawText({place.x + 1, place.y + 1}, shown);
    device.ChangeFont(captionFont(colors.text));
  }
  device.DrawText(place, shown);
}

} // namespace kivara

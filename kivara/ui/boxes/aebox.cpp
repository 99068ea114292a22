#include "aebox.hpp"

#include "atrace.hpp"
#include "awinstack.hpp"
#include "base/modules.hpp"
#include "base/textids.hpp"
#include "handles/handle.hpp"
#include "sv/application.hpp"
#include "sv/resource.hpp"
#include "ui/boxes/boxtext.hpp"

#include <algorithm>
#include <iterator>
#include <string>

using SV::Application;
using SV::String;

namespace texts = kivara::texts;

namespace {

constexpr SV::WinBits kBoxStyle = SV::WB_DIALOG;
constexpr long kIconSize = 32;
constexpr long kLeastTextWidth = 300;
constexpr int kLineUnknownButton = 1;

SV::Window * parentOfBox(SV::Window * parent) {
  return parent != nullptr && parent == Application::GetAppWindow() ? Kiv_GetTopWindow(0) : parent;
}

String titleOfBox(SV::Window const * parent) {
  SV::Window const * const window = Application::GetAppWindow();
  if (window != nullptr)
    return window->GetText();
  return parent != nullptr ? parent->GetText() : SV::Resource::LoadString(texts::kDialogTitle);
}

/// Measures in the font of a window.
class WindowFontMeasure : public kivara::TextMeasure {
public:
  explicit WindowFontMeasure(SV::Window const & window)
      : screen_(GetDC(nullptr)),
        former_(
            SelectObject(screen_.get(), reinterpret_cast<HFONT>(SendMessageA(window.GethWnd(), WM_GETFONT, 0, 0)))) {}
  WindowFontMeasure(WindowFontMeasure const &) = delete;
  WindowFontMeasure & operator=(WindowFontMeasure const &) = delete;
  ~WindowFontMeasure() override { SelectObject(screen_.get(), former_); }

  long widthOf(std::string_view text) override { return sizeOf(text).cx; }
  long lineHeight() { return sizeOf("A").cy; }

private:
  SIZE sizeOf(std::string_view text) {
    SIZE size = {};
    GetTextExtentPoint32A(screen_.get(), text.data(), static_cast<int>(text.size()), &size);
    return size;
  }

  handles::ScreenDevice screen_;
  HGDIOBJ former_;
};

/// In a label, "~~" shows one "~".
String literalLabel(String const & text) {
  std::string label;
  for (char const * c = text.c_str(); *c != '\0'; ++c)
    label.append(*c == '~' ? 2 : 1, *c);
  return String(label.c_str());
}

} // namespace

/// Distances in pixels, which follow the font.
struct KivErrorBox::Metrics {
  explicit Metrics(SV::Window const & box) {
    auto const pixels = [&box](long width, long height) {
      return box.LogicToPixel(SV::Size{width, height}, SV::MAP_APPFONT);
    };
    SV::Size const ten = pixels(10, 10);
    SV::Size const edge = pixels(8, 6);
    iconGap = buttonGap = ten.width;
    bottomGap = ten.height;
    marginX = edge.width;
    marginY = edge.height;
    smallGap = pixels(4, 0).width;
    buttonSize = pixels(50, 15);
    wideSize = pixels(60, 15);
  }

  long iconGap;
  long buttonGap;
  long bottomGap;
  long marginX;
  long marginY;
  long smallGap;
  SV::Size buttonSize;
  SV::Size wideSize;
};

KivErrorBox::KivErrorBox(SV::Window * parent, unsigned long styleBits, String const & message)
    : ModalDialog(parentOfBox(parent), kBoxStyle), style(styleBits), icon(this), text(this, SV::WB_MULTILINE) {
  SetText(titleOfBox(parent));
  ChangeHelpId(GetHelpIDOfErrorText(message));
  Metrics const metrics(*this);
  SV::Size const textSize = layOutText(metrics, message);
  icon.SetPosSizePixel({metrics.marginX, metrics.marginY}, {kIconSize, kIconSize});
  icon.ChangeIcon(SV::ICON_STYLE_ERROR);
  icon.ChangeBackgroundBrush(SV::Brush(SV::COL_FACE));
  icon.Show();
  long const buttonY = textSize.height + metrics.marginY + metrics.bottomGap;
  long const width = kIconSize + 2 * metrics.marginX + textSize.width + metrics.iconGap;
  makeButtons();
  layOutButtons(metrics, width, buttonY);
  ChangeOutputSizePixel({width, metrics.buttonSize.height + metrics.marginY + buttonY});
  Kiv_PushParentWindow(this);
}

KivErrorBox::~KivErrorBox() {
  Kiv_PopParentWindow(this);
  // The system takes all of it away at once: one control after the other costs more than the whole box.
  Window::Destroy();
}

SV::Size KivErrorBox::layOutText(Metrics const & metrics, String const & message) {
  WindowFontMeasure measure(*this);
  long const maxTextWidth = GetSystemMetrics(SM_CXSCREEN) * 3 / 4;
  kivara::WrappedText const wrapped = kivara::wrapText(message, maxTextWidth, measure);
  text.SetText(literalLabel(wrapped.text));
  SV::Size const size{std::max(wrapped.width, kLeastTextWidth),
                      std::max(wrapped.lines * measure.lineHeight(), kIconSize)};
  text.SetPosSizePixel({kIconSize + metrics.marginX + metrics.iconGap, metrics.marginY}, size);
  text.Show();
  return size;
}

void KivErrorBox::makeButtons() {
  auto const hasOneOf = [this](unsigned long row) { return (style & row) != 0; };
  auto const withDefault = [this](unsigned long bit) { return (style & bit) != 0 ? SV::WB_DEFAULT_BUTTON : 0; };
  constexpr unsigned long rows[] = {WB_OK, WB_OK_CANCEL, WB_YES_NO, WB_YES_NO_CANCEL, WB_RETRY_CANCEL};
  auto const * const row = std::find_if(std::begin(rows), std::end(rows), hasOneOf);
  if (row == std::end(rows))
    return;
  SV::WinBits const alone = *row == WB_OK ? SV::WB_GROUP : 0;
  if (*row == WB_OK || *row == WB_OK_CANCEL)
    okButton = std::make_unique<SV::OKButton>(this, alone | withDefault(WB_DEF_OK));
  if (*row == WB_YES_NO || *row == WB_YES_NO_CANCEL) {
    yesButton = std::make_unique<SV::PushButton>(this, withDefault(WB_DEF_YES));
    yesButton->SetText(SV::Resource::LoadString(texts::kYesButton));
    noButton = std::make_unique<SV::PushButton>(this, withDefault(WB_DEF_NO));
    noButton->SetText(SV::Resource::LoadString(texts::kNoButton));
  }
  if (*row == WB_RETRY_CANCEL) {
    retryButton = std::make_unique<SV::PushButton>(this, withDefault(WB_DEF_RETRY));
    retryButton->SetText(SV::Resource::LoadString(texts::kRetryButton));
  }
  if (*row == WB_OK_CANCEL || *row == WB_YES_NO_CANCEL || *row == WB_RETRY_CANCEL)
    cancelButton = std::make_unique<SV::CancelButton>(this, withDefault(WB_DEF_CANCEL));
  helpButton = std::make_unique<SV::HelpButton>(this, alone);
}

long KivErrorBox::gapBefore(SV::PushButton const * button, Metrics const & metrics) const {
  if (button == helpButton.get() || (button == cancelButton.get() && yesButton))
    return metrics.buttonGap;
  return metrics.smallGap;
}

void KivErrorBox::layOutButtons(Metrics const & metrics, long width, long top) {
  auto const sizeOf = [&](SV::PushButton const * button) {
    return button == retryButton.get() ? metrics.wideSize : metrics.buttonSize;
  };
  std::vector<SV::PushButton *> const row = buttonRow();
  long rowWidth = 0;
  for (SV::PushButton const * const button : row)
    rowWidth += sizeOf(button).width + (button == row.front() ? 0 : gapBefore(button, metrics));
  long left = (width - rowWidth) / 2;
  for (SV::PushButton * const button : row) {
    left += button == row.front() ? 0 : gapBefore(button, metrics);
    button->SetPosSizePixel({left, top}, sizeOf(button));
    left += sizeOf(button).width;
    button->ChangeGetFocusHdl([this](SV::Control * control) { GetFocusHdl(control); });
    if (button != helpButton.get())
      button->ChangeClickHdl([this](SV::PushButton * pressed) { ClickHdl(pressed); });
    button->Show();
  }
  if (helpButton && Application::GetHelp() == nullptr)
    helpButton->Disable();
}

std::vector<SV::PushButton *> KivErrorBox::buttonRow() const {
  std::vector<SV::PushButton *> row{okButton.get(),    yesButton.get(),    noButton.get(),
                                    retryButton.get(), cancelButton.get(), helpButton.get()};
  std::erase(row, nullptr);
  return row;
}

SV::PushButton * KivErrorBox::buttonOf(unsigned long number) const {
  switch (number) {
  case SV::RET_CANCEL: return cancelButton.get();
  case SV::RET_OK: return okButton.get();
  case SV::RET_YES: return yesButton.get();
  case SV::RET_NO: return noButton.get();
  case SV::RET_RETRY: return retryButton.get();
  default: return nullptr;
  }
}

void KivErrorBox::SetIconStyle(SV::IconStyle iconStyle) { icon.ChangeIcon(iconStyle); }

void KivErrorBox::SetButtonText(unsigned long button, String const & label) {
  if (SV::PushButton * const wanted = buttonOf(button))
    wanted->SetText(label);
}

void KivErrorBox::DisableButton(unsigned long button) {
  if (SV::PushButton * const wanted = buttonOf(button))
    wanted->Disable();
}

void KivErrorBox::ClickHdl(SV::PushButton * button) {
  for (long const result : {SV::RET_CANCEL, SV::RET_OK, SV::RET_YES, SV::RET_NO, SV::RET_RETRY})
    if (button != nullptr && button == buttonOf(static_cast<unsigned long>(result))) {
      EndDialog(result);
      return;
    }
  KIV_ASSERT_AT(button != nullptr && button == helpButton.get(), "button", "A button of another box was pressed.",
                kivara::modules::kAebox, kLineUnknownButton);
}

void KivErrorBox::GetFocusHdl(SV::Control * control) { focusControl = control; }

SV::Control * KivErrorBox::GetPrevFocusCtrl() { return enabledFrom(-1); }

SV::Control * KivErrorBox::GetNextFocusCtrl() { return enabledFrom(1); }

SV::Control * KivErrorBox::enabledFrom(long step) {
  std::vector<SV::PushButton *> const row = buttonRow();
  auto const count = static_cast<long>(row.size());
  if (count == 0)
    return nullptr;
  auto const place = std::find(row.begin(), row.end(), focusControl);
  // As long as no button has had the keyboard, the walk begins with the first button, or backwards with the last one.
  long at = place != row.end() ? static_cast<long>(place - row.begin()) : (step > 0 ? -1 : count);
  for (long walked = 0; walked < count; ++walked) {
    at = (at + step + count) % count;
    if (row[static_cast<std::size_t>(at)]->IsEnabled())
      break;
  }
  return row[static_cast<std::size_t>(at)];
}

long KivErrorBox::AccelHandler(SV::Accelerator * accelerator) {
  unsigned short const item = accelerator->GetCurItemId();
  SV::Control * control = nullptr;
  if (item == 1)
    control = GetPrevFocusCtrl();
  else if (item == 2)
    control = GetNextFocusCtrl();
  if (control != nullptr && control->IsEnabled())
    control->GrabFocus();
  return -1;
}

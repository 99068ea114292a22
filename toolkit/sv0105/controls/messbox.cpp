#include "sv/messbox.hpp"

#include "controls/dialogunits.hpp"
#include "controls/label.hpp"
#include "handles/handle.hpp"
#include "sv/waitpause.hpp"

#include <algorithm>

namespace SV {
namespace {

struct ButtonRow {
  WinBits style;
  std::vector<long> results; ///< from left to right
};

std::vector<long> buttonsOf(WinBits style) {
  static ButtonRow const rows[] = {{WB_OK, {RET_OK}},
                                   {WB_OK_CANCEL, {RET_OK, RET_CANCEL}},
                                   {WB_YES_NO, {RET_YES, RET_NO}},
                                   {WB_YES_NO_CANCEL, {RET_YES, RET_NO, RET_CANCEL}},
                                   {WB_RETRY_CANCEL, {RET_RETRY, RET_CANCEL}}};
  for (ButtonRow const & row : rows)
    if (style & row.style)
      return row.results;
  return {RET_OK};
}

WinBits defaultBitOf(long result) {
  switch (result) {
  case RET_OK: return WB_DEF_OK;
  case RET_CANCEL: return WB_DEF_CANCEL;
  case RET_RETRY: return WB_DEF_RETRY;
  case RET_YES: return WB_DEF_YES;
  default: return WB_DEF_NO;
  }
}

long defaultOf(std::vector<long> const & results, WinBits style) {
  auto const wanted =
      std::find_if(results.begin(), results.end(), [&](long result) { return (style & defaultBitOf(result)) != 0; });
  return wanted != results.end() ? *wanted : results.front();
}

String ownLabel(long result) {
  bool const isGerman = PRIMARYLANGID(GetUserDefaultLangID()) == LANG_GERMAN;
  switch (result) {
  case RET_YES: return isGerman ? "~Ja" : "~Yes";
  case RET_NO: return isGerman ? "~Nein" : "~No";
  default: return isGerman ? "~Wiederholen" : "~Retry";
  }
}

std::unique_ptr<PushButton> makeButton(Window * box, long result, WinBits style) {
  if (result == RET_OK)
    return std::make_unique<OKButton>(box, style);
  if (result == RET_CANCEL)
    return std::make_unique<CancelButton>(box, style);
  auto button = std::make_unique<PushButton>(box, style);
  button->SetText(ownLabel(result));
  return button;
}

/// What can be shown in a reasonable time, without half a character at its end.
String shownText(String const & text) {
  constexpr int kMost = 8192;
  if (text.Len() <= kMost)
    return text;
  int length = 0;
  for (int next = 0; next <= kMost; next += IsDBCSLeadByte(static_cast<BYTE>(text.charAt(length))) ? 2 : 1)
    length = next;
  return text.substr(0, length) + "...";
}

/// The room for a text that is broken at \p width.
Size brokenSize(HFONT font, String const & text, long width) {
  handles::ScreenDevice const screen(GetDC(nullptr));
  HGDIOBJ const former = SelectObject(screen.get(), font);
  RECT area = {0, 0, width, 0};
  DrawTextA(screen.get(), text.c_str(), -1, &area, DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX);
  SelectObject(screen.get(), former);
  return {area.right, area.bottom};
}

} // namespace

MessBox::MessBox(Window * parent, WinBits style, String const & text, IconStyle icon)
    : ModalDialog(parent), iconStyle_(icon), icon_(this), text_(this, WB_MULTILINE) {
  Window const * const titled = Application::GetAppWindow() ? Application::GetAppWindow() : parent;
  if (titled)
    Window::SetText(titled->GetText());
  icon_.ChangeIcon(icon);
  addButtons(style);
  SetMessText(text);
}

MessBox::MessBox(Window * parent, WinBits style, String const & text) : MessBox(parent, style, text, ICON_STYLE_NONE) {}

MessBox::MessBox(Window * parent, ResId const & id) : MessBox(parent, WB_OK, Resource::LoadString(id)) {}

MessBox::~MessBox() {
  Window::Destroy(); // with all controls at once, which takes the system less than one after the other
}

void MessBox::addButtons(WinBits style) {
  std::vector<long> const results = buttonsOf(style);
  long const standard = defaultOf(results, style);
  for (long const result : results) {
    buttons_.push_back({result, makeButton(this, result, result == standard ? WB_DEFAULT_BUTTON : 0)});
    PushButton & button = *buttons_.back().button;
    button.ChangeClickHdl([this, result](PushButton *) { EndDialog(result); });
    button.Show();
  }
}

void MessBox::SetMessText(String const & text) {
  messText_ = text;
  text_.SetText(detail::literalLabel(shownText(text)));
}

void MessBox::SetButtonText(long button, String const & text) {
  for (Button const & each : buttons_)
    if (each.result == button)
      each.button->SetText(text);
}

void MessBox::arrange() {
  auto const font = reinterpret_cast<HFONT>(SendMessageA(GethWnd(), WM_GETFONT, 0, 0));
  Size const margin = detail::pixelsOfUnits(font, {7, 7});
  Size const button = detail::pixelsOfUnits(font, {50, 14});
  bool const hasIcon = iconStyle_ != ICON_STYLE_NONE;
  Size const icon = hasIcon ? Size{GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON)} : Size();
  long const textLeft = margin.width + (hasIcon ? icon.width + margin.width : 0);
  Size text = brokenSize(font, shownText(messText_), GetSystemMetrics(SM_CXSCREEN) * 3L / 4);
  // In some sizes lines are drawn a fiftieth wider than they are measured, and their last letter would be cut off.
  text.width += text.width / 32;
  text.height = std::min(text.height, GetSystemMetrics(SM_CYSCREEN) * 3L / 4);
  auto const count = static_cast<long>(buttons_.size());
  long const rowWidth = count * button.width + (count - 1) * margin.width;
  long const inner = std::max(textLeft - margin.width + text.width, rowWidth);
  long const textHeight = std::max(text.height, icon.height);
  Size const area{inner + 2 * margin.width, textHeight + button.height + 3 * margin.height};
  if (hasIcon) {
    icon_.SetPosSizePixel({margin.width, margin.height}, icon);
    icon_.Show();
  }
  // A short text stands beside the middle of the icon.
  text_.SetPosSizePixel({textLeft, margin.height + (textHeight - text.height) / 2}, text);
  text_.Show();
  arrangeButtons(area, textHeight + 2 * margin.height, button, margin.width);
  ChangeOutputSizePixel(area);
}

void MessBox::arrangeButtons(Size const & area, long top, Size const & size, long gap) {
  auto const count = static_cast<long>(buttons_.size());
  long left = (area.width - count * size.width - (count - 1) * gap) / 2;
  for (Button const & each : buttons_) {
    each.button->SetPosSizePixel({left, top}, size);
    left += size.width + gap;
  }
}

long MessBox::Execute() {
  if (Application::IsModalDialogSuppression() || Application::IsShowWindowSuppression()) {
    Application::ModalDialogSuppressionLog((GetText() + "\n" + messText_).c_str());
    return RET_CANCEL;
  }
  if (!GethWnd())
    return RET_CANCEL;
  WaitPause const pause;
  arrange();
  // Whatever its place in the row, Return and the keyboard begin with the default button.
  for (Button const & each : buttons_)
    if (SendMessageA(GethWnd(), DM_GETDEFID, 0, 0) == MAKELONG(GetDlgCtrlID(each.button->GethWnd()), DC_HASDEFID))
      each.button->GrabFocus();
  Application::Beep(iconStyle_);
  return ModalDialog::Execute();
}

InfoBox::InfoBox(Window * parent, String const & text) : MessBox(parent, WB_OK, text, ICON_STYLE_INFO) {}

InfoBox::InfoBox(Window * parent, ResId const & id) : InfoBox(parent, Resource::LoadString(id)) {}

QueryBox::QueryBox(Window * parent, WinBits style, String const & text)
    : MessBox(parent, style, text, ICON_STYLE_QUERY) {}

QueryBox::QueryBox(Window * parent, ResId const & id) : QueryBox(parent, WB_YES_NO, Resource::LoadString(id)) {}

WarningBox::WarningBox(Window * parent, WinBits style, String const & text)
    : MessBox(parent, style, text, ICON_STYLE_WARNING) {}

WarningBox::WarningBox(Window * parent, ResId const & id) : WarningBox(parent, WB_OK, Resource::LoadString(id)) {}

} // namespace SV

#include "sv0105/controls/dialogtest.hpp"

#include "support/data/files.hpp"

namespace {

class FixedTest : public svtest::DialogTest {
protected:
  static std::string systemText(SV::Window const & window) {
    char text[64] = "";
    GetWindowTextA(window.GethWnd(), text, sizeof text);
    return text;
  }

  static COLORREF pixelOf(SV::Window const & window, int x, int y) {
    HDC const device = GetDC(window.GethWnd());
    COLORREF const color = GetPixel(device, x, y);
    ReleaseDC(window.GethWnd(), device);
    return color;
  }

  SV::Dialog dialog{nullptr};
};

TEST_F(FixedTest, LabelHasABorderIfItIsAskedFor) {
  SV::FixedText const framed(&dialog, SV::WB_BORDER);
  SV::FixedText const plain(&dialog);
  EXPECT_NE(GetWindowLongA(framed.GethWnd(), GWL_STYLE) & WS_BORDER, 0);
  EXPECT_EQ(GetWindowLongA(plain.GethWnd(), GWL_STYLE) & WS_BORDER, 0);
}

/// Asks for its text while the system's window is given it.
class AsksForItsText : public SV::FixedText {
public:
  using FixedText::FixedText;

  long long HandleMessage(unsigned message, unsigned long long wParam, long long lParam) override {
    if (message == WM_SETTEXT)
      seen = GetText().c_str();
    return FixedText::HandleMessage(message, wParam, lParam);
  }

  std::string seen;
};

TEST_F(FixedTest, LabelHasItsNewTextWhenItsWindowIsGivenIt) {
  AsksForItsText label(&dialog);
  label.SetText("~Name");
  EXPECT_EQ(label.seen, "~Name");
}

TEST_F(FixedTest, LabelMarksItsMnemonicByATilde) {
  struct {
    char const * text;
    char const * shown;
  } const rows[] = {{"~Name", "&Name"},
                    {"This & that", "This && that"},
                    {"~~Name", "~Name"},
                    {"A~~~B", "A~&B"},
                    {"End~", "End~"},
                    {"~A~B", "&A~B"},
                    {"", ""},
                    {"M\xFCller", "M\xFCller"}};
  SV::FixedText label(&dialog);
  for (auto const & row : rows) {
    label.SetText(row.text);
    EXPECT_EQ(systemText(label), row.shown);
    EXPECT_STREQ(label.GetText().c_str(), row.text) << "as it was set";
  }
}

TEST_F(FixedTest, LabelTakesAVeryLongText) {
  SV::FixedText label(&dialog, SV::WB_MULTILINE);
  std::string const text(1'000'000, 'x');
  label.SetText(text.c_str());
  EXPECT_EQ(textOf(label.GetText()), text);
  EXPECT_EQ(GetWindowTextLengthA(label.GethWnd()), 1'000'000);
}

TEST_F(FixedTest, LabelOfAControlComesRightBeforeIt) {
  SV::FixedText label(&dialog);
  SV::MetricField field(&dialog);
  EXPECT_EQ(GetWindow(field.GethWnd(), GW_HWNDPREV), label.GethWnd()) << "a screen reader takes its name from there";
}

TEST_F(FixedTest, MnemonicOfALabelLeadsToTheControlAfterIt) {
  SV::PushButton first(&dialog);
  SV::FixedText label(&dialog);
  SV::MetricField field(&dialog);
  label.SetText("~Day");
  for (SV::Control * control : std::initializer_list<SV::Control *>{&first, &label, &field}) {
    control->SetPosSizePixel({0, 0}, {40, 20});
    control->Show();
  }
  dialog.Show();
  script->mnemonic('d').then([&] { EXPECT_EQ(GetFocus(), field.GethWnd()); });
  play();
}

TEST_F(FixedTest, IconHasTheSizeThatItIsGivenOnTheBackgroundThatItIsGiven) {
  dialog.SetPosSizePixel({100, 100}, {200, 150});
  SetWindowPos(dialog.GethWnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  SV::FixedIcon icon(&dialog);
  icon.ChangeBackgroundBrush(SV::Brush(SV::COL_LIGHTGREEN));
  EXPECT_TRUE(icon.ChangeIcon(SV::IconStyle(3)).IsEmpty());
  EXPECT_FALSE(icon.GetIcon().IsEmpty());
  icon.SetPosSizePixel({10, 10}, {32, 32});
  icon.Show();
  dialog.Show();
  icon.Update();
  EXPECT_EQ(icon.GetSizePixel(), (SV::Size{32, 32}));
  EXPECT_EQ(pixelOf(icon, 0, 0), 0x00FF00u);
  EXPECT_NE(pixelOf(icon, 16, 16), 0x00FF00u) << "the error icon is drawn in the middle";
  EXPECT_FALSE(icon.ChangeIcon(SV::ICON_STYLE_NONE).IsEmpty());
  icon.Update();
  EXPECT_EQ(pixelOf(icon, 16, 16), 0x00FF00u);
}

TEST_F(FixedTest, ControlFromAResourceLiesWhereItsRecordSays) {
  SV::ResMgr manager((support::binFolder() + "testres\\first72.dll").c_str());
  SV::Application::ChangeAppFont(SV::Font("Arial", {0, 20}));
  SV::Control const control(&dialog, SV::ResId(17, &manager));
  auto const units = [&](long width, long height) {
    RECT rect = {0, 0, 4, 8}; // one character
    HDC const device = GetDC(control.GethWnd());
    HGDIOBJ const former =
        SelectObject(device, reinterpret_cast<HFONT>(SendMessageA(control.GethWnd(), WM_GETFONT, 0, 0)));
    SIZE letters = {};
    TEXTMETRICA metrics = {};
    GetTextExtentPoint32A(device, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", 52, &letters);
    GetTextMetricsA(device, &metrics);
    SelectObject(device, former);
    ReleaseDC(control.GethWnd(), device);
    rect.right = (letters.cx / 26 + 1) / 2;
    rect.bottom = metrics.tmHeight;
    return SV::Size{MulDiv(width, rect.right, 4), MulDiv(height, rect.bottom, 8)};
  };
  EXPECT_EQ(control.GetPosPixel(), (SV::Point{units(8, 16).width, units(8, 16).height}));
  EXPECT_EQ(control.GetSizePixel(), units(60, 24));
  EXPECT_TRUE(application.exceptions.empty());
  SV::Control const cut(&dialog, SV::ResId(18, &manager));
  EXPECT_EQ(application.exceptions.size(), 1u) << "a record that is too short is none";
}

TEST_F(FixedTest, ControlOfAMissingResourceRaisesAnExceptionAndHasNoSize) {
  SV::Control const control(&dialog, SV::ResId(4242));
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, 0x100);
  EXPECT_EQ(application.exceptions[0].arg, 4242u);
  EXPECT_EQ(control.GetSizePixel(), (SV::Size{0, 0}));
}

} // namespace

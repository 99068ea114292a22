#pragma once
/// \file
/// A day and a month in a dialog that runs.

#include "adaymon.hpp"

#include "support/data/files.hpp"
#include "sv0105/controls/dialogtest.hpp"

#include <memory>
#include <string>
#include <vector>

namespace kivtest {

/// A control whose protected operations can be called, and that counts its own Resize.
class DayMonth : public KivDayMonthControl {
public:
  using KivDayMonthControl::KivDayMonthControl;
  using KivDayMonthControl::MonthSelectHdl;

  void Resize() override {
    ++resizes;
    KivDayMonthControl::Resize();
  }
  using KivDayMonthControl::Resize;

  int resizes = 0;
};

inline constexpr int kFieldWidth = 30;
inline constexpr int kListWidth = 60;

/// A dialog as a program writes it: a label, the control, OK.
class StartDialog : public SV::ModalDialog {
public:
  explicit StartDialog(SV::ResId const & record)
      : ModalDialog(nullptr), label(this), start(this, record, kFieldWidth, kListWidth), ok(this) {
    // Away from the mouse, which an open list follows.
    POINT mouse = {};
    GetCursorPos(&mouse);
    SetPosSizePixel({mouse.x < 500 ? 600 : 10, 10}, {400, 300});
    label.SetText("~Start:");
    label.SetPosSizePixel({5, 5}, {100, 15});
    ok.SetPosSizePixel({5, 250}, {80, 24});
    label.Show();
    ok.Show();
  }

  SV::FixedText label;
  DayMonth start;
  SV::OKButton ok;
};

class DayMonthTest : public svtest::DialogTest {
protected:
  explicit DayMonthTest(char const * language = "2057")
      : pack((support::binFolder() + "language\\" + language + "\\kivara72.dll").c_str()) {
    SV::Resource::SetResManager(&pack);
    dialog = std::make_unique<StartDialog>(SV::ResId(17, &records));
  }
  ~DayMonthTest() override {
    dialog.reset();
    SV::Resource::SetResManager(nullptr);
  }

  DayMonth & start() const { return dialog->start; }

  HWND child(char const * className) const { return FindWindowExA(dialog->GethWnd(), nullptr, className, nullptr); }
  HWND field() const { return child("Edit"); }
  HWND list() const { return child("ComboBox"); }
  HWND spin() const { return FindWindowExA(field(), nullptr, "msctls_updown32", nullptr); }

  std::string fieldText() const {
    char text[64] = {};
    GetWindowTextA(field(), text, sizeof text);
    return text;
  }

  std::vector<std::string> listTexts() const {
    std::vector<std::string> texts;
    for (WPARAM i = 0; i < static_cast<WPARAM>(SendMessageA(list(), CB_GETCOUNT, 0, 0)); ++i) {
      char text[64] = {};
      SendMessageA(list(), CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
      texts.emplace_back(text);
    }
    return texts;
  }

  RECT placeOf(HWND window) const {
    RECT place = {};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, dialog->GethWnd(), reinterpret_cast<POINT *>(&place), 2);
    return place;
  }

  SV::Size pixels(long width, long height) const {
    return dialog->LogicToPixel(SV::Size{width, height}, SV::MAP_APPFONT);
  }

  /// Steps up far beyond every limit; where that ends.
  int lastStep() {
    start().SetDay(27);
    for (int i = 0; i < 10; ++i)
      SendMessageA(field(), WM_KEYDOWN, VK_UP, 1);
    return start().GetDay();
  }

  /// Does what has been given in the dialog, which then ends.
  void run() {
    script->then([this] { dialog->EndDialog(1); });
    EXPECT_EQ(dialog->Execute(), 1);
  }

  void typeDay(char const * text) {
    script->then([this, text] {
      SetFocus(field());
      SendMessageA(field(), EM_SETSEL, 0, -1);
      for (char const * c = text; *c != '\0'; ++c)
        PostMessageA(field(), WM_CHAR, static_cast<WPARAM>(static_cast<unsigned char>(*c)), 1);
    });
  }

  void pressSpin(bool up) {
    script->then([this, up] {
      RECT area = {};
      GetClientRect(spin(), &area);
      LPARAM const place = MAKELPARAM(area.right / 2, up ? area.bottom / 4 : area.bottom * 3 / 4);
      PostMessageA(spin(), WM_LBUTTONDOWN, MK_LBUTTON, place);
      PostMessageA(spin(), WM_LBUTTONUP, 0, place);
    });
  }

  SV::ResMgr records{(support::binFolder() + "testres\\records72.dll").c_str()};
  SV::ResMgr pack;
  std::unique_ptr<StartDialog> dialog;
};

} // namespace kivtest

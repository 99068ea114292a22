// An error box of 2 kB in lines of 200 characters, from its construction over its first picture to its end, beside a dialog of
// the system with the same controls, texts and places. Neither waits for an answer.

#include "aebox.hpp"
#include "support/ratio.hpp"
#include "sv/application.hpp"
#include "sv/resource.hpp"
#include "tools/winapi.hpp"

#include <memory>
#include <string>
#include <vector>

namespace {

SV::String sampleText() {
  std::string text;
  for (int line = 0; line < 10; ++line) {
    std::string const start = "Line " + std::to_string(line) + " of the message:";
    text += start;
    for (std::size_t length = start.size(); length + 5 <= 200; length += 5)
      text += " word";
    text += '\n';
  }
  return text.c_str();
}

struct Part {
  std::string className;
  std::string text;
  DWORD style;
  RECT place;
};

/// The box as it was laid out, to be made again with the system's own means.
struct Blueprint {
  explicit Blueprint(HWND box) : style(static_cast<DWORD>(GetWindowLongPtrA(box, GWL_STYLE)) & ~WS_VISIBLE) {
    GetWindowRect(box, &place);
    font = reinterpret_cast<HFONT>(SendMessageA(box, WM_GETFONT, 0, 0));
    LOGFONTA description = {};
    GetObjectA(font, sizeof description, &description);
    font = CreateFontIndirectA(&description);
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
      char className[64] = "";
      GetClassNameA(child, className, sizeof className);
      std::string text(static_cast<std::size_t>(GetWindowTextLengthA(child)) + 1, '\0');
      GetWindowTextA(child, text.data(), static_cast<int>(text.size()));
      RECT part = {};
      GetWindowRect(child, &part);
      MapWindowPoints(nullptr, box, reinterpret_cast<POINT *>(&part), 2);
      parts.push_back({className, text, static_cast<DWORD>(GetWindowLongPtrA(child, GWL_STYLE)) | WS_VISIBLE, part});
    }
  }

  DWORD style;
  RECT place;
  HFONT font;
  std::vector<Part> parts;
};

INT_PTR CALLBACK dialogProcedure(HWND dialog, UINT message, WPARAM, LPARAM lParam) {
  if (message != WM_DRAWITEM)
    return FALSE;
  auto const & draw = *reinterpret_cast<DRAWITEMSTRUCT const *>(lParam);
  FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_3DFACE));
  DrawIcon(draw.hDC, 0, 0, LoadIconA(nullptr, IDI_HAND));
  static_cast<void>(dialog);
  return TRUE;
}

class Boxes {
public:
  Boxes() : toolkit_(isToolkitUp()), manager_("language\\2057\\kivara72.dll"), text_(sampleText()) {
    SV::Resource::SetResManager(&manager_);
    KivErrorBox box(nullptr, KivErrorBox::WB_YES_NO, text_);
    box.Show();
    blueprint_ = std::make_unique<Blueprint>(box.GethWnd());
  }

  void ours(benchmark::State & state, bool isShown) const {
    for (auto _ : state) {
      KivErrorBox box(nullptr, KivErrorBox::WB_YES_NO, text_);
      if (isShown) {
        box.Show();
        box.Update();
        box.Hide(); // as Execute does, so that the controls do not go one by one before the user's eyes
      }
    }
  }

  void bare(benchmark::State & state, bool isShown) const {
    for (auto _ : state) {
      HWND const dialog = makeBareDialog();
      if (isShown) {
        ShowWindow(dialog, SW_SHOW);
        // As the system does for a dialog whose controls come out of a resource.
        SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetNextDlgTabItem(dialog, nullptr, FALSE)), TRUE);
        UpdateWindow(dialog);
      }
      DestroyWindow(dialog);
    }
  }

private:
  static bool isToolkitUp() {
    SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWNORMAL);
    return SV::InitSV(0, nullptr);
  }

  HWND makeBareDialog() const {
    struct {
      alignas(DWORD) DLGTEMPLATE header = {};
      WORD menuClassTitle[3] = {};
    } empty;
    empty.header.style = blueprint_->style & ~static_cast<DWORD>(DS_SETFONT);
    HWND const dialog =
        CreateDialogIndirectParamA(GetModuleHandleA(nullptr), &empty.header, nullptr, dialogProcedure, 0);
    RECT const & place = blueprint_->place;
    SetWindowTextA(dialog, "KIVARA");
    SetWindowPos(dialog, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER);
    for (Part const & part : blueprint_->parts) {
      HWND const child = CreateWindowExA(0, part.className.c_str(), part.text.c_str(), part.style, part.place.left,
                                         part.place.top, part.place.right - part.place.left,
                                         part.place.bottom - part.place.top, dialog, nullptr, nullptr, nullptr);
      SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(blueprint_->font), FALSE);
    }
    return dialog;
  }

  bool toolkit_;
  SV::ResMgr manager_;
  SV::String text_;
  std::unique_ptr<Blueprint const> blueprint_;
};

Boxes const & boxes() {
  static Boxes const & all = *new Boxes; // the toolkit ends with the process
  return all;
}

bench::Pair const shown{"Error box of 2 kB, shown", bench::atMost(1.5),
                        [](benchmark::State & state) { boxes().ours(state, true); }, "bare dialog",
                        [](benchmark::State & state) { boxes().bare(state, true); }};

bench::Pair const built{"Error box of 2 kB, not shown", bench::shown(),
                        [](benchmark::State & state) { boxes().ours(state, false); }, "bare dialog",
                        [](benchmark::State & state) { boxes().bare(state, false); }};

} // namespace

#include "frame/box_watch.hpp"

#include <algorithm>
#include <cstring>

namespace kivtest {
namespace {

BoxWatch * watch = nullptr;

constexpr int kTextControl = 0xFFFF;

std::string textOf(HWND window) {
  char text[2048] = "";
  GetWindowTextA(window, text, sizeof text);
  return text;
}

BOOL CALLBACK findBox(HWND window, LPARAM found) {
  char name[16] = "";
  GetClassNameA(window, name, sizeof name);
  if (std::strcmp(name, "#32770") != 0 || !IsWindowVisible(window))
    return TRUE;
  *reinterpret_cast<HWND *>(found) = window;
  return FALSE;
}

} // namespace

BoxWatch::BoxWatch(std::vector<int> buttons) : buttons_(std::move(buttons)) {
  watch = this;
  timer_ = SetTimer(nullptr, 0, 20, onTimer);
}

BoxWatch::~BoxWatch() {
  KillTimer(nullptr, timer_);
  watch = nullptr;
}

void CALLBACK BoxWatch::onTimer(HWND, UINT, UINT_PTR, DWORD) {
  HWND box = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), findBox, reinterpret_cast<LPARAM>(&box));
  if (watch != nullptr && box != nullptr && box != watch->answered_)
    watch->answer(box);
}

void BoxWatch::answer(HWND box) {
  answered_ = box;
  boxes_.push_back({textOf(box), textOf(GetDlgItem(box, kTextControl)), GetWindow(box, GW_OWNER),
                    static_cast<long>(GetWindowLongA(box, GWL_STYLE))});
  if (whileOpen)
    whileOpen();
  std::size_t const next = std::min(boxes_.size(), buttons_.size()) - 1;
  PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(buttons_[next]), 0);
}

} // namespace kivtest

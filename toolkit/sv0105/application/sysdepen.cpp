#include "sv/sysdepen.hpp"

#include "application/hook.hpp"
#include "application/toolkit.hpp"

#include <utility>

namespace SV {

HINSTANCE Sysdepen::GethInst() { return detail::toolkit().instance; }

unsigned long Sysdepen::GetThreadId() { return detail::toolkit().threadId; }

int Sysdepen::GetShowCommand() { return detail::toolkit().showCommand; }

MessageHook Sysdepen::GetHook() { return detail::toolkit().hook; }

MessageHook Sysdepen::ChangeHook(MessageHook hook) { return std::exchange(detail::toolkit().hook, hook); }

namespace detail {

bool askHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT & result) {
  MessageHook const hook = toolkit().hook;
  long long answer = 0;
  if (!hook || hook(window, message, wParam, lParam, answer) == 0)
    return false;
  result = answer;
  return true;
}

} // namespace detail

} // namespace SV

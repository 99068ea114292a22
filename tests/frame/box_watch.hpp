#pragma once
/// \file
/// Message boxes of the test's own thread: looked at and answered while they wait.

#include "tools/winapi.hpp"

#include <functional>
#include <string>
#include <vector>

namespace kivtest {

/// One box as the user saw it.
struct SeenBox {
  std::string title;
  std::string text;
  HWND owner;
  long style;
};

/// While it lives, each message box that this thread shows is recorded and then answered with the next of the buttons;
/// when these run out, with the last. The boxes' own message loops drive it. One at a time.
class BoxWatch {
public:
  explicit BoxWatch(std::vector<int> buttons = {IDOK});
  BoxWatch(BoxWatch const &) = delete;
  BoxWatch & operator=(BoxWatch const &) = delete;
  ~BoxWatch();

  /// Called while a box is open, before it is answered.
  std::function<void()> whileOpen;

  std::vector<SeenBox> const & boxes() const { return boxes_; }

private:
  static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD);
  void answer(HWND box);

  std::vector<int> buttons_;
  std::vector<SeenBox> boxes_;
  HWND answered_ = nullptr;
  UINT_PTR timer_;
};

} // namespace kivtest

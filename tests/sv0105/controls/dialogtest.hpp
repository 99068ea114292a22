#pragma once
/// \file
/// Dialogs that run: what the user does is given before, step by step.

#include "sv0105/application/testapplication.hpp"
#include "sv0105/input.hpp"

#include <deque>
#include <memory>

namespace svtest {

/// Carries out what it has been given, one after the other, each after the messages of the one before have been dealt with.
/// The event loop that runs then drives it.
class Script {
public:
  Script() {
    timer_.ChangeTimeoutHdl([this](SV::Timer *) { next(); });
  }

  Script & then(std::function<void()> step) {
    steps_.push_back(std::move(step));
    timer_.Start(kPause);
    return *this;
  }
  Script & key(WPARAM key) {
    return then([key] { postKey(key); });
  }
  Script & mnemonic(char letter) {
    return then([letter] { postMnemonic(letter); });
  }
  bool isDone() const { return steps_.empty(); }

private:
  static constexpr unsigned long kPause = 20;
  static constexpr int kPatience = 100; ///< pauses until the display has given the keyboard to a new window

  void next() {
    if (steps_.empty()) {
      timer_.Stop();
      return;
    }
    if (GetActiveWindow() && !GetFocus() && ++waits_ < kPatience)
      return;
    waits_ = 0;
    std::function<void()> const step = steps_.front();
    steps_.pop_front();
    step();
  }

  std::deque<std::function<void()>> steps_;
  int waits_ = 0;
  SV::Timer timer_;
};

/// A dialog as a program writes it: two buttons of its own, OK as the default button, Cancel.
class Question : public SV::ModalDialog {
public:
  explicit Question(Window * parent, SV::WinBits style = SV::WB_DIALOG) : ModalDialog(parent, style) {
    SetText("Question");
    ChangeOutputSizePixel({300, 60});
    SV::Control * const controls[] = {&first, &second, &ok, &cancel};
    for (long i = 0; i < 4; ++i) {
      controls[i]->SetPosSizePixel({10 + 70 * i, 20}, {60, 25});
      controls[i]->Show();
    }
    first.SetText("~First");
    second.SetText("~Second");
    first.ChangeClickHdl([this](SV::PushButton *) { ++firstClicks; });
    second.ChangeClickHdl([this](SV::PushButton *) { EndDialog(22); });
  }

  SV::PushButton first{this};
  SV::PushButton second{this};
  SV::OKButton ok{this};
  SV::CancelButton cancel{this};
  int firstClicks = 0;
};

class DialogTest : public ToolkitTest {
protected:
  void SetUp() override { script = std::make_unique<Script>(); }
  void TearDown() override { EXPECT_TRUE(script->isDone()) << "the dialog has ended before"; }

  /// Does what has been given while no dialog runs.
  void play() {
    script->then([] { Application::Quit(); });
    Application::Execute();
  }

  using Application = SV::Application;

  std::unique_ptr<Script> script;
};

} // namespace svtest

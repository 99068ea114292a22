// Message boxes, closed by a thread that stands for the user.

#include "../activity.hpp"

#include "aebox.hpp"
#include "support/windows/windows.hpp"
#include "sv/application.hpp"
#include "tools/winapi.hpp"

#include <atomic>
#include <thread>

namespace endurance {
namespace {

/// Presses OK in each box of this process while one is open.
class User {
public:
  User() : thread_([this] { watch(); }) {}
  User(User const &) = delete;
  User & operator=(User const &) = delete;
  ~User() {
    isGone_ = true;
    thread_.join();
  }
  std::atomic<bool> isAsked = false;

private:
  void watch() {
    for (; !isGone_; support::pause(0.02))
      if (isAsked)
        for (HWND const window : support::findWindows({.processId = GetCurrentProcessId()}))
          support::pressButton(window, "OK");
  }

  std::atomic<bool> isGone_ = false;
  std::thread thread_;
};

class Boxes : public Activity {
public:
  ~Boxes() override { KivErrorBox::ClearShownErrorBoxesTable(); }

  bool round() override {
    SV::Window * const parent = SV::Application::GetAppWindow();
    user_.isAsked = true;
    bool isRight = false;
    switch (++count_ % 4) {
    case 0: isRight = KivInfoBox(parent, "All is well.").Execute() == SV::RET_OK; break;
    case 1: isRight = KivQueryBox(parent, SV::WB_OK_CANCEL, "Go on?").Execute() == SV::RET_OK; break;
    case 2: isRight = KivWarningBox(parent, SV::WB_OK, "Look out.").Execute() == SV::RET_OK; break;
    default: isRight = showError(parent); break;
    }
    user_.isAsked = false;
    expect(isRight, "a box has given another answer");
    return true;
  }

private:
  static bool showError(SV::Window * parent) {
    static constexpr char kText[] = "[aebox-01]\nThe file is damaged.";
    KivErrorBox::ClearShownErrorBoxesTable();
    return KivErrorBox(parent, KivErrorBox::WB_OK, kText).Execute(ShowOncePerKey) == 1 &&
           KivErrorBox(parent, KivErrorBox::WB_OK, kText).Execute(ShowOncePerKey) == KivErrorBox::kAlreadyShown;
  }

  User user_;
  int count_ = 0;
};

} // namespace

ActivityPtr showBoxes(Place const &) { return std::make_unique<Boxes>(); }

} // namespace endurance

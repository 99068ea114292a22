#pragma once
/// \file
/// Boxes of the library that run, looked at from outside.

#include "aebox.hpp"
#include "awinstack.hpp"
#include "support/data/files.hpp"
#include "sv0105/controls/dialogtest.hpp"

#include <memory>
#include <string>
#include <vector>

namespace boxtest {

/// A box whose protected operations can be called.
class Box : public KivErrorBox {
public:
  using KivErrorBox::AccelHandler;
  using KivErrorBox::ClickHdl;
  using KivErrorBox::GetFocusHdl;
  using KivErrorBox::GetNextFocusCtrl;
  using KivErrorBox::GetPrevFocusCtrl;
  using KivErrorBox::KivErrorBox;
};

class CountingHelp : public SV::Help {
public:
  bool Start(unsigned long topic) override {
    topics.push_back(topic);
    return true;
  }
  std::vector<unsigned long> topics;
};

inline std::vector<HWND> childrenOf(HWND box) {
  std::vector<HWND> all;
  for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
    all.push_back(child);
  return all;
}

inline std::string systemText(HWND window) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

/// The controls of an error box, as the system has them.
struct Parts {
  explicit Parts(SV::Window const & box) {
    std::vector<HWND> const all = childrenOf(box.GethWnd());
    icon = all.at(0);
    text = all.at(1);
    buttons.assign(all.begin() + 2, all.end());
  }

  std::vector<std::string> labels() const {
    std::vector<std::string> result;
    for (HWND const button : buttons)
      result.push_back(systemText(button));
    return result;
  }

  HWND icon;
  HWND text;
  std::vector<HWND> buttons;
};

/// With the English texts of the library.
class BoxTest : public svtest::DialogTest {
protected:
  BoxTest() { SV::Resource::SetResManager(&manager); }
  ~BoxTest() override {
    KivErrorBox::ClearShownErrorBoxesTable();
    SV::Resource::SetResManager(nullptr);
  }

  /// Shows a box and presses the button of that place, or Escape for -1.
  long answer(KivErrorBox & box, KivErrorBoxType type, int button) {
    script->then([&box, button] {
      if (button < 0)
        svtest::postKey(VK_ESCAPE);
      else
        svtest::postClick(Parts(box).buttons.at(static_cast<std::size_t>(button)));
    });
    return box.Execute(type);
  }

  SV::ResMgr manager{(support::binFolder() + "language\\2057\\kivara72.dll").c_str()};
};

inline constexpr unsigned long kStyles[] = {KivErrorBox::WB_OK, KivErrorBox::WB_OK_CANCEL, KivErrorBox::WB_YES_NO,
                                            KivErrorBox::WB_YES_NO_CANCEL, KivErrorBox::WB_RETRY_CANCEL};

} // namespace boxtest

// Windows with controls and menus, opened, painted, changed and closed.

#include "../activity.hpp"

#include "awinstack.hpp"
#include "sv/application.hpp"
#include "sv/button.hpp"
#include "sv/fixed.hpp"
#include "sv/listbox.hpp"
#include "sv/menu.hpp"
#include "sv/timer.hpp"
#include "sv/window.hpp"

namespace endurance {
namespace {

class Pane : public SV::Window {
public:
  using Window::Window;
  void Paint(SV::OutputDevice & device, SV::Rectangle const &) override {
    device.ChangeFillInBrush(SV::Brush(SV::COL_BLUE));
    device.DrawRect({{10, 10}, {80, 40}});
    device.DrawText({12, 12}, "Pane");
    ++paints;
  }
  int paints = 0;
};

class Windows : public Activity {
public:
  bool round() override {
    Pane window(nullptr, SV::WB_TITLE | SV::WB_SIZEABLE);
    SV::ListBox list(&window);
    SV::PushButton button(&window);
    SV::FixedText label(&window);
    SV::PopupMenu menu;
    expect(menu.InsertItem(1, "~One") && menu.InsertItem(2, "~Two"), "a menu has no item");
    button.SetText("Press");
    label.SetText("Label");
    expect(list.InsertEntry("first") == 0, "a list has no entry");
    SV::Window * const parts[] = {&list, &button, &label};
    for (SV::Window * const part : parts) {
      part->SetPosSizePixel({5, 60}, {70, 30});
      part->Show();
    }
    SV::Timer timer;
    expect(timer.Start(50), "there is no timer");
    show(window);
    return true;
  }

private:
  static void show(Pane & window) {
    window.SetText("Endurance");
    window.ChangeOutputSizePixel({320, 200});
    window.Show();
    Kiv_PushParentWindow(&window);
    for (long side = 200; side < 260; side += 20) {
      window.SetPosSizePixel({side, side}, {side * 2, side});
      window.ChangeFont(SV::Font("Arial", {0, side / 10}));
      window.Invalidate();
      window.Update();
      SV::Application::Reschedule();
    }
    expect(Kiv_PopParentWindow(&window) == &window, "the window is not on the stack");
    expect(window.paints > 0, "the window was not painted");
    window.Close();
    expect(window.GethWnd() == nullptr, "the window is not closed");
  }
};

} // namespace

ActivityPtr openWindows(Place const &) { return std::make_unique<Windows>(); }

} // namespace endurance

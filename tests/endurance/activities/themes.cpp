// Themes, switched while a window shows their parts.

#include "../activity.hpp"

#include "atheme.hpp"
#include "atheme_manager.hpp"
#include "sv/application.hpp"
#include "sv/virtualdevice.hpp"
#include "sv/window.hpp"

namespace endurance {
namespace {

/// Shows each part of a window.
class Parts : public SV::Window {
public:
  Parts() : Window(nullptr, SV::WB_TITLE) {
    KivThemeManager::Instance().AddWindow(this);
    ChangeOutputSizePixel({300, 160});
    Show();
  }
  ~Parts() override { KivThemeManager::Instance().RemoveWindow(this); }

  void Paint(SV::OutputDevice & device, SV::Rectangle const &) override {
    KivTheme const & theme = KivThemeManager::CurrentTheme();
    SV::Rectangle const caption({4, 4}, {200, 20});
    for (int part = CaptionActive; part <= FrameBottomInactive; ++part)
      theme.Draw(*this, static_cast<KivThemeClass>(part), caption);
    theme.DrawText(*this, CaptionActive, caption, "Caption");
    theme.DrawCloseButton(*this, CaptionActive, {{180, 4}, {16, 16}}, true, false);
    theme.DrawCloseButton(*this, CaptionInactive, {{200, 4}, {16, 16}}, false, false);
    theme.DrawToolbarBackground(device, false, {{0, 40}, {300, 30}});
    theme.DrawToolbarButton(*this, device, {{10, 42}, {24, 24}}, true, true, false, true);
    theme.DrawStatusBarBackground(device, {{0, 80}, {300, 20}});
    device.DrawImage({10, 110}, KivThemeManager::Instance().GetCheckBoxIconImg(true));
    device.DrawImage({30, 110}, KivThemeManager::Instance().GetTreeGlyphImg(true));
    ++paints;
  }
  int paints = 0;
};

class Themes : public Activity {
public:
  bool round() override {
    int const before = window_.paints;
    KivThemeManager & manager = KivThemeManager::Instance();
    ++count_;
    manager.SetCurrentTheme(count_ % manager.GetThemeCount());
    if (count_ % 4 == 0)
      manager.SetVisualStylesXPEnabled(count_ % 8 == 0);
    if (count_ % 3 == 0)
      KivThemeManager::SysThemeChanged();
    window_.Update();
    expect(window_.paints > before, "a theme was switched and nothing was painted");
    return true;
  }

private:
  Parts window_;
  long count_ = 0;
};

} // namespace

ActivityPtr switchThemes(Place const &) { return std::make_unique<Themes>(); }

} // namespace endurance

#include "kivara.hpp"

#include <sv/resource.hpp>
#include <sv/window.hpp>

namespace {

/// One window, with a title from a language pack. Started with "-close" it ends at once.
class Minimal : public KivMDIApplication {
public:
  Minimal() : KivMDIApplication("Minimal", true, "log_dialogs") {}

  int prepareApplication() override {
    return createResourceManager("kivara", true) && createResourceManager("minimal", true) ? 0 : 1;
  }

  int runApplication() override {
    SV::Window window(nullptr, SV::WB_TITLE | SV::WB_SIZEABLE);
    window.SetText(SV::Resource::LoadString(SV::ResId(0x2000001, KivInternational::getNextResMgr())));
    SetAppWindow(&window);
    window.Show();
    if (KivCmdline::Instance().isFlag("close"))
      window.Close();
    return Execute();
  }

  bool getMDIClientImage(SV::Image &, int &) override { return false; }
};

Minimal theApplication;

} // namespace

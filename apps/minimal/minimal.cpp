#include "kivara.hpp"

#include <sv/resource.hpp>
#include <sv/window.hpp>

namespace {

/// The smallest program on the library: one window with a title from a language pack. Started with "-close" it ends at once.
class Minimal : public KivMDIApplication {
public:
  Minimal() : KivMDIApplication("Minimal", true, "log_dialogs") {}

  int prepareApplication() override {
    // JOIN ainter: createResourceManager for both, which finds the language by itself
    static SV::ResMgr library("language\\2057\\kivara72.dll");
    SV::Resource::SetResManager(&library);
    return library.IsLoaded() && texts().IsLoaded() ? 0 : 1;
  }

  int runApplication() override {
    SV::Window window(nullptr, SV::WB_TITLE | SV::WB_SIZEABLE);
    window.SetText(SV::Resource::LoadString(SV::ResId(0x2000001, &texts())));
    SetAppWindow(&window);
    window.Show();
    if (KivCmdline::Instance().isFlag("close"))
      window.Close();
    return Execute();
  }

  bool getMDIClientImage(SV::Image &, int &) override { return false; }

private:
  static SV::ResMgr & texts() {
    static SV::ResMgr manager("language\\2057\\minimal72.dll");
    return manager;
  }
};

Minimal theApplication;

} // namespace

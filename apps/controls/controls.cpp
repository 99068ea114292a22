#include "controlsdialog.hpp"
#include "kivara.hpp"

namespace {

/// One dialog. Started with "-close" it ends at once.
class Controls : public KivMDIApplication {
public:
  Controls() : KivMDIApplication("Controls", true, "log_dialogs") {}

  int prepareApplication() override {
    return createResourceManager("kivara", true) && createResourceManager("controls", true) ? 0 : 1;
  }

  int runApplication() override {
    controls::ControlsDialog dialog;
    SV::Timer closing;
    closing.ChangeTimeoutHdl([&dialog](SV::Timer *) { dialog.EndDialog(); });
    if (KivCmdline::Instance().isFlag("close"))
      closing.Start(1);
    dialog.Execute();
    return 0;
  }

  bool getMDIClientImage(SV::Image &, int &) override { return false; }
};

Controls theApplication;

} // namespace

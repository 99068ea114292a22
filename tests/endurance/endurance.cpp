// endurance [--seconds N] [--only NAME,...] [--without NAME,...] [--samples FILE] [--leak WHAT]: a product on the application frame that does all that
// the library offers, at once and over and over, while it watches what it holds of the system. It ends with 0 when nothing grew.

#include "options.hpp"
#include "run.hpp"

#include "aapp.hpp"
#include "aentry.hpp"
#include "support/data/files.hpp"
#include "support/harness/process_guard.hpp"
#include "sv/window.hpp"
#include "tools/winapi.hpp"

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

endurance::Options options;

class Endurance : public KivMDIApplication {
public:
  Endurance() : KivMDIApplication("Endurance", true, "log_endurance") {}

  int prepareApplication() override { return createResourceManager("kivara", true) ? 0 : 2; }

  int runApplication() override {
    support::TempFolder const folder;
    support::TempFolder const temporary;
    SV::Window window(nullptr, SV::WB_TITLE);
    window.SetText("Endurance");
    window.ChangeOutputSizePixel({320, 120});
    SetAppWindow(&window);
    window.Show();
    return run({folder.path(), temporary.path()}) ? 0 : 1;
  }

  bool getMDIClientImage(SV::Image &, int &) override { return false; }

private:
  static bool run(endurance::Place const & place) {
    _putenv_s("TEMP", place.temporary.c_str());
    try {
      return endurance::Run(options, place).execute();
    } catch (std::exception const & fault) {
      std::fprintf(stderr, "endurance: %s\n", fault.what());
      return false;
    }
  }
};

Endurance theApplication;

} // namespace

int main(int count, char ** words) {
  // The run itself may take longer than any test.
  if (std::getenv("KIVARA_TEST_TIMEOUT") == nullptr)
    _putenv_s("KIVARA_TEST_TIMEOUT", "0");
  support::ProcessGuard const guard;
  try {
    options = endurance::readOptions(count, words);
  } catch (std::exception const & fault) {
    std::fprintf(stderr, "endurance: %s\n", fault.what());
    return 2;
  }
  return Kiv_ToolkitEntry(GetModuleHandleA(nullptr), nullptr, GetCommandLineA(), SW_SHOWNORMAL);
}

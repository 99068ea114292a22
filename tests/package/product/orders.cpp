// The product: prints what it knows of itself and of the library, or shows the box that its option names.

#include "kivara.hpp"

#include <sv/window.hpp>
#include <tools/string.hpp>

#include <cstdio>

bool drawsWithWindowsFirst();
bool drawsWithWindowsLast();

namespace {

constexpr char kName[] = "Orders " ORDERS_VERSION;

class Orders : public KivMDIApplication {
public:
  Orders() : KivMDIApplication(kName, true, "log_dialogs") {}

  int prepareApplication() override {
    return createResourceManager("kivara", true) && createResourceManager("orders", true) ? 0 : 1;
  }

  int runApplication() override {
    SV::Window window(nullptr);
    window.SetText(kName);
    SetAppWindow(&window);
    if (KivCmdline::Instance().isFlag("internal"))
      displayErrorMessage("aorders.cpp", 42);
    else if (KivCmdline::Instance().isFlag("severe"))
      Exception(0x200, 7);
    else
      report();
    return 0;
  }

  bool getMDIClientImage(SV::Image &, int &) override { return false; }

private:
  void report() {
    for (unsigned short const language : KivInternational::GetAvailableLanguages())
      std::printf("%d ", language);
    std::printf("milestone %d, activity %d\n", Kiv_MultiLangFindResId("milestone"), Kiv_MultiLangFindResId("activity"));
    std::printf("%s string.hpp, headers %d match: %d, drawn: %d %d\n", ownString(), KIVARA_VERSION_IDENTIFIER,
                Kiv_HeadersMatchLibrary(), drawsWithWindowsFirst(), drawsWithWindowsLast());
  }
};

Orders theApplication;

} // namespace

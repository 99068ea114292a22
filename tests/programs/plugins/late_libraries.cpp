// late_libraries NAME: makes the library load the system's library of that name, and prints its file; an empty line where it is not needed
// any more.

#include "acmdline.hpp"
#include "ahttp.hpp"
#include "aproc.hpp"
#include "auser.hpp"
#include "sv/sv.hpp"
#include "tools/winapi.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void makeRequest() { KivHTTPClient(L"no URL", nullptr).SendHttpRequest(L"GET", false); }

void drawGradient() {
  SV::VirtualDevice device;
  device.SetOutputSizePixel({20, 20});
  device.GradientFill(true, {{0, 0}, {20, 20}}, SV::COL_RED, SV::COL_BLUE);
}

void askForStyles() { SV::CVisualStylesXP::IsAppThemed(); }

/// The pictures lie beside the programs of the build, which are in the variable.
void readPicture() {
  SV::ImagePool::SetPoolFile((std::string(std::getenv("KIVARA_BIN")) + "agfx.zip").c_str());
  SV::ImagePool::GetImage("selbox/chkbox0.png");
}

void askForUser() {
  static char program[] = "program.exe";
  static char * words[] = {program, nullptr};
  KivCmdline::init(1, words, true, "log");
  SV::String user, domain;
  Kiv_GetCurrentUserAndDomain(user, domain);
}

void listPrinters() { SV::Printer::GetNames(); }

void openProgram() {
  std::string const program = std::string(std::getenv("KIVARA_BIN")) + "process_child.exe";
  KivAsynchronousProcess(program.c_str(), "exit:0", KIV_CMDSHOW_HIDE).Execute(nullptr);
}

struct Late {
  char const * library;
  void (*use)();
};

constexpr Late kLate[] = {{"winhttp.dll", makeRequest},       {"msimg32.dll", drawGradient},
                          {"uxtheme.dll", askForStyles},      {"ole32.dll", readPicture},
                          {"windowscodecs.dll", readPicture}, {"secur32.dll", askForUser},
                          {"winspool.drv", listPrinters},     {"shell32.dll", openProgram}};

} // namespace

int main(int count, char ** words) {
  char file[MAX_PATH] = "";
  for (Late const & late : kLate)
    if (count >= 2 && std::strcmp(words[1], late.library) == 0) {
      late.use();
      if (HMODULE const module = GetModuleHandleA(late.library))
        GetModuleFileNameA(module, file, sizeof file);
    }
  std::puts(file);
  return 0;
}

#include "aentry.hpp"
#include "tools/winapi.hpp"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int showCommand) {
  return Kiv_ToolkitEntry(instance, previous, commandLine, showCommand);
}

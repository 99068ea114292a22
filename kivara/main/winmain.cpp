#include "aentry.hpp"
#include "tools/winapi.hpp"

extern "C" {
/// The mode that the start-up code sets: malloc calls the library's low-memory handler, even in constructors of static
/// objects.
int _newmode = 1;
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int showCommand) {
  return Kiv_ToolkitEntry(instance, previous, commandLine, showCommand);
}

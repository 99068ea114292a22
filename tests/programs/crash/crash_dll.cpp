// Calls functions of the program from DllMain: those whose addresses, in hexadecimal digits, are in the variables KIVARA_CALL_ATTACH and
// KIVARA_CALL_DETACH.

#include "tools/winapi.hpp"

#include <cstdint>
#include <cstdlib>

namespace {

void call(char const * variable) {
  char text[32] = "";
  if (GetEnvironmentVariableA(variable, text, sizeof text) != 0)
    reinterpret_cast<void (*)()>(static_cast<std::uintptr_t>(std::strtoull(text, nullptr, 16)))();
}

} // namespace

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void *) {
  if (reason == DLL_PROCESS_ATTACH)
    call("KIVARA_CALL_ATTACH");
  if (reason == DLL_PROCESS_DETACH)
    call("KIVARA_CALL_DETACH");
  return TRUE;
}

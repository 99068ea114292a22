#include "frame/lowmemory.hpp"

#include "sv/systembox.hpp"
#include "tools/winapi.hpp"

namespace {

constexpr SIZE_T kReserveBytes = 4096;

/// Memory for the message box. It comes from the system's heap, since the runtime's heap is the one that failed.
void * reserve = nullptr;

void takeReserve() { reserve = HeapAlloc(GetProcessHeap(), 0, kReserveBytes); }

void giveReserve() {
  if (reserve != nullptr)
    HeapFree(GetProcessHeap(), 0, reserve);
  reserve = nullptr;
}

bool userWantsRetry() {
  return SV::ShowBoxOrNothing("Failed to allocate memory!\nClose other applications and press retry\n"
                              "Or press cancel to abort the application!",
                              "Low memory message", MB_RETRYCANCEL | MB_ICONHAND | MB_TASKMODAL) == IDRETRY;
}

/// 1: the allocation is tried again; 0: it fails. Called on the thread whose allocation failed.
int onLowMemory(std::size_t) {
  giveReserve();
  if (!userWantsRetry())
    return 0;
  takeReserve();
  return 1;
}

/// Calls a function of the runtime that is known by its C++ name only.
template <class Setter, class Value> void callRuntime(char const * name, Value value) {
  FARPROC const address = GetProcAddress(GetModuleHandleA("msvcrt.dll"), name);
  if (auto const setter = reinterpret_cast<Setter *>(reinterpret_cast<void (*)()>(address)))
    setter(value);
}

using Handler = int (*)(std::size_t);

struct LowMemory {
  LowMemory() {
    takeReserve();
    callRuntime<Handler(Handler)>("?_set_new_handler@@YAP6AH_K@ZP6AH0@Z@Z", onLowMemory);
    kivara::askHandlerOnLowMemory();
  }
};

LowMemory const lowMemory;

} // namespace

namespace kivara {

void askHandlerOnLowMemory() { callRuntime<int(int)>("?_set_new_mode@@YAHH@Z", 1); }

} // namespace kivara

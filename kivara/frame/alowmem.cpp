// What happens when memory runs out: the runtime asks here before an allocation fails.

#include "sv/application.hpp"
#include "tools/winapi.hpp"

namespace {

constexpr SIZE_T kReserveBytes = 4096;

/// Memory for the message box. It comes from the system's heap, since the runtime's is what has failed.
void * reserve = nullptr;

void takeReserve() { reserve = HeapAlloc(GetProcessHeap(), 0, kReserveBytes); }

void giveReserve() {
  if (reserve != nullptr)
    HeapFree(GetProcessHeap(), 0, reserve);
  reserve = nullptr;
}

bool userWantsRetry() {
  return !SV::Application::IsModalDialogSuppression() &&
         MessageBoxA(nullptr,
                     "Failed to allocate memory!\nClose other applications and press retry\n"
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

/// The runtime's own handler, known by its C++ name only. Mode 1 lets malloc ask it too, and so operator new.
struct LowMemoryHandler {
  using Handler = int (*)(std::size_t);

  LowMemoryHandler() {
    takeReserve();
    HMODULE const runtime = GetModuleHandleA("msvcrt.dll");
    install<Handler(Handler)>(runtime, "?_set_new_handler@@YAP6AH_K@ZP6AH0@Z@Z", onLowMemory);
    install<int(int)>(runtime, "?_set_new_mode@@YAHH@Z", 1);
  }

  template <class Setter, class Value> static void install(HMODULE runtime, char const * name, Value value) {
    if (auto const setter = reinterpret_cast<Setter *>(reinterpret_cast<void (*)()>(GetProcAddress(runtime, name))))
      setter(value);
  }
};

LowMemoryHandler const lowMemoryHandler;

} // namespace

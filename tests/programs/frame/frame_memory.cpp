// An allocation that the system refuses, made in runApplication. KIVARA_WITH chooses malloc, new or nothrow;
// KIVARA_FREE_AFTER is the number of boxes after which the system gives the memory, never without it. KIVARA_WHEN makes
// it earlier ("constructed") or on another thread ("thread"). Each box is recorded with its style.

#include "frame_program.hpp"

#include "support/imports/import_spy.hpp"
#include "tools/winapi.hpp"

#include <new>
#include <thread>

namespace {

using support::SpiedCall;

constexpr std::size_t kWanted = 0x1234567;
constexpr std::size_t kImpossible = ~std::size_t{0} / 2;

int boxes = 0;
DWORD const mainThread = GetCurrentThreadId();

bool systemHasMemory() { return !setting("FREE_AFTER").empty() && boxes >= number("FREE_AFTER"); }

void recordBox(SpiedCall const & call) {
  ++boxes;
  record("box owner %d, style %lx%s", call.arguments[0] != 0, static_cast<unsigned long>(call.arguments[3]),
         GetCurrentThreadId() == mainThread ? "" : " on another thread");
}

bool allocate() {
  if (setting("WITH") == "malloc")
    return std::malloc(kWanted) != nullptr;
  if (setting("WITH") == "nothrow")
    return operator new(kWanted, std::nothrow) != nullptr;
  try {
    return operator new(kWanted) != nullptr;
  } catch (std::bad_alloc const &) {
    record("bad_alloc");
    return false;
  }
}

void tryIt() {
  bool const allocated = allocate();
  record(allocated ? "allocated after %d boxes" : "failed after %d boxes", boxes);
  void * const small = std::malloc(100);
  record(small ? "small works" : "small failed");
  std::free(small);
}

class MemoryProgram : public FrameProgram {
public:
  MemoryProgram() {
    support::spyOnImport("SV0105.dll", "MessageBoxA", recordBox);
    support::spyOnImport("msvcrt.dll", "HeapAlloc", [](SpiedCall & call) {
      if (call.arguments[2] == kWanted && !systemHasMemory())
        call.arguments[2] = kImpossible;
    });
    if (setting("WHEN") == "constructed")
      tryIt();
  }

private:
  void run() override {
    if (setting("WHEN") == "thread")
      std::thread(tryIt).join();
    else if (setting("WHEN").empty())
      tryIt();
  }
};

MemoryProgram program;

} // namespace

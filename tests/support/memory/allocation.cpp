#include "support/memory/allocation.hpp"

#include "support/imports/import_hook.hpp"
#include "support/memory/guard_arena.hpp"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>

namespace support {
namespace {

struct Runtime {
  void * (*malloc)(std::size_t);
  void * (*calloc)(std::size_t, std::size_t);
  void * (*realloc)(void *, std::size_t);
  void (*free)(void *);
  std::size_t (*msize)(void *);
};
Runtime runtime;

std::atomic<std::size_t> mostBytes{SIZE_MAX};
std::atomic<int> livingGuards{0};
std::atomic<bool> isArenaUsed{false};
std::atomic<std::size_t> allocations{0};
std::atomic<DWORD> countedThread{0};

bool isGuarded(void const * block) { return isArenaUsed && GuardArena::instance().owns(block); }

void * allocate(std::size_t size) {
  if (GetCurrentThreadId() == countedThread)
    ++allocations;
  if (size > mostBytes)
    return nullptr;
  void * const block = livingGuards != 0 ? GuardArena::instance().take(size) : nullptr;
  return block != nullptr ? block : runtime.malloc(size);
}

void * allocateZeroed(std::size_t count, std::size_t each) {
  if (each != 0 && count > SIZE_MAX / each)
    return nullptr;
  void * const block = allocate(count * each);
  return block != nullptr ? std::memset(block, 0, count * each) : nullptr;
}

void release(void * block) {
  if (isGuarded(block))
    GuardArena::instance().giveBack(block);
  else
    runtime.free(block);
}

std::size_t sizeOf(void * block) {
  return isGuarded(block) ? GuardArena::instance().sizeOf(block) : runtime.msize(block);
}

void * resize(void * block, std::size_t size) {
  if (block == nullptr)
    return allocate(size);
  if (size == 0) {
    release(block);
    return nullptr;
  }
  void * const moved = allocate(size);
  if (moved != nullptr) {
    std::memcpy(moved, block, std::min(size, sizeOf(block)));
    release(block);
  }
  return moved;
}

/// The code of a function of the shared C++ runtime.
struct CodeRange {
  void find(char const * name) {
    auto * const runtimeDll = GetModuleHandleA("libstdc++-6.dll");
    auto const start = reinterpret_cast<DWORD64>(reinterpret_cast<void *>(GetProcAddress(runtimeDll, name)));
    DWORD64 base = 0;
    if (auto const * const function = RtlLookupFunctionEntry(start, &base, nullptr)) {
      begin = base + function->BeginAddress;
      end = base + function->EndAddress;
    }
  }
  bool holds(void const * address) const {
    auto const value = reinterpret_cast<DWORD64>(address);
    return value >= begin && value < end;
  }
  DWORD64 begin = 0;
  DWORD64 end = 0;
};
CodeRange operatorNew;

// The C++ runtime's own blocks, exceptions above all, need their alignment: there only operator new is looked at.
void * allocateForNew(std::size_t size) {
  return operatorNew.holds(__builtin_return_address(0)) ? allocate(size) : runtime.malloc(size);
}

template <class Function> void find(Function & function, char const * name) {
  void * const address = reinterpret_cast<void *>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), name));
  std::memcpy(&function, &address, sizeof function);
}

void findRuntime() {
  find(runtime.malloc, "malloc");
  find(runtime.calloc, "calloc");
  find(runtime.realloc, "realloc");
  find(runtime.free, "free");
  find(runtime.msize, "_msize");
  operatorNew.find("_Znwy"); // the other forms call this one
}

template <class Function> void * address(Function * function) { return reinterpret_cast<void *>(function); }

void install() {
  if (runtime.malloc == nullptr)
    findRuntime();
  HMODULE const cppRuntime = GetModuleHandleA("libstdc++-6.dll");
  for (HMODULE const module : ownModules()) {
    if (module == GetModuleHandleA("libgcc_s_seh-1.dll") || module == GetModuleHandleA("libwinpthread-1.dll"))
      continue;
    bool const isCppRuntime = module == cppRuntime;
    replaceImports(module, "msvcrt.dll",
                   {{"malloc", isCppRuntime ? address(allocateForNew) : address(allocate)},
                    {"calloc", isCppRuntime ? address(runtime.calloc) : address(allocateZeroed)},
                    {"realloc", address(resize)},
                    {"free", address(release)},
                    {"_msize", address(sizeOf)}});
  }
}

} // namespace

AllocationCount::AllocationCount() {
  install();
  countedThread = GetCurrentThreadId();
  start_ = allocations;
}
std::size_t AllocationCount::value() const { return allocations - start_; }

AllocationLimit::AllocationLimit(std::size_t most) {
  install();
  before_ = mostBytes.exchange(most);
}
AllocationLimit::~AllocationLimit() { mostBytes = before_; }

GuardPages::GuardPages() {
  install();
  GuardArena::instance();
  isArenaUsed = true;
  ++livingGuards;
}
GuardPages::~GuardPages() { --livingGuards; }

bool GuardPages::guards(void const * block) { return isArenaUsed && GuardArena::instance().isLive(block); }

} // namespace support

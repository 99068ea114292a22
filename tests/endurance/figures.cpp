#include "figures.hpp"

#include "support/data/files.hpp"
#include "support/harness/wine.hpp"
#include "support/memory/handles.hpp"
#include "tools/winapi.hpp"

#include <winternl.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <cstdint>

namespace endurance {
namespace {

struct HeapUse {
  double blocks = 0;
  double bytes = 0;
};

/// Wine loses so many bytes of its own heap with each static control in the look of version 6, without this library too. What this
/// library and its users allocate is on the runtime's heap.
bool isLostByWine(HANDLE heap, PROCESS_HEAP_ENTRY const & entry) {
  constexpr DWORD kOfAControl = 24;
  static bool const wine = support::isWine();
  return wine && heap == GetProcessHeap() && entry.cbData == kOfAControl;
}

HeapUse heapUse() {
  HANDLE heaps[128];
  DWORD const count = GetProcessHeaps(std::size(heaps), heaps);
  HeapUse use;
  for (DWORD i = 0; i < count && i < std::size(heaps); ++i) {
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(heaps[i]);
    while (HeapWalk(heaps[i], &entry))
      if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 && !isLostByWine(heaps[i], entry)) {
        use.blocks += 1;
        use.bytes += entry.cbData;
      }
    HeapUnlock(heaps[i]);
  }
  return use;
}

/// Commit charge, which Wine knows by this name alone.
double privateBytes() {
  PROCESS_MEMORY_COUNTERS counters = {};
  counters.cb = sizeof counters;
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return static_cast<double>(counters.PagefileUsage);
}

double threadCount() {
  HANDLE const snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 thread = {};
  thread.dwSize = sizeof thread;
  double count = 0;
  for (BOOL is = Thread32First(snapshot, &thread); is; is = Thread32Next(snapshot, &thread))
    count += thread.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
  CloseHandle(snapshot);
  return count;
}

/// \name Wine
/// It answers 0 for the GDI and the USER objects of a process: they are counted where they lie.
/// @{

/// An entry of the table of drawing objects, which the process's own block points to.
struct DrawingObject {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t generation;
  std::uint8_t type; ///< 0: free
  std::uint8_t flags;
  std::uint64_t data;
};

double countDrawingObjects() {
  constexpr std::size_t kPlaceInBlock = 0xF8;
  constexpr int kMostObjects = 0x4000;
  PROCESS_BASIC_INFORMATION process = {};
  NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process, sizeof process, nullptr);
  auto const * const block = reinterpret_cast<char const *>(process.PebBaseAddress);
  auto const * const table = *reinterpret_cast<DrawingObject const * const *>(block + kPlaceInBlock);
  double count = 0;
  for (int i = 0; table != nullptr && i < kMostObjects; ++i)
    count += table[i].type != 0 ? 1 : 0;
  return count;
}

BOOL CALLBACK countWindow(HWND window, LPARAM count) {
  DWORD owner = 0;
  GetWindowThreadProcessId(window, &owner);
  if (owner != GetCurrentProcessId())
    return TRUE;
  double & windows = *reinterpret_cast<double *>(count);
  windows += 1;
  if (GetAncestor(window, GA_PARENT) == GetDesktopWindow())
    EnumChildWindows(window, countWindow, count);
  return TRUE;
}

/// Windows that are for messages alone. The row ends early where one of another process goes away meanwhile.
double countMessageWindows() {
  for (int tries = 0;; ++tries) {
    double windows = 0;
    HWND last = nullptr;
    for (HWND window = nullptr; (window = FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;
         last = window)
      countWindow(window, reinterpret_cast<LPARAM>(&windows));
    if (last == nullptr || IsWindow(last) || tries == 100)
      return windows;
  }
}

double countWindows() {
  double windows = 0;
  EnumWindows(countWindow, reinterpret_cast<LPARAM>(&windows));
  return windows + countMessageWindows();
}

bool isIcon(HICON icon) {
  ICONINFO info = {};
  if (!GetIconInfo(icon, &info))
    return false;
  DeleteObject(info.hbmMask);
  DeleteObject(info.hbmColor);
  return true;
}

/// Menus, icons and key tables are found by all the numbers that they can have: what another process has is not found.
double countWindowObjects() {
  constexpr std::uintptr_t kFirst = 0x20;
  constexpr std::uintptr_t kLast = 0xFFEF;
  double count = countWindows();
  for (std::uintptr_t number = kFirst; number <= kLast; number += 2) {
    void * const handle = reinterpret_cast<void *>(number);
    if (IsMenu(static_cast<HMENU>(handle)) || CopyAcceleratorTableA(static_cast<HACCEL>(handle), nullptr, 0) != 0 ||
        isIcon(static_cast<HICON>(handle)))
      count += 1;
  }
  return count;
}
/// @}

double guiObjects(DWORD kind) { return GetGuiResources(GetCurrentProcess(), kind); }

} // namespace

char const * nameOf(Kind kind) {
  static constexpr char const * kNames[] = {"handles",     "threads",    "GDI objects",   "USER objects",
                                            "heap blocks", "heap bytes", "private bytes", "files"};
  static_assert(std::size(kNames) == kKinds);
  return kNames[kind];
}

Figures measure(std::vector<std::string> const & folders) {
  bool const wine = support::isWine();
  Figures figures = {};
  HeapUse const heap = heapUse();
  figures[kHeapBlocks] = heap.blocks;
  figures[kHeapBytes] = heap.bytes;
  figures[kPrivateBytes] = privateBytes();
  figures[kThreads] = threadCount();
  figures[kHandles] = support::countHandles();
  figures[kDrawingObjects] = wine ? countDrawingObjects() : guiObjects(GR_GDIOBJECTS);
  figures[kWindowObjects] = wine ? countWindowObjects() : guiObjects(GR_USEROBJECTS);
  for (std::string const & folder : folders)
    figures[kFiles] += static_cast<double>(support::entriesOf(folder).size());
  return figures;
}

} // namespace endurance

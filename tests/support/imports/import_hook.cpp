#include "support/imports/import_hook.hpp"

#include <psapi.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <utility>

namespace support {
namespace {

std::string folderOf(HMODULE module) {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(module, path, sizeof path - 1);
  std::string const text(path);
  return text.substr(0, text.rfind('\\') + 1);
}

void redirect(char * entry, void * function) {
  DWORD before = 0;
  VirtualProtect(entry, sizeof function, PAGE_READWRITE, &before);
  std::memcpy(entry, &function, sizeof function);
  VirtualProtect(entry, sizeof function, before, &before);
}

/// Linkers begin tables of imports at any multiple of four.
IMAGE_THUNK_DATA thunkAt(char const * place) {
  IMAGE_THUNK_DATA thunk;
  std::memcpy(&thunk, place, sizeof thunk);
  return thunk;
}

void redirectTable(char * base, IMAGE_IMPORT_DESCRIPTOR const & import, std::vector<Replacement> const & replacements) {
  char const * place = base + import.OriginalFirstThunk;
  char * entry = base + import.FirstThunk;
  for (; thunkAt(place).u1.AddressOfData != 0; place += sizeof(IMAGE_THUNK_DATA), entry += sizeof(IMAGE_THUNK_DATA)) {
    IMAGE_THUNK_DATA const thunk = thunkAt(place);
    if (IMAGE_SNAP_BY_ORDINAL(thunk.u1.Ordinal))
      continue;
    char const * const name = base + thunk.u1.AddressOfData + offsetof(IMAGE_IMPORT_BY_NAME, Name);
    for (auto const & each : replacements)
      if (std::strcmp(name, each.name) == 0)
        redirect(entry, each.function);
  }
}

/// False when the module imports nothing from that DLL, or only late.
bool redirectImports(HMODULE module, char const * dll, std::vector<Replacement> const & replacements) {
  auto * const base = reinterpret_cast<char *>(module);
  auto const * const dos = reinterpret_cast<IMAGE_DOS_HEADER const *>(base);
  auto const * const headers = reinterpret_cast<IMAGE_NT_HEADERS const *>(base + dos->e_lfanew);
  auto const & directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  if (directory.VirtualAddress == 0)
    return false;
  bool found = false;
  auto const * import = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR const *>(base + directory.VirtualAddress);
  for (; import->Name != 0; ++import)
    if (_stricmp(base + import->Name, dll) == 0) {
      redirectTable(base, *import, replacements);
      found = true;
    }
  return found;
}

std::vector<LateImport> & lateImports() {
  static auto & all = *new std::vector<LateImport>;
  return all;
}

using ProcAddress = void * (*)(HMODULE, char const *);
ProcAddress realProcAddress;

void * watchedProcAddress(HMODULE library, char const * name) {
  void * function = realProcAddress(library, name);
  if (function == nullptr || reinterpret_cast<std::uintptr_t>(name) <= 0xFFFF) // a number in place of the name
    return function;
  for (auto const & exchange : lateImports())
    function = exchange(library, name, function);
  return function;
}

} // namespace

void replaceImports(HMODULE module, char const * dll, std::vector<Replacement> const & replacements) {
  if (redirectImports(module, dll, replacements))
    return;
  watchLateImports(module, [dll, replacements](HMODULE library, std::string_view name, void * function) {
    for (auto const & each : replacements)
      if (library == GetModuleHandleA(dll) && name == each.name)
        return each.function;
    return function;
  });
}

void watchLateImports(HMODULE module, LateImport exchange) {
  if (realProcAddress == nullptr) {
    HMODULE const system = GetModuleHandleA("kernel32.dll");
    realProcAddress = reinterpret_cast<ProcAddress>(reinterpret_cast<void *>(GetProcAddress(system, "GetProcAddress")));
  }
  lateImports().push_back(std::move(exchange));
  redirectImports(module, "KERNEL32.dll", {{"GetProcAddress", reinterpret_cast<void *>(watchedProcAddress)}});
}

std::vector<HMODULE> ownModules() {
  HMODULE all[256];
  DWORD bytes = 0;
  K32EnumProcessModules(GetCurrentProcess(), all, sizeof all, &bytes);
  std::string const folder = folderOf(nullptr);
  std::vector<HMODULE> own;
  for (std::size_t i = 0; i < bytes / sizeof all[0] && i < std::size(all); ++i)
    if (_stricmp(folderOf(all[i]).c_str(), folder.c_str()) == 0)
      own.push_back(all[i]);
  return own;
}

} // namespace support

#include "support/import_hook.hpp"

#include <psapi.h>

#include <cstring>
#include <string>

namespace support {
namespace {

std::string folderOf(HMODULE module) {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(module, path, sizeof path - 1);
  std::string const text(path);
  return text.substr(0, text.rfind('\\') + 1);
}

void redirect(IMAGE_THUNK_DATA & entry, void * function) {
  DWORD before = 0;
  VirtualProtect(&entry, sizeof entry, PAGE_READWRITE, &before);
  entry.u1.Function = reinterpret_cast<ULONGLONG>(function);
  VirtualProtect(&entry, sizeof entry, before, &before);
}

} // namespace

void replaceImports(HMODULE module, char const * dll, std::vector<Replacement> const & replacements) {
  auto * const base = reinterpret_cast<char *>(module);
  auto const * const dos = reinterpret_cast<IMAGE_DOS_HEADER const *>(base);
  auto const * const headers = reinterpret_cast<IMAGE_NT_HEADERS const *>(base + dos->e_lfanew);
  auto const & directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  if (directory.VirtualAddress == 0)
    return;
  auto const * import = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR const *>(base + directory.VirtualAddress);
  for (; import->Name != 0; ++import) {
    if (_stricmp(base + import->Name, dll) != 0)
      continue;
    auto const * name = reinterpret_cast<IMAGE_THUNK_DATA const *>(base + import->OriginalFirstThunk);
    auto * entry = reinterpret_cast<IMAGE_THUNK_DATA *>(base + import->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++entry) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
        continue;
      auto const * const byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME const *>(base + name->u1.AddressOfData);
      for (auto const & each : replacements)
        if (std::strcmp(byName->Name, each.name) == 0)
          redirect(*entry, each.function);
    }
  }
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

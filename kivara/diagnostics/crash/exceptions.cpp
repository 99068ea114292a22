#include "diagnostics/crash/exceptions.hpp"

#include "diagnostics/crash/report.hpp"

#include <algorithm>

namespace kivara::crash {
namespace {

/// The sections of a module, none where its headers are not those of one.
struct Sections {
  IMAGE_SECTION_HEADER const * first = nullptr;
  unsigned count = 0;
};

/// \param module  the start of memory of type MEM_IMAGE, whose first page is readable
Sections sectionsOf(char const * module) {
  constexpr LONG kHeadersLimit = 4096 - static_cast<LONG>(sizeof(IMAGE_NT_HEADERS));
  auto const * const dos = reinterpret_cast<IMAGE_DOS_HEADER const *>(module);
  if (dos->e_magic != IMAGE_DOS_SIGNATURE || dos->e_lfanew <= 0 || dos->e_lfanew > kHeadersLimit)
    return {};
  auto const * const headers = reinterpret_cast<IMAGE_NT_HEADERS const *>(module + dos->e_lfanew);
  if (headers->Signature != IMAGE_NT_SIGNATURE)
    return {};
  return {IMAGE_FIRST_SECTION(headers), headers->FileHeader.NumberOfSections};
}

bool lies(std::uint32_t rva, IMAGE_SECTION_HEADER const & section) {
  std::uint32_t const size = std::max(section.Misc.VirtualSize, section.SizeOfRawData);
  return rva >= section.VirtualAddress && rva - section.VirtualAddress < size;
}

void findSection(FaultLocation & location, Sections const & sections, std::uint32_t rva) {
  for (unsigned i = 0; i < sections.count; ++i)
    if (lies(rva, sections.first[i])) {
      location.section = i + 1;
      location.offset = rva - sections.first[i].VirtualAddress;
      return;
    }
  write("\r\n# '%s': Could not find RVA %08Xh in %d PE sections\r\n", location.module, rva,
        static_cast<int>(sections.count));
  location.module[0] = '\0';
}

} // namespace

FaultLocation locateFault(void const * address) {
  FaultLocation location;
  MEMORY_BASIC_INFORMATION memory{};
  if (VirtualQuery(address, &memory, sizeof memory) == 0) {
    writeFailure("VirtualQuery (addr, &mbi, sizeof (mbi)) != 0", GetLastError());
    return location;
  }
  if (memory.AllocationBase == nullptr) {
    write("\r\n# [mbi.AllocationBase == NULL]\r\n");
    return location;
  }
  auto const module = static_cast<HMODULE>(memory.AllocationBase);
  if (GetModuleFileNameA(module, location.module, sizeof location.module) == 0) {
    writeFailure("GetModuleFileName ((HMODULE) hMod, szModule, len) != 0", GetLastError());
    location.module[0] = '\0';
    return location;
  }
  location.module[sizeof location.module - 1] = '\0'; // the system leaves a name that is cut without one
  auto const * const base = static_cast<char const *>(memory.AllocationBase);
  auto const rva = static_cast<std::uint32_t>(static_cast<char const *>(address) - base);
  findSection(location, memory.Type == MEM_IMAGE ? sectionsOf(base) : Sections{}, rva);
  return location;
}

} // namespace kivara::crash

#include "support/imports/import_spy.hpp"

#include "support/imports/import_hook.hpp"

#include <algorithm>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace support {
namespace {

/// What a stub's code points to; never given back.
struct Watch {
  Spy spy;
};

/// Called by the stubs; the registers were pushed in the order of the arguments, so they lie backwards.
void tell(Watch const * watch, std::uintptr_t * pushed) {
  DWORD const error = GetLastError();
  SpiedCall call{{pushed[3], pushed[2], pushed[1], pushed[0]}};
  watch->spy(call);
  std::reverse_copy(call.arguments, call.arguments + 4, pushed);
  SetLastError(error);
}

class Code {
public:
  Code & bytes(std::initializer_list<int> values) {
    for (int const value : values)
      code_.push_back(static_cast<unsigned char>(value));
    return *this;
  }
  Code & address(std::uintptr_t value) {
    for (int shift = 0; shift < 64; shift += 8)
      code_.push_back(static_cast<unsigned char>(value >> shift));
    return *this;
  }
  std::size_t size() const { return code_.size(); }

  /// Copies it to memory that can be run. Exceptions pass through it, as through a function whose frame the unwind information describes.
  void * place(std::initializer_list<int> unwindInformation) {
    std::size_t const end = code_.size();
    bytes(unwindInformation);
    code_.resize((code_.size() + 3) / 4 * 4); // where the table has to stand
    RUNTIME_FUNCTION const function{0, static_cast<DWORD>(end), static_cast<DWORD>(end)};
    auto * const memory = static_cast<unsigned char *>(
        VirtualAlloc(nullptr, code_.size() + sizeof function, MEM_RESERVE | MEM_COMMIT, PAGE_EXECUTE_READWRITE));
    std::memcpy(memory, code_.data(), code_.size());
    auto * const table = reinterpret_cast<RUNTIME_FUNCTION *>(memory + code_.size());
    *table = function;
    FlushInstructionCache(GetCurrentProcess(), memory, end);
    RtlAddFunctionTable(table, 1, reinterpret_cast<std::uintptr_t>(memory));
    return memory;
  }

private:
  std::vector<unsigned char> code_;
};

/// A stub that saves what can hold arguments, calls the spy, restores and jumps to the function.
void * makeStub(Watch const * watch, std::uintptr_t original) {
  Code code;
  code.bytes({0x51, 0x52, 0x41, 0x50, 0x41, 0x51}); // push rcx, rdx, r8, r9
  code.bytes({0x48, 0x83, 0xEC, 0x68});             // sub rsp, 0x68
  for (int i = 0; i < 4; ++i)
    code.bytes({0x0F, 0x11, 0x44 | i << 3, 0x24, 0x20 + 0x10 * i});          // movups [rsp+0x20+16*i], xmm(i)
  code.bytes({0x48, 0xB9}).address(reinterpret_cast<std::uintptr_t>(watch)); // mov rcx, watch
  code.bytes({0x48, 0x8D, 0x54, 0x24, 0x68});                                // lea rdx, [rsp+0x68]
  code.bytes({0x48, 0xB8}).address(reinterpret_cast<std::uintptr_t>(&tell)); // mov rax, tell
  code.bytes({0xFF, 0xD0});                                                  // call rax
  for (int i = 0; i < 4; ++i)
    code.bytes({0x0F, 0x10, 0x44 | i << 3, 0x24, 0x20 + 0x10 * i}); // movups xmm(i), [rsp+0x20+16*i]
  code.bytes({0x48, 0x83, 0xC4, 0x68});                             // add rsp, 0x68
  code.bytes({0x41, 0x59, 0x41, 0x58, 0x5A, 0x59});                 // pop r9, r8, rdx, rcx
  code.bytes({0x48, 0xB8}).address(original);                       // mov rax, original
  code.bytes({0xFF, 0xE0});                                         // jmp rax
  while (code.size() % 4 != 0)
    code.bytes({0xCC});
  // Version 1, a prolog of 10 bytes, five entries: 0x68 bytes of stack at its end, and 8 for each register before.
  return code.place({1, 10, 5, 0, 10, 0xC2, 6, 0x02, 4, 0x02, 2, 0x02, 1, 0x02});
}

/// In a mangled name every identifier follows its length.
bool isNamed(std::string_view imported, std::string_view function) {
  if (imported == function || !imported.starts_with("_Z"))
    return imported == function;
  std::string const identifier = std::to_string(function.size()) + std::string(function);
  std::size_t const at = imported.find(identifier);
  return at != std::string_view::npos && (imported[at - 1] < '0' || imported[at - 1] > '9');
}

void replace(std::uintptr_t * slot, void const * stub) {
  DWORD former = 0;
  VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &former);
  *slot = reinterpret_cast<std::uintptr_t>(stub);
  VirtualProtect(slot, sizeof(*slot), former, &former);
}

/// Functions of DLLs that the module loads late have their names among its own import data, but in no table.
bool namesFunction(std::uintptr_t base, IMAGE_NT_HEADERS64 const & headers, std::string_view function) {
  auto const * section = IMAGE_FIRST_SECTION(&headers);
  for (unsigned i = 0; i < headers.FileHeader.NumberOfSections; ++i, ++section)
    if (std::memcmp(section->Name, ".idata", sizeof ".idata") == 0) {
      std::string_view const names(reinterpret_cast<char const *>(base + section->VirtualAddress),
                                   section->Misc.VirtualSize);
      return names.find('\0' + std::string(function) + '\0') != std::string_view::npos;
    }
  return false;
}

} // namespace

bool spyOnImport(char const * moduleName, char const * function, Spy spy) {
  static std::deque<Watch> & watches = *new std::deque<Watch>;
  auto const base = reinterpret_cast<std::uintptr_t>(GetModuleHandleA(moduleName));
  if (!base)
    return false;
  LONG const offset = reinterpret_cast<IMAGE_DOS_HEADER *>(base)->e_lfanew;
  auto const & headers = *reinterpret_cast<IMAGE_NT_HEADERS64 *>(base + static_cast<std::uintptr_t>(offset));
  auto const & place = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  Watch const & watch = watches.emplace_back(std::move(spy));
  bool found = false;
  for (auto dll = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR *>(base + place.VirtualAddress); dll->Name; ++dll) {
    auto name = reinterpret_cast<IMAGE_THUNK_DATA64 *>(base + dll->OriginalFirstThunk);
    auto slot = reinterpret_cast<std::uintptr_t *>(base + dll->FirstThunk);
    for (; name->u1.AddressOfData; ++name, ++slot) {
      if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal))
        continue;
      auto const & imported = *reinterpret_cast<IMAGE_IMPORT_BY_NAME *>(base + name->u1.AddressOfData);
      if (!isNamed(reinterpret_cast<char const *>(imported.Name), function))
        continue;
      replace(slot, makeStub(&watch, *slot));
      found = true;
    }
  }
  if (found || !namesFunction(base, headers, function))
    return found;
  watchLateImports(GetModuleHandleA(moduleName), [&watch, function](HMODULE, std::string_view name, void * late) {
    return name == function ? makeStub(&watch, reinterpret_cast<std::uintptr_t>(late)) : late;
  });
  return true;
}

} // namespace support

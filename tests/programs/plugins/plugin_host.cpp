// plugin_host [-plug_log] WORD...: loads plug-ins, prints the result of each, and ends without discarding them.
//
//   -own    libraries are not searched for in the working folder or in PATH
//   all     what lies in its folder of plug-ins; the result is how many there are then
//   PATH    that library
//   -frail  the libraries after it may be damaged: each is discarded before the next, and a fault that nobody handles ends the
//           program with a line that says whose it is

#include "acmdline.hpp"
#include "aplugin.hpp"
#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace {

char const * frailPath = nullptr;
CONTEXT placeOfFault;
bool isNoCode = false; // what was to run there

HMODULE moduleAt(DWORD64 address) {
  HMODULE module = nullptr;
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<char const *>(address), &module);
  return module;
}

/// One frame up; false where there is none.
bool leave(CONTEXT & frame) {
  DWORD64 base = 0;
  void * data = nullptr;
  DWORD64 establisher = 0;
  RUNTIME_FUNCTION * const function = RtlLookupFunctionEntry(frame.Rip, &base, nullptr);
  if (function != nullptr)
    RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, frame.Rip, function, &frame, &data, &establisher, nullptr);
  return function != nullptr && frame.Rip != 0;
}

/// "of the plug-in" where its code, what that has called, or what is no code at all, was running; "of the loader" where the system's
/// was.
char const * ownerOfFault() {
  HMODULE const library = GetModuleHandleA(frailPath);
  HMODULE const loaders[] = {GetModuleHandleA("ntdll.dll"), GetModuleHandleA("kernelbase.dll"),
                             GetModuleHandleA("kernel32.dll")};
  HMODULE const ours = GetModuleHandleA("kivara.dll");
  CONTEXT frame = placeOfFault;
  if (frame.Rip == 0) { // a null pointer was called
    frame.Rip = *reinterpret_cast<DWORD64 const *>(frame.Rsp);
    frame.Rsp += sizeof frame.Rip;
  } else if (isNoCode) {
    return "of the plug-in"; // damaged code returns to anywhere
  }
  bool isOfLoader = moduleAt(frame.Rip) != ours;
  // Code of the plug-in that damaged exports lead to, anywhere in it, may call the library with anything.
  while (moduleAt(frame.Rip) == ours)
    if (!leave(frame))
      return "of the library";
  do {
    HMODULE const module = moduleAt(frame.Rip);
    if (module == library || module == nullptr)
      return "of the plug-in";
    if (module == ours)
      break;
    isOfLoader = isOfLoader && std::find(std::begin(loaders), std::end(loaders), module) != std::end(loaders);
  } while (leave(frame));
  return isOfLoader ? "of the loader" : "of the library";
}

LONG CALLBACK rememberFault(EXCEPTION_POINTERS * fault) {
  placeOfFault = *fault->ContextRecord;
  EXCEPTION_RECORD const & record = *fault->ExceptionRecord;
  isNoCode = record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && record.ExceptionInformation[1] == placeOfFault.Rip;
  return EXCEPTION_CONTINUE_SEARCH;
}

/// The library's own report begins with a file.
HANDLE WINAPI endByFault(char const *, DWORD, DWORD, SECURITY_ATTRIBUTES *, DWORD, DWORD, HANDLE) {
  std::printf("fault %s\n", ownerOfFault());
  std::fflush(stdout);
  TerminateProcess(GetCurrentProcess(), 3);
  return INVALID_HANDLE_VALUE;
}

void expectFaults() {
  AddVectoredExceptionHandler(1, rememberFault);
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"CreateFileA", reinterpret_cast<void *>(endByFault)}});
}

} // namespace

int main(int count, char ** words) {
  KivCmdline::init(count, words, true, "log");
  KivPluginManager & manager = KivPluginManager::Instance();
  bool isFrail = false;
  for (int i = 1; i < count; ++i) {
    if (std::strcmp(words[i], "-frail") == 0) {
      isFrail = true;
      expectFaults();
    }
    if (std::strcmp(words[i], "-own") == 0)
      SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
    if (words[i][0] == '-')
      continue;
    frailPath = words[i];
    if (std::strcmp(words[i], "all") == 0) {
      KivBasicPluginList plugins;
      bool const isAny = manager.LoadPlugins();
      manager.GetAllPlugins(plugins, true);
      std::printf("%d %d\n", isAny, static_cast<int>(plugins.size()));
    } else {
      std::printf("%d\n", manager.LoadSinglePlugin(words[i]));
    }
    if (isFrail)
      manager.DiscardPlugins();
    std::fflush(stdout);
  }
  return 0;
}

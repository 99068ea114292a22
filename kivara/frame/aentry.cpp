#include "aentry.hpp"

#include "frame/arguments.hpp"
#include "frame/lowmemory.hpp"
#include "sv/application.hpp"
#include "sv/printer.hpp"
#include "sv/systembox.hpp"
#include "tools/winapi.hpp"

#include <cstdlib>

namespace {

SV::PrinterSwitches printerSwitches;

int refuse(char const * text) {
  SV::ShowBoxOrLog(text, "Severe SV error", MB_OK | MB_ICONHAND);
  return 1;
}

int runApplicationObject(int argc, char ** argv) {
  if (SV::GetpApp() == nullptr)
    return refuse("Severe error: No instance of class application (aSVData.pApp)!\n\nPlease contact your vendor!");
  if (!SV::InitSV(argc, argv))
    return refuse("Severe error: failed to init program (InitSV)!\n\nPlease contact your vendor!");
  printerSwitches = kivara::readPrinterSwitches(argc, argv);
  SV::SetPrinterSwitches(printerSwitches);
  SV::GetpApp()->Main(argc, argv);
  SV::DeInitSV();
  return 0;
}

} // namespace

int Kiv_ToolkitEntry(HINSTANCE instance, HINSTANCE, char *, int showCommand) {
  kivara::askHandlerOnLowMemory();
  kivara::ArgumentBlock const arguments = kivara::splitCommandLine(GetCommandLineA());
  if (arguments.words == nullptr)
    return 1;
  SV::SetProcessData(instance, GetCurrentThreadId(), showCommand);
  int const code = runApplicationObject(arguments.count, arguments.words);
  std::free(arguments.words);
  return code;
}

bool Kiv_HasRegistryPrinters() { return printerSwitches.registryPrinters; }
bool Kiv_HasCaseSensitivePrinters() { return printerSwitches.caseSensitivePrinters; }
bool Kiv_HasCurrentPrinting() { return printerSwitches.currentPrinting; }

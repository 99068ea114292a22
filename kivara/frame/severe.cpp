#include "frame/severe.hpp"

#include "acrash.hpp"
#include "aevents.hpp"
#include "ainter.hpp"
#include "awinstack.hpp"
#include "base/modules.hpp"
#include "locale/ainter_state.hpp"
#include "sv/application.hpp"
#include "sv/resource.hpp"
#include "sv/systembox.hpp"
#include "sv/window.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace kivara {
namespace {

constexpr int kLineDump = 622;

bool inExceptionHandler = false;

/// Activates the next manager of the chain, which may have what the active one lacks.
bool isNextResourceManagerActive() {
  SV::ResMgr * const next = KivInternational::getNextResMgr();
  if (next != nullptr)
    SV::Resource::SetResManager(next);
  return next != nullptr;
}

/// Whether the program can continue without a message.
bool isSettled(long code) {
  if (code == SV::EXC_RESOURCE_NOT_LOADED)
    return isNextResourceManagerActive();
  return code == SV::EXC_RESOURCE_FILE_NOT_LOADED && loadingResourceFile;
}

SV::Window const * topWindow() { return Kiv_GetTopWindow(0); }

} // namespace

bool handleSevereException(String const & applicationName, long code, unsigned long arg) {
  if (inExceptionHandler)
    return false;
  inExceptionHandler = true;
  bool const settled = isSettled(code);
  if (!settled) {
    String const text = severeExceptionText(applicationName, code, arg);
    SV::ShowBoxOrLog(text.c_str(), applicationName.c_str(), MB_ICONHAND, topWindow);
    Fct_CreateMiniDump(modules::kAapp, kLineDump);
    KivExitAppEvent("exception (minidump)").trigger();
  }
  inExceptionHandler = false;
  return settled;
}

} // namespace kivara

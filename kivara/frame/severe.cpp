#include "frame/severe.hpp"

#include "aevents.hpp"
#include "ainter.hpp"
#include "awinstack.hpp"
#include "locale/ainter_state.hpp"
#include "sv/application.hpp"
#include "sv/resource.hpp"
#include "sv/window.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace kivara {
namespace {

constexpr int kLineDump [[maybe_unused]] = 622;

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

HWND ownerOfBox() {
  SV::Window const * const window = Kiv_GetTopWindow(0);
  return window != nullptr ? window->GethWnd() : nullptr;
}

void show(String const & text, String const & caption) {
  unsigned short const wait = SV::Application::IsWait();
  if (wait != 0)
    SV::Application::Wait(0);
  if (SV::Application::IsModalDialogSuppression())
    SV::Application::ModalDialogSuppressionLog(text.c_str());
  else
    MessageBoxA(ownerOfBox(), text.c_str(), caption.c_str(), MB_ICONHAND);
  SV::Application::Wait(wait);
}

} // namespace

bool handleSevereException(String const & applicationName, long code, unsigned long arg) {
  if (inExceptionHandler)
    return false;
  inExceptionHandler = true;
  bool const settled = isSettled(code);
  if (!settled) {
    show(severeExceptionText(applicationName, code, arg), applicationName);
    // JOIN acrash: Fct_CreateMiniDump(modules::kAapp, kLineDump)
    KivExitAppEvent("exception (minidump)").trigger();
  }
  inExceptionHandler = false;
  return settled;
}

} // namespace kivara

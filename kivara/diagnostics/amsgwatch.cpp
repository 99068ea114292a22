#include "amsgwatch.hpp"

#include "alog.hpp"
#include "base/boundedtext.hpp"
#include "diagnostics/messagename.hpp"

#include <cstdarg>
#include <cstdint>

using kivara::orEmpty;

namespace {

constexpr char kFile[] = "_kiv_hooks.txt";

KivBasicFileLogger * hookLogger = nullptr;
bool isInstallTried = false;

// A plain value that outlives the manager: windows may be added and get messages until the last DLL is unloaded.
bool hasEnded = false;

unsigned low32(HWND window) { return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(window)); }

/// The hook. It never stops a message by itself; the hook before it may.
int recordMessage(HWND window, unsigned message, unsigned long long wParam, long long lParam, long long & result) {
  if (hasEnded)
    return 0;
  KivWindowsHookManager const & manager = KivWindowsHookManager::Instance();
  if (manager.contains(window))
    hookLogger->addText("[%08Xh] Msg: (%3d | %3Xh) (lp: %08Xh) (wp: %08Xh) (%s)\n", low32(window),
                        static_cast<int>(message), message, static_cast<unsigned>(wParam),
                        static_cast<unsigned>(lParam), kivara::messageName(message));
  SV::MessageHook const previous = manager.getPreviousHook();
  return previous != nullptr ? previous(window, message, wParam, lParam, result) : 0;
}

} // namespace

KivWindowsHookManager::KivWindowsHookManager() = default;

KivWindowsHookManager::~KivWindowsHookManager() {
  hasEnded = true;
  if (hookLogger == nullptr)
    return;
  hookLogger->addText("# -- [end of program session] ---\n\n");
  delete hookLogger;
  hookLogger = nullptr;
  SV::Sysdepen::ChangeHook(previousHook_);
  previousHook_ = nullptr;
}

KivWindowsHookManager & KivWindowsHookManager::Instance() {
  static KivWindowsHookManager theManager;
  return theManager;
}

void KivWindowsHookManager::install() {
  if (hookLogger != nullptr || isInstallTried)
    return;
  isInstallTried = true;
  auto * const logger = new KivBasicFileLogger(true, false, 0);
  if (!logger->open(kFile, true)) {
    delete logger;
    return;
  }
  hookLogger = logger;
  previousHook_ = SV::Sysdepen::ChangeHook(recordMessage);
}

KivWindowsMessageWatcher & KivWindowsMessageWatcher::operator=(KivWindowsMessageWatcher const &) = default;

void KivWindowsMessageWatcher::addHookWindow(HWND window, char const * name) {
  if (hasEnded)
    return;
  KivWindowsHookManager & manager = KivWindowsHookManager::Instance();
  manager.install();
  manager.insert(window);
  // The letter n at the end is intended: readers of these files recognise the line by it.
  addMessage("--- [hooking window %08Xh] --- [%s] ---n", low32(window), orEmpty(name));
}

void KivWindowsMessageWatcher::removeHookWindow(HWND window) {
  if (hasEnded)
    return;
  KivWindowsHookManager::Instance().erase(window);
  addMessage("--- [unhooked window %08Xh] ------------------------------------\n", low32(window));
}

void KivWindowsMessageWatcher::addMessage(char const * format, ...) {
  if (hookLogger == nullptr)
    return;
  va_list arguments;
  va_start(arguments, format);
  hookLogger->vaddText(format, arguments);
  va_end(arguments);
}

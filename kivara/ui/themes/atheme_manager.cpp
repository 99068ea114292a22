#include "atheme_manager.hpp"

#include "sv/application.hpp"
#include "sv/visualstyles.hpp"
#include "sv/window.hpp"

#include <utility>

using SV::String;

namespace {

KivThemeManager * theManager = nullptr;

} // namespace

KivThemeManager & KivThemeManager::Instance() {
  if (theManager == nullptr)
    theManager = new KivThemeManager;
  return *theManager;
}

KivThemeManager::KivThemeManager() {
  themes.reserve(2);
  for (KivTheme * const theme :
       {static_cast<KivTheme *>(new KivThemeClassic), static_cast<KivTheme *>(new KivThemeModern)}) {
    themes.push_back(theme);
    currentTheme = theme;
  }
  setEventHandler(KIV_EVENT_AppExit, &KivThemeManager::_onExit);
}

KivThemeManager::~KivThemeManager() {
  manualSignOff();
  Clear();
  for (KivTheme const * const theme : themes)
    delete theme;
  windows.clear();
}

void KivThemeManager::_onExit(KivEvent *) { delete std::exchange(theManager, nullptr); }

KivTheme const & KivThemeManager::CurrentTheme() { return *Instance().currentTheme; }

KivTheme const & KivThemeManager::GetTheme(long index) const {
  return index >= 0 && index < GetThemeCount() ? *themes[static_cast<std::size_t>(index)] : *currentTheme;
}

long KivThemeManager::GetThemeCount() const { return static_cast<long>(themes.size()); }

void KivThemeManager::SetCurrentTheme(long index) {
  if (index >= 0 && index < GetThemeCount())
    currentTheme = themes[static_cast<std::size_t>(index)];
  InvalidateWindows();
}

void KivThemeManager::SetCurrentTheme(String const & name) {
  for (KivTheme * const theme : themes)
    if (theme->GetName() == name)
      currentTheme = theme;
  InvalidateWindows();
}

bool KivThemeManager::IsThemed() { return SV::CVisualStylesXP::IsAppThemed(); }

bool KivThemeManager::IsVisualStylesXPEnabled() const { return visualStylesXPEnabled; }

void KivThemeManager::SetVisualStylesXPEnabled(bool value) {
  if (value)
    InvalidateWindows();
  visualStylesXPEnabled = value;
}

void KivThemeManager::SysThemeChanged() {
  if (theManager != nullptr)
    theManager->Clear();
}

void KivThemeManager::AddWindow(SV::Window * window) {
  if (window != nullptr)
    windows.insert(window);
}

void KivThemeManager::RemoveWindow(SV::Window * window) { windows.erase(window); }

void KivThemeManager::InvalidateWindows() {
  for (SV::Window * const window : windows)
    window->Invalidate();
  if (auto * const application = dynamic_cast<SV::MDIApplication *>(SV::GetpApp()))
    application->InvalidateMDIClient();
}

void * KivThemeManager::openTheme(SV::Window const & window, char const * classes) const {
  if (!visualStylesXPEnabled || !SV::CVisualStylesXP::IsAppThemed())
    return nullptr;
  return SV::CVisualStylesXP::OpenThemeData(window.GethWnd(), classes);
}

void * KivThemeManager::OpenWindowTheme(SV::Window const & window) const { return openTheme(window, "Window"); }
void * KivThemeManager::OpenButtonTheme(SV::Window const & window) const { return openTheme(window, "Button"); }
void * KivThemeManager::OpenToolbarTheme(SV::Window const & window) const { return openTheme(window, "Toolbar"); }
void * KivThemeManager::OpenStatusTheme(SV::Window const & window) const { return openTheme(window, "Status"); }
void * KivThemeManager::OpenTreeViewTheme(SV::Window const & window) const { return openTheme(window, "TreeView"); }
void * KivThemeManager::OpenProgressTheme(SV::Window const & window) const { return openTheme(window, "Progress"); }
void * KivThemeManager::OpenTabTheme(SV::Window const & window) const { return openTheme(window, "Tab"); }
void * KivThemeManager::OpenSpinTheme(SV::Window const & window) const { return openTheme(window, "Spin"); }
void * KivThemeManager::OpenEditTheme(SV::Window const & window) const { return openTheme(window, "Edit"); }

void KivThemeManager::CloseTheme(void * theme) const { SV::CVisualStylesXP::CloseThemeData(theme); }

#include "sv/application.hpp"

#include "application/pointer.hpp"
#include "application/toolkit.hpp"

#include <cstdlib>

namespace SV {

Application::Application() { detail::toolkit().application = this; }

Application::~Application() {
  if (detail::toolkit().application == this)
    detail::toolkit().application = nullptr;
}

bool Application::QueryExit() { return true; }

void Application::SysChange(SysChangeType) {}

void Application::AppEvent(unsigned long, void *) {}

void Application::UserEvent(unsigned long, void *) {}

void Application::Activate() {}

void Application::Deactivate() {}

void Application::ActivateExtHelp() {
  detail::toolkit().helpPointer = true;
  detail::updatePointer();
}

void Application::DeactivateExtHelp() {
  detail::toolkit().helpPointer = false;
  detail::updatePointer();
}

void Application::Exception(long, unsigned long) { std::exit(1); }

MDIApplication::MDIApplication() = default;

MDIApplication::~MDIApplication() = default;

bool MDIApplication::IsUserDefPaintMDIClient() { return false; }

void MDIApplication::PaintMDIClient(HWND) {}

Application * GetpApp() { return detail::toolkit().application; }

} // namespace SV

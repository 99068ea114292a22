#include "aapp.hpp"

#include "acmdline.hpp"
#include "aevents.hpp"
#include "ainter.hpp"
#include "amlstr.hpp"
#include "atheme_manager.hpp"
#include "atrace.hpp"
#include "frame/appfont.hpp"
#include "frame/console.hpp"
#include "frame/language.hpp"
#include "frame/severe.hpp"
#include "frame/startup.hpp"
#include "sv/help.hpp"
#include "sv/resource.hpp"

#include <cstdlib>
#include <utility>

using SV::String;

namespace {

KivApplicationInterface * theApplication() { return dynamic_cast<KivApplicationInterface *>(SV::GetpApp()); }

} // namespace

KivApplicationInterface::KivApplicationInterface(char const * applicationName, bool hasGUI)
    : name(applicationName), withGUI(hasGUI) {}

bool KivApplicationInterface::IsWithGUI() {
  KivApplicationInterface const * const application = theApplication();
  return application != nullptr && application->withGUI;
}

bool KivApplicationInterface::IsAfterMain() {
  KivApplicationInterface const * const application = theApplication();
  return application != nullptr && application->afterMain;
}

void KivApplicationInterface::createHelpObject(char const * fileName) {
  if (help == nullptr) {
    help = new SV::Help;
    SV::Application::ChangeHelp(help);
  }
  KivInternational::switchHelpObject(fileName);
}

bool KivApplicationInterface::createResourceManager(char const * const resourceName, bool languageSpecific) {
  return KivInternational::createResourceManager(resourceName, languageSpecific);
}

void KivApplicationInterface::_beforeMain(int argc, char ** const argv, String const & logOption) {
  KivCmdline::init(argc, argv, withGUI, logOption);
  if (KivCmdline::dynamicConsole())
    kivara::openDynamicConsole();
  Kiv_EnableTracing(KivCmdline::doTracing());
  kivara::openTraceFile();
  kivara::installApplicationFont();
  kivara::applySuppression();
  kivara::registerPictures();
  kivara::chooseLanguage();
  Kiv_InitializeMultiLanguageStrings();
  kivara::writePidFile();
  kivara::keepStartDirectory();
}

void KivApplicationInterface::_beforeMain2() {
  kivara::applyCharSet();
  kivara::applyButtonLabels();
}

void KivApplicationInterface::_afterMain(int exitCode) {
  afterMain = true;
  KivExitAppEvent("end(" + String(exitCode) + ")").trigger();
  kivara::closeTraceFile();
  Kiv_DeinitializeMultiLanguageStrings();
  delete help;
  help = nullptr;
  KivInternational::DeleteResMgrs();
  SV::Resource::SetResManager(nullptr);
}

bool KivApplicationInterface::_handleException(long code, unsigned long arg) {
  return kivara::handleSevereException(name, code, arg);
}

void KivApplicationInterface::_onSystemSettingsChange(SV::SysChangeType type) {
  if (type == SV::SYSCHANGE_THEME)
    KivThemeManager::SysThemeChanged();
  KivSystemSettingsChangedEvent(type).trigger();
}

KivMDIApplication::KivMDIApplication(char const * applicationName, bool hasGUI, String logOption)
    : KivApplicationInterface(applicationName, hasGUI), logOptionName(std::move(logOption)) {}

KivMDIApplication::~KivMDIApplication() = default;

void KivMDIApplication::SysChange(SV::SysChangeType type) { _onSystemSettingsChange(type); }

void KivMDIApplication::Main(int argc, char ** const argv) {
  _beforeMain(argc, argv, logOptionName);
  int exitCode = prepareApplication();
  if (exitCode == 0) {
    _beforeMain2();
    exitCode = runApplication();
  }
  _afterMain(exitCode);
  if (exitCode != 0)
    std::exit(exitCode);
}

void KivMDIApplication::Exception(long code, unsigned long arg) {
  if (!_handleException(code, arg))
    SV::Application::Exception(code, arg);
}

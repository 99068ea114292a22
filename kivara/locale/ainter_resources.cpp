// The chain of resource DLLs, and the help file.
#include "ainter.hpp"

#include "aplatfrm.hpp"
#include "atools.hpp"
#include "atrace.hpp"
#include "base/boundedtext.hpp"
#include "kivara_version.hpp"
#include "locale/ainter_state.hpp"
#include "sv/application.hpp"
#include "sv/help.hpp"
#include "sv/resource.hpp"
#include "sv/systembox.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

using kivara::BoundedText;
using kivara::orEmpty;
using SV::ResMgr;
using SV::String;

namespace kivara {

bool loadingResourceFile = false;

} // namespace kivara

namespace {

constexpr int kVersion = KIVARA_RESOURCE_VERSION; ///< part of the name of every resource DLL
constexpr int kVersionAndType = 6;                ///< the length of "72.dll"
constexpr std::size_t kDLLName = 260;
constexpr std::size_t kHelpName = 1025;

/// Loads a file; null if that fails.
std::unique_ptr<ResMgr> load(char const * debugFormat, String const & fileName) {
  String const line = debugFormat + fileName + "\n";
  kivara::loadingResourceFile = true; // a failure is reported here and must not be a severe exception
  KivDebugOut(line.c_str());
  std::unique_ptr<ResMgr> manager;
  try {
    manager = std::make_unique<ResMgr>(fileName);
  } catch (...) {
    kivara::loadingResourceFile = false;
    throw;
  }
  kivara::loadingResourceFile = false;
  return manager->IsLoaded() ? std::move(manager) : nullptr;
}

void reportFailure(String const & fileName, unsigned short languageId) {
  String language = KivInternational::GetNativeLanguageName(languageId);
  if (language.Len() == 0)
    language = String(languageId);
  String const failure =
      "Failed to load the resource file '" + fileName + "' for the selected language '" + language + "'.\n";
  String const advice("Please change your language selection.");
  KivDebugOut(("[locale] " + failure + "         " + advice).c_str());
  String const text = failure + advice;
  SV::ShowBoxOrLog(text.c_str(), "KIVARA: error loading resource file", MB_ICONHAND | MB_TASKMODAL | MB_TOPMOST);
}

/// The arguments with which a DLL was requested, from the name of its file. A DLL that was found by its bare name has lost its
/// folder and no longer counts as language-specific.
struct Request {
  explicit Request(String const & fileName) {
    char const * const first = std::strchr(fileName.c_str(), '\\');
    char const * const last = std::strrchr(fileName.c_str(), '\\');
    languageSpecific = first != last;
    String const component(last != nullptr ? last + 1 : fileName.c_str());
    baseName = component.substr(0, component.Len() - kVersionAndType);
  }

  String baseName;
  bool languageSpecific;
};

} // namespace

bool KivInternational::createResourceManager(char const * name, bool languageSpecific) {
  std::unique_ptr<ResMgr> manager =
      load("[locale] Loading resource DLL ", aInstance.buildResDLLName(name, languageSpecific));
  if (manager == nullptr) {
    String const fallback = buildResDLLNameFallback(name);
    manager = load("[locale] Error! Loading fallback resource DLL ", fallback);
    if (manager == nullptr) {
      reportFailure(fallback, aInstance.currentLanguage);
      aInstance.resourceLoadFailed = true;
      return false;
    }
  }
  aInstance.resourceManagers.push_back(manager.get());
  ResMgr * const added = manager.release();
  if (aInstance.resourceManagers.size() == 1)
    SV::Resource::SetResManager(added);
  return true;
}

ResMgr * KivInternational::getNextResMgr() {
  std::list<ResMgr *> const & managers = aInstance.resourceManagers;
  auto place = std::find(managers.begin(), managers.end(), SV::Resource::GetResManager());
  if (place == managers.end() || ++place == managers.end())
    return nullptr;
  return *place;
}

void KivInternational::DeleteResMgrs() {
  for (ResMgr * const manager : std::exchange(aInstance.resourceManagers, {}))
    delete manager;
}

bool KivInternational::errorLoadingResourceFiles() { return aInstance.resourceLoadFailed; }

void KivInternational::switchHelpObject(char const * baseName) {
  BoundedText<kHelpName> const ofLanguage("help\\%d\\%s.chm", aInstance.currentLanguage, orEmpty(baseName));
  String file = Kiv_GetProgramPathFilename(ofLanguage.c_str());
  if (!Kiv_FileExists(file.c_str()))
    file = Kiv_GetProgramPathFilename(BoundedText<kHelpName>("%s.chm", orEmpty(baseName)).c_str());
  KivDebugOut(("[kiv] Using help file '" + file + "'\n").c_str());
  if (SV::Help * const help = SV::Application::GetHelp()) {
    help->ChangeFileName(file);
    SV::Application::EnableHelp(SV::HELP_BY_KEY | SV::HELP_EXTENDED);
  }
}

void KivInternational::updateResourceManagers() {
  SV::Resource::SetResManager(nullptr);
  for (std::size_t count = resourceManagers.size(); count > 0; --count) {
    std::unique_ptr<ResMgr> const former(resourceManagers.front());
    resourceManagers.pop_front();
    Request const request(former->GetFileName());
    createResourceManager(request.baseName.c_str(), request.languageSpecific);
  }
  SV::Resource::SetResManager(resourceManagers.empty() ? nullptr : resourceManagers.front());
}

String KivInternational::buildResDLLName(char const * name, bool languageSpecific) const {
  if (languageSpecific)
    return BoundedText<kDLLName>("language\\%d\\%s%d.dll", currentLanguage, orEmpty(name), kVersion).c_str();
  return BoundedText<kDLLName>("language\\%s%d.dll", orEmpty(name), kVersion).c_str();
}

String KivInternational::buildResDLLNameFallback(char const * name) {
  return BoundedText<kDLLName>("%s%d.dll", orEmpty(name), kVersion).c_str();
}

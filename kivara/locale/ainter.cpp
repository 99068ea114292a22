#include "ainter.hpp"

#include "aappinfo.hpp"
#include "aplatfrm.hpp"
#include "atrace.hpp"
#include "base/boundedtext.hpp"
#include "base/modules.hpp"
#include "base/openfile.hpp"
#include "base/textids.hpp"
#include "locale/buttontexts.hpp"
#include "locale/languagelist.hpp"
#include "locale/localeinfo.hpp"
#include "sv/application.hpp"
#include "sv/help.hpp"
#include "sv/resource.hpp"

#include <cstdlib>
#include <cstring>

using kivara::BoundedText;
using SV::String;

namespace {

constexpr int kLineNoLanguageFile = 101;
constexpr int kLineLanguageZero = 102;
constexpr int kLineLanguageUnknown = 103;

constexpr unsigned short kGerman = 1031;

void reportBadLanguage(unsigned short id) {
  KIV_ASSERT_AT(id != 0, "id != 0", "lang.ini", kivara::modules::kAinter, kLineLanguageZero);
  KIV_ASSERT_AT(KivInternational::IsValidLanguageID(id), "IsValidLanguageID(id)", "lang.ini", kivara::modules::kAinter,
                kLineLanguageUnknown);
}

/// Reads "lang.ini". Without the file, German is the only language.
void readLanguages(ISequence<unsigned short> & languages) {
  languages.clear();
  kivara::OpenFile const file = kivara::openFile(Kiv_GetProgramPathFilename("lang.ini").c_str(), "rt");
  if (!file) {
    KIV_ASSERT_AT(false, "lang.ini", "The list of languages is missing.", kivara::modules::kAinter,
                  kLineNoLanguageFile);
    languages.push_back(kGerman);
    return;
  }
  unsigned short id = 0;
  while (kivara::nextLanguage(file.get(), id)) {
    reportBadLanguage(id);
    KivDebugOut(BoundedText<64>("[locale] Adding locale %d\n", id).c_str());
    languages.push_back(id);
  }
}

String infoOrEmpty(LCID locale, LCTYPE type) {
  String text;
  kivara::localeInfo(locale, type, text);
  return text;
}

/// The last component of a path, without its extension.
String baseNameOfHelp(String const & fileName) {
  char const * const separator = std::strrchr(fileName.c_str(), '\\');
  String const component(separator != nullptr ? separator + 1 : fileName.c_str());
  constexpr int kExtension = 4;
  return component.substr(0, component.Len() - kExtension);
}

void announce(unsigned short id) {
  String const line = "[locale] Changing default language to " + String(id) + ": " +
                      infoOrEmpty(id, LOCALE_SENGLANGUAGE) + " / " + infoOrEmpty(id, LOCALE_SENGCOUNTRY) + "\n";
  KivDebugOut(line.c_str());
}

} // namespace

KivInternational KivInternational::aInstance;

KivInternational::KivInternational() = default;
KivInternational::KivInternational(KivInternational const & other) = default;
KivInternational & KivInternational::operator=(KivInternational const & other) = default;
KivInternational::~KivInternational() = default;

void KivInternational::InitAvailableLanguages() {
  if (aInstance.initialised)
    return;
  readLanguages(aInstance.availableLanguages);
  aInstance.initialised = true;
  if (!aInstance.availableLanguages.empty())
    SetCurrentLanguageID(aInstance.availableLanguages.front());
}

ISequence<unsigned short> const & KivInternational::GetAvailableLanguages() { return aInstance.availableLanguages; }

unsigned short KivInternational::GetCurrentLanguageID() { return aInstance.currentLanguage; }

unsigned long KivInternational::GetCurrentWindowsLocaleID() { return aInstance.currentLanguage; }

String KivInternational::GetCurrentISOID() {
  String code;
  if (!kivara::localeInfo(aInstance.currentLanguage, LOCALE_SISO639LANGNAME, code) &&
      !kivara::localeInfo(GetDefaultLanguageID(), LOCALE_SISO639LANGNAME, code))
    kivara::localeInfo(kGerman, LOCALE_SISO639LANGNAME, code);
  return code;
}

void KivInternational::SetCurrentLanguageID(unsigned short id) {
  if (id == aInstance.currentLanguage)
    return;
  announce(id);
  aInstance.currentLanguage = id;
  if (aInstance.resourceManagers.empty())
    return; // at the start, the DLLs are loaded later in the language that is set now
  aInstance.updateResourceManagers();
  if (SV::Help const * const help = SV::Application::GetHelp())
    switchHelpObject(baseNameOfHelp(help->GetFileName()).c_str());
  kivara::installWithButtonTexts(SV::Application::GetAppInternational());
  Kiv_GetToolName(true); // caches the name in the new language
}

String KivInternational::GetNativeLanguageName(unsigned short id) { return infoOrEmpty(id, LOCALE_SNATIVELANGNAME); }

bool KivInternational::IsValidLanguageID(unsigned short id) { return IsValidLocale(id, LCID_SUPPORTED) != FALSE; }

unsigned short KivInternational::GetDefaultLanguageID() {
  return static_cast<unsigned short>(std::atoi(SV::Resource::LoadString(kivara::texts::kBaseLanguage).c_str()));
}

String KivInternational::GetIso639OfBaseLanguage() {
  return infoOrEmpty(GetDefaultLanguageID(), LOCALE_SISO639LANGNAME);
}

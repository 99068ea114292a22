#include "frame/language.hpp"

#include "acmdline.hpp"
#include "ainter.hpp"
#include "atrace.hpp"

#include <cstdlib>

using SV::String;

namespace kivara {
namespace {

/// False if the value matches no language. A number is used without a check; only its low 16 bits count.
bool resolveLanguage(String const & value, unsigned short & id) {
  if (int const number = std::atoi(value.c_str()); number != 0) {
    id = static_cast<unsigned short>(number);
    return true;
  }
  using LookUp = unsigned short (*)(String const &);
  constexpr LookUp kLookUps[] = {
      KivInternational::GetLanguageIDOfNativeLanguageName, KivInternational::GetLanguageIDOfNativeCountryName,
      KivInternational::GetLanguageIDOfEnglishLanguageName, KivInternational::GetLanguageIDOfISO639};
  for (LookUp const lookUp : kLookUps)
    if ((id = lookUp(value)) != 0)
      return true;
  return false;
}

} // namespace

void chooseLanguage() {
  KivInternational::InitAvailableLanguages();
  String const value = KivCmdline::Instance().getValue("lang");
  if (value.Len() == 0)
    return;
  unsigned short id = 0;
  if (resolveLanguage(value, id))
    KivInternational::SetCurrentLanguageID(id);
  else
    KivDebugOut(("[locale] The locale '" + value + "' could not be resolved!\n").c_str());
}

} // namespace kivara

#include "frame/alanguage.hpp"

#include "acmdline.hpp"
#include "ainter.hpp"
#include "atrace.hpp"

#include <cstdlib>

using SV::String;

namespace kivara {
namespace {

unsigned short languageOf(String const & value) {
  if (int const number = std::atoi(value.c_str()); number != 0)
    return static_cast<unsigned short>(number);
  using LookUp = unsigned short (*)(String const &);
  constexpr LookUp kLookUps[] = {
      KivInternational::GetLanguageIDOfNativeLanguageName, KivInternational::GetLanguageIDOfNativeCountryName,
      KivInternational::GetLanguageIDOfEnglishLanguageName, KivInternational::GetLanguageIDOfISO639};
  for (LookUp const lookUp : kLookUps)
    if (unsigned short const id = lookUp(value); id != 0)
      return id;
  return 0;
}

} // namespace

void chooseLanguage() {
  KivInternational::InitAvailableLanguages();
  String const value = KivCmdline::Instance().getValue("lang");
  if (value.Len() == 0)
    return;
  unsigned short const id = languageOf(value);
  if (id != 0)
    KivInternational::SetCurrentLanguageID(id);
  else
    KivDebugOut(("[locale] The locale '" + value + "' could not be resolved!\n").c_str());
}

} // namespace kivara

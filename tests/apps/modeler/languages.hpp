#pragma once
/// \file
/// The languages of the sample product in the process of a test.

#include "ainter.hpp"

namespace modeler {

inline constexpr unsigned short kGerman = 1031;
inline constexpr unsigned short kEnglish = 2057;

/// The program's texts are in that language from now on.
inline void useTexts(unsigned short language) {
  KivInternational::SetCurrentLanguageID(language);
  KivInternational::createResourceManager("kivara", true);
  KivInternational::createResourceManager("modeler", true);
}

} // namespace modeler

#pragma once
/// \file
/// Texts of any length from the system's locale tables. Internal.

#include "tools/string.hpp"
#include "tools/winapi.hpp"

namespace kivara {

/// Asks for one fact of a locale.
/// \param text  what the system tells; left alone on failure
/// \return false when the system does not know the locale or the fact
inline bool localeInfo(LCID locale, LCTYPE type, SV::String & text) {
  int const size = GetLocaleInfoA(locale, type, nullptr, 0);
  if (size == 0)
    return false;
  SV::String info = SV::String::ofLength(size - 1);
  // A setting of the user may have grown since the first question.
  if (size > 1 && GetLocaleInfoA(locale, type, info.writable(), size) == 0)
    return false;
  text = info;
  return true;
}

} // namespace kivara

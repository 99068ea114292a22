#pragma once
/// \file
/// Strings of any length from the system's locale tables. Internal.

#include "tools/string.hpp"
#include "tools/winapi.hpp"

namespace kivara {

/// Reads one setting of a locale.
/// \param text  receives it; unchanged on failure
/// \return false if the system does not know the locale or the setting
inline bool localeInfo(LCID locale, LCTYPE type, SV::String & text) {
  int const size = GetLocaleInfoA(locale, type, nullptr, 0);
  if (size == 0)
    return false;
  SV::String info = SV::String::ofLength(size - 1);
  // The user may have made the setting longer since the first call.
  if (size > 1 && GetLocaleInfoA(locale, type, info.writable(), size) == 0)
    return false;
  text = info;
  return true;
}

} // namespace kivara

#include "aacceler.hpp"
#include "atools.hpp"

namespace {

/// The string resource of a code; 0 for codes that have none.
constexpr long textOf(KivErrorCode code) {
  if (code >= 1 && code <= 118)
    return 4800 + code;
  return code == KIV_ERROR_UNKNOWN ? 4999 : 0;
}

} // namespace

SV::String const & Kiv_GetErrorString(KivErrorCode code) {
  return KivStringAcceleratorTable::GetGlobal()->GetString(textOf(code));
}

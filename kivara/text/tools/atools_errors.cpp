#include "aacceler.hpp"
#include "atools.hpp"
#include "base/textids.hpp"

namespace {

/// The identifier of a code's string resource; 0 for a code that has none.
constexpr long textOf(KivErrorCode code) {
  if (code >= 1 && code <= 118)
    return kivara::texts::kFirstError + code - 1;
  return code == KIV_ERROR_UNKNOWN ? kivara::texts::kUnknownError : 0;
}

} // namespace

SV::String const & Kiv_GetErrorString(KivErrorCode code) {
  return KivStringAcceleratorTable::GetGlobal()->GetString(textOf(code));
}

#include "sv/exchange.hpp"

#include "tools/winapi.hpp"

namespace SV {

unsigned long Exchange::RegisterFormatName(String const & name) {
  return name.Len() > 0 ? RegisterClipboardFormatA(name.c_str()) : 0;
}

} // namespace SV

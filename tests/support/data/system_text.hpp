#pragma once
/// \file
/// The system's own words.

#include "tools/winapi.hpp"

#include <string>

namespace support {

/// The system's text for an error code, without full stop and line end; empty where the system has none.
inline std::string systemText(unsigned long code) {
  char text[512] = "";
  DWORD const length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                                      text, sizeof text, nullptr);
  std::string const whole(text, length);
  return whole.substr(0, whole.find_last_not_of(".\r\n ") + 1);
}

} // namespace support

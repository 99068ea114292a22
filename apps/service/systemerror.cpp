#include "systemerror.hpp"

#include "tools/winapi.hpp"

#include <cstring>

using SV::String;

namespace service {

String systemError(int error) {
  char text[512] = "";
  DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                static_cast<DWORD>(error), 0, text, sizeof text, nullptr);
  while (length > 0 && std::strchr(".\r\n ", text[length - 1]) != nullptr)
    text[--length] = '\0';
  String const number = "system error " + String(error);
  return length > 0 ? number + " (" + text + ")" : number;
}

} // namespace service

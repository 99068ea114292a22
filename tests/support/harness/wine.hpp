#pragma once
/// \file
/// Which of the two systems this is, for what differs between them.

#include "tools/winapi.hpp"

namespace support {

inline bool isWine() { return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr; }

} // namespace support

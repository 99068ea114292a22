#pragma once
/// \file
/// New unique identifiers from the system. Internal.

#include "tools/string.hpp"
#include "tools/winapi.hpp"

#include <rpc.h>

namespace kivara {

/// A new identifier in the system's text form; empty if the system has none. It need only be unique on this machine.
inline SV::String newUuid() {
  UUID id = {};
  static_cast<void>(UuidCreate(&id));
  RPC_CSTR text = nullptr;
  if (UuidToStringA(&id, &text) != RPC_S_OK)
    return {};
  SV::String result(reinterpret_cast<char const *>(text));
  RpcStringFreeA(&text);
  return result;
}

} // namespace kivara

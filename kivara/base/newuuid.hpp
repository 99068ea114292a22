#pragma once
/// \file
/// A new identifier of the system, for names and for whoever asks for one. Internal.

#include "tools/string.hpp"
#include "tools/winapi.hpp"

#include <rpc.h>

namespace kivara {

/// The system's text of a new identifier as it stands; empty where the system gives none. One that is unique on this machine alone
/// will do.
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

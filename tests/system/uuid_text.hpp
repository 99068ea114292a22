#pragma once
/// \file
/// The system's text of a new UUID, given by the test in the system's place.

#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <rpc.h>

namespace uuidtext {

inline char systemsText[] = "ABCDEF01-2345-6789-ABCD-EF0123456789";
inline int released = 0; ///< how often that text was given back

inline RPC_STATUS WINAPI giveText(UUID const *, RPC_CSTR * text) {
  *text = reinterpret_cast<RPC_CSTR>(systemsText);
  return RPC_S_OK;
}
inline RPC_STATUS WINAPI giveNoText(UUID const *, RPC_CSTR *) { return RPC_S_OUT_OF_MEMORY; }
inline RPC_STATUS WINAPI countRelease(RPC_CSTR * text) {
  released += *text == reinterpret_cast<RPC_CSTR>(systemsText) ? 1 : 0;
  return RPC_S_OK;
}

/// The library gets its texts from \p function from now on.
template <class Function> void useForText(Function * function) {
  released = 0;
  support::replaceImports(GetModuleHandleA("kivara.dll"), "RPCRT4.dll",
                          {{"UuidToStringA", reinterpret_cast<void *>(function)},
                           {"RpcStringFreeA", reinterpret_cast<void *>(countRelease)}});
}

} // namespace uuidtext

#pragma once
/// \file
/// Files of the runtime that close themselves. Internal.

#include "handles/handle.hpp"

#include <cstdio>
#include <io.h>

namespace kivara {

/// An open file, or none; closed by the destructor.
using OpenFile = handles::Stream;

/// Opens a file as fopen does, for this program alone; null if that fails. The runtime would hand it on to every program that is started
/// while it is open, and that one would keep it: a log could not be renamed any more, and the file of an account could be read.
inline FILE * openForThisProgram(char const * name, char const * mode) {
  FILE * const file = std::fopen(name, mode);
  if (file != nullptr)
    SetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))), HANDLE_FLAG_INHERIT, 0);
  return file;
}

/// The same, closed by its owner.
inline OpenFile openFile(char const * name, char const * mode) { return OpenFile(openForThisProgram(name, mode)); }

} // namespace kivara

#pragma once
/// \file
/// Files of the runtime that close themselves. Internal.

#include "handles/handle.hpp"

namespace kivara {

/// An open file, or none; closed by the destructor.
using OpenFile = handles::Stream;

/// Opens a file as fopen does; none if that fails.
inline OpenFile openFile(char const * name, char const * mode) { return OpenFile(std::fopen(name, mode)); }

} // namespace kivara

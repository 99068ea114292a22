#pragma once
/// \file
/// Files of the runtime that close themselves. Internal.

#include "handles/handle.hpp"

namespace kivara {

/// A file that is open, or none; closed with this object.
using OpenFile = handles::Stream;

/// Opens as fopen does; none when it fails.
inline OpenFile openFile(char const * name, char const * mode) { return OpenFile(std::fopen(name, mode)); }

} // namespace kivara

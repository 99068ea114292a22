#pragma once
/// \file
/// The messages of severe exceptions.

#include "tools/string.hpp"

namespace kivara {

/// The whole text of a severe exception's message box.
/// \param name  the application's name
/// \param code  0x100, 0x200 and 0x400 have texts of their own, every other code the general one
/// \param arg   what the exception is about; 0 is not told. For 0x400 the address of the resource file's name, of which
///              the first 1023 bytes are told; the name is empty where nothing can be read
SV::String severeExceptionText(SV::String const & name, long code, unsigned long arg);

} // namespace kivara

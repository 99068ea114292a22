#pragma once
/// \file
/// The frame's answer to the toolkit's severe exceptions.

#include "tools/string.hpp"

namespace kivara {

/// True if the program can continue: the next resource manager of the chain is now active, or a resource file was only tried
/// for a language. Nothing is shown then. Otherwise the message has been shown under the application's name, or written to the
/// log under suppression, and AppExit has been triggered. False at once while another exception is being handled.
bool handleSevereException(SV::String const & applicationName, long code, unsigned long arg);

/// The whole text of a severe exception's message box.
/// \param name  the application's name
/// \param code  0x100, 0x200 and 0x400 have texts of their own, every other code the general one
/// \param arg   the subject of the exception; 0 is left out. For 0x400 the address of the resource file's name, of which
///              the first 1023 bytes are shown; the name is empty if nothing can be read there
SV::String severeExceptionText(SV::String const & name, long code, unsigned long arg);

} // namespace kivara

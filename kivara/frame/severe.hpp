#pragma once
/// \file
/// The frame's answer to the toolkit's severe exceptions.

#include "tools/string.hpp"

namespace kivara {

/// True, without a word, when the program can go on: the next resource manager of the chain is now active, or a
/// resource file was only being tried for a language. Otherwise the message has been shown under the application's
/// name, or has gone to the log under suppression, and AppExit has been triggered. An exception while another one is
/// being handled is answered with false at once.
bool handleSevereException(SV::String const & applicationName, long code, unsigned long arg);

/// The whole text of a severe exception's message box.
/// \param name  the application's name
/// \param code  0x100, 0x200 and 0x400 have texts of their own, every other code the general one
/// \param arg   what the exception is about; 0 is left out. For 0x400 the address of the resource file's name, of which
///              the first 1023 bytes are shown; the name is empty where nothing can be read
SV::String severeExceptionText(SV::String const & name, long code, unsigned long arg);

} // namespace kivara

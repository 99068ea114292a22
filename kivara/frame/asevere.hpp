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

} // namespace kivara

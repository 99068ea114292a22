#pragma once
/// \file
/// The frame's answer to the toolkit's severe exceptions.

#include "tools/string.hpp"

namespace kivara {

/// True when the program can go on, which it is then not told about. Otherwise the message has been shown under the
/// application's name; under suppression it has gone to the log instead. An exception while another one is being
/// handled is answered with false at once.
bool handleSevereException(SV::String const & applicationName, long code, unsigned long arg);

} // namespace kivara

#pragma once
/// \file
/// Names of files.

#include "tools/string.hpp"

namespace modeler {

/// Whether two names mean one file: their full paths, not case-sensitive. The file system is not asked, so that one of two links, or a
/// short name, is a file of its own.
bool isSameFile(SV::String const & one, SV::String const & other);

} // namespace modeler

#pragma once
/// \file
/// The lines of "lang.ini". Internal.

#include <cstdio>

namespace kivara {

/// Reads the next line that names a language. Lines are read 99 characters at a time.
/// \param id  the number on the line, of which only the low 16 bits count; 0 if it has no digits
/// \return false at the end of the file
bool nextLanguage(FILE * file, unsigned short & id);

} // namespace kivara

#pragma once
/// \file
/// The lines of "lang.ini". Internal.

#include <cstdio>

namespace kivara {

/// Reads on to the next line that names a language. Lines are taken 99 characters at a time.
/// \param id  the number on the line, 0 for one without digits; of a larger number the low 16 bits
/// \return false at the end of the file
bool nextLanguage(FILE * file, unsigned short & id);

} // namespace kivara

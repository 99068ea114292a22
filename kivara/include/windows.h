/// \file
/// Stands before the platform's header of that name, so that a source may include it after headers of the library too. By itself it
/// is the platform's header and nothing else.
#pragma GCC system_header // #include_next is of this compiler
#include_next <windows.h>

#ifdef KIVARA_ENDS_WINDOWS_NAMES
#include "tools/winnames.hpp"
#endif

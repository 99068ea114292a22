#pragma once
/// \file
/// The platform's header for our own sources: lean, and without the macros that would rename members of ours, private ones too.
/// Public headers do not include it; for handles they use the structures that the platform declares. A product may
/// include windows.h itself, before or after the headers of the library, and then lacks only what tools/winnames.hpp undefines.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "tools/winnames.hpp"

#undef GetMessage
#undef MessageBox
#undef LoadImage
#undef LoadBitmap
#undef LoadIcon
#undef CreateWindow
#undef FindWindow
#undef GetObject
#undef GetClassName
#undef GetCurrentDirectory
#undef RGB

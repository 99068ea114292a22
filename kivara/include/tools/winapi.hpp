#pragma once
/// \file
/// The one place that includes the platform's header: a lean version of it, without the macros that would rename members of
/// ours. Public headers do not include it; for handles they use the structures that the platform declares.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#undef DrawText
#undef GetUserName
#undef GetMessage
#undef MessageBox
#undef LoadString
#undef LoadImage
#undef LoadBitmap
#undef LoadIcon
#undef CreateWindow
#undef FindWindow
#undef GetObject
#undef GetClassName
#undef GetCurrentDirectory
#undef RGB

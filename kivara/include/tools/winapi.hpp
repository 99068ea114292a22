#pragma once
/// \file
/// The one place that includes the platform's header: lean, and without the macros that would rename our own members.
/// Public headers do not include it; they name handles by the structures that the platform declares for them.

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

#pragma once
/// \file
/// KIV_API: what kivara.dll exports.

#include "tools/winnames.hpp"

#ifdef KIVARA_EXPORTS
#define KIV_API __declspec(dllexport)
#else
#define KIV_API __declspec(dllimport)
#endif

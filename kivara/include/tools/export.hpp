#pragma once
/// \file
/// TL_API: what TL0105.dll exports. Each public header includes this one or its like.

#include "tools/winnames.hpp"

#ifdef TL0105_EXPORTS
#define TL_API __declspec(dllexport)
#else
#define TL_API __declspec(dllimport)
#endif

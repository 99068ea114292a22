#pragma once
/// \file
/// Functions on C strings that accept null, which counts as the empty string. Otherwise they do the same as the runtime's
/// functions, in its current locale. Any thread may call them.

#include "tools/export.hpp"

#include <cstdint>

namespace SV {

/// Length in characters, without the NUL; at most 0x7FFFFFF3.
TL_API std::int32_t h_strlen(char const * text);
TL_API std::int32_t h_strlen(wchar_t const * text);

/// Compares bytes: negative if \p a comes before \p b, 0 if they are equal, positive if it comes after.
TL_API int h_strcmp(char const * a, char const * b);

/// Like h_strcmp, but not case-sensitive.
TL_API int h_stricmp(char const * a, char const * b);

/// The first \p c in \p text, whose NUL counts too; null if there is none or \p text is null.
TL_API char const * h_strchr(char const * text, char c);
TL_API char * h_strchr(char * text, char c);

/// The first \p part in \p text; null if there is none or \p text is null. An empty or null \p part is found at the start.
TL_API char const * h_strstr(char const * text, char const * part);
TL_API char * h_strstr(char * text, char const * part);

/// Converts \p length characters to lower or upper case in place and returns \p text. A null text or a length below 1
/// changes nothing.
TL_API char * h_strlwr(char * text, std::int32_t length);
TL_API char * h_strupr(char * text, std::int32_t length);

/// The number at the start of \p text, after white space; 0 if there is none. A number out of range gives what the runtime
/// gives.
TL_API int h_atoi(char const * text);
TL_API long h_atol(char const * text);
TL_API unsigned long h_atoul(char const * text);

} // namespace SV

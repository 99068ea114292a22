#pragma once
/// \file
/// C texts with the tools library's tolerance: a null pointer counts as the empty text. Otherwise these are the runtime's
/// functions under its current locale. All of them may be called from any thread.

#include "tools/export.hpp"

#include <cstdint>

namespace SV {

/// Length in characters, without the NUL; at most 0x7FFFFFF3.
TL_API std::int32_t h_strlen(char const * text);
TL_API std::int32_t h_strlen(wchar_t const * text);

/// Byte order: negative, 0 or positive as \p a stands before, with or behind \p b.
TL_API int h_strcmp(char const * a, char const * b);

/// As h_strcmp, without regard to case.
TL_API int h_stricmp(char const * a, char const * b);

/// The first \p c in \p text, its NUL included; null where there is none or \p text is null.
TL_API char const * h_strchr(char const * text, char c);
TL_API char * h_strchr(char * text, char c);

/// The first \p part in \p text; null where there is none or \p text is null. An empty or null \p part is found at the start.
TL_API char const * h_strstr(char const * text, char const * part);
TL_API char * h_strstr(char * text, char const * part);

/// Lowers or raises \p length characters in place and gives \p text back. A null text or a length below 1 changes nothing.
TL_API char * h_strlwr(char * text, std::int32_t length);
TL_API char * h_strupr(char * text, std::int32_t length);

/// The number at the start of \p text, behind white space; 0 where there is none. Out of range as the runtime answers it.
TL_API int h_atoi(char const * text);
TL_API long h_atol(char const * text);
TL_API unsigned long h_atoul(char const * text);

} // namespace SV

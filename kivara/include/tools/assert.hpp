#pragma once
/// \file
/// The toolkit's assertion.

#include "tools/export.hpp"

namespace SV {

/// Reports a condition that is false: one line to the debugger and to stderr, with expression, message, file and line. In
/// debug builds of the toolkit it also stops in the debugger. If the condition is true, it does nothing. Any thread may call
/// it.
/// \param condition   what has to be true
/// \param expression  the condition as text
/// \param message     an additional message, or null
/// \param file, line  the place of the assertion
TL_API void SV_CheckAssert(bool condition, char const * expression, char const * message, char const * file,
                           unsigned long line);

} // namespace SV

/// Checks in every build.
#define SV_CHECK(condition, expression)                                                                                \
  ((condition) ? static_cast<void>(0) : ::SV::SV_CheckAssert(false, expression, nullptr, __FILE__, __LINE__))

/// Checks only where KIVARA_DEBUG is defined.
#ifdef KIVARA_DEBUG
#define SV_DEBUG_CHECK(condition, expression) SV_CHECK(condition, expression)
#else
#define SV_DEBUG_CHECK(condition, expression) static_cast<void>(0)
#endif

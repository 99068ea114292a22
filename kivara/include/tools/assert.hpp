#pragma once
/// \file
/// The toolkit's assertion.

#include "tools/export.hpp"

namespace SV {

/// Reports a condition that does not hold: one line to the debugger and to stderr, with expression, message, file and line.
/// In debug builds of the toolkit it also stops in the debugger. A condition that holds does nothing.
/// \param condition   what has to hold
/// \param expression  its text
/// \param message     what to tell beside it, or null
/// \param file, line  where it stands
/// Any thread may call it.
TL_API void SV_CheckAssert(bool condition, char const * expression, char const * message, char const * file,
                           unsigned long line);

} // namespace SV

/// Checks in every build.
#define SV_CHECK(condition, expression)                                                                                \
  ((condition) ? static_cast<void>(0) : ::SV::SV_CheckAssert(false, expression, nullptr, __FILE__, __LINE__))

/// Checks in debug form only: where KIVARA_DEBUG is set.
#ifdef KIVARA_DEBUG
#define SV_DEBUG_CHECK(condition, expression) SV_CHECK(condition, expression)
#else
#define SV_DEBUG_CHECK(condition, expression) static_cast<void>(0)
#endif

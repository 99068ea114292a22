#pragma once
/// \file
/// The lowest diagnostic layer: trace lines, debug output, internal errors, failed assertions, and tests of pointers.
///
/// Nothing here reports an error to its caller, and everything works while the program is half built or failing. Any thread may
/// call; nothing is locked, so lines of several threads may interleave.
///
/// \code
///   if (window == nullptr)
///     displayErrorMessage("amodule.cpp", 246); // reports and returns: carry on
///   KIV_ASSERT(count >= 0, "the count of open files");
///   KIV_TRACE_HERE();
///   Kiv_Trace("opened %s", name);              // "amodule.cpp [251]: opened report.txt"
/// \endcode

#include "export.hpp"

#include <cstddef>
#include <cstdio>

/// \name Trace lines
/// A printf-style channel to a file or a standard stream, off until it is switched on.
/// @{

/// Flushes the stream in use, if there is one, and takes another: not owned; null stands for stdout.
KIV_API void Kiv_TraceSetHandle(FILE * stream);

/// Sets the position that stands in front of the next line, and of that line only. The text is not copied: it has to outlive
/// the next Kiv_Trace.
KIV_API void Kiv_TraceSetSourceInfo(char const * file, int line);

/// Writes the formatted text and a line end and flushes the stream; stdout where none is set. Switched off, nothing is done: the
/// format is not looked at and a source position stays for a later line.
KIV_API void Kiv_Trace(char const * format, ...) __attribute__((format(ms_printf, 1, 2)));

/// Switches tracing on or off. It is off at start.
KIV_API void Kiv_EnableTracing(bool on);
KIV_API bool Kiv_IsTracingEnabled();

/// A counter that nothing reads.
KIV_API void Kiv_IncTraceCounter();
KIV_API void Kiv_DecTraceCounter();
/// @}

/// Writes the text, as it stands and without a line end of its own, to the debugger if one is attached and to the console if the
/// program was started with "-console". Otherwise nothing happens. A null text is ignored.
KIV_API void KivDebugOut(char const * text);

/// \name Internal errors
/// @{

/// Marks the connection to the database as lost: internal errors then tell of that instead.
KIV_API void Kiv_SetDeadNet(bool dead);
KIV_API bool Kiv_IsDeadNet();

/// Reports a broken invariant and returns: a "[dEM]" line on the debug output and, unless dialogs are suppressed, a box with the
/// module, the line and the version. With "-assert" the box offers Cancel, which stops in the debugger. Without an application
/// object nothing happens; with a lost database connection displayDeadNetworkMessage is called instead.
/// \param file  the module's source name, such as "aparser.cpp"; its last four characters do not show in the code
/// \param line  the place in it
KIV_API void displayErrorMessage(char const * file, unsigned line);

/// Tells, once per process, that the connection to the database is lost. Under suppression it goes to the suppression log.
KIV_API void displayDeadNetworkMessage();

/// Tells, once per process, that the program ends: in a box with "-assert", in the suppression log under suppression.
KIV_API void displayExitMessage();
/// @}

/// \name Assertions
/// @{

/// Reports a failed assertion in a box, unless dialogs are suppressed, and on the debug output, and returns: an assertion never
/// stops the program by itself. Callers use KIV_ASSERT.
/// \return 1 when the box was cancelled, otherwise 0
KIV_API int KIV_Assert_Fail(char const * file, int line, char const * expression, char const * userMessage);

/// Whether KIV_ASSERT tests in a release build: with "-assert" on the command line.
KIV_API bool Kiv_AreReleaseAssertionsEnabled();

/// @}

/// Tests a condition in debug builds, and in release builds when the program was started with "-assert".
#ifdef KIVARA_DEBUG
#define KIV_ASSERT(condition, userMessage)                                                                             \
  ((condition) ? static_cast<void>(0)                                                                                  \
               : static_cast<void>(::KIV_Assert_Fail(__FILE__, __LINE__, #condition, userMessage)))
#else
#define KIV_ASSERT(condition, userMessage)                                                                             \
  (!::Kiv_AreReleaseAssertionsEnabled() || (condition)                                                                 \
       ? static_cast<void>(0)                                                                                          \
       : static_cast<void>(::KIV_Assert_Fail(__FILE__, __LINE__, #condition, userMessage)))
#endif

/// Puts this place in front of the next trace line.
#define KIV_TRACE_HERE() ::Kiv_TraceSetSourceInfo(__FILE__, __LINE__)

/// \name Pointers
/// Tests for diagnostics: what is readable now need not be so later. A pointer whose lower half lies in 0xCCCC0000, 0xCDCD0000,
/// 0xDDDD0000 or 0xFDFD0000 is taken for one read from uninitialised, freed or guard memory, whatever its upper half holds.
/// @{

/// False for null, for a poisoned pointer and for a range of \p length bytes that cannot be read.
KIV_API bool Kiv_MemoryIsReadable(void const * pointer, std::size_t length);

/// As Kiv_MemoryIsReadable, and the range can be written as well.
KIV_API bool Kiv_MemoryIsWriteable(void const * pointer, std::size_t length);

/// True for null, which stands for an absent text; otherwise whether a text with its NUL can be read there.
KIV_API bool Kiv_MemoryIsString(char const * pointer);
/// @}

/// Marks a place in the debug output, unless the environment variable "KIV_NO_HEAPCHECK" is set. No heap is walked.
/// \param file, line  the place
/// \param ignored     not used
KIV_API void Kiv_DoHeapCheck(char const * file, long line, char const * ignored);

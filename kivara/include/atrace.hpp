#pragma once
/// \file
/// The lowest diagnostic layer: trace lines, debug output, internal errors, failed assertions, and tests of pointers.
///
/// Nothing here reports an error to its caller, and everything works while the program is half built or failing. Any
/// thread may call; nothing is locked, so lines of several threads may interleave, and the position of the next trace
/// line is one for all threads. A text that grows too long is cut: the line of an internal error at 1023 characters,
/// the texts of an assertion at 8191, the line of a heap check at 511.
///
/// \code
///   if (window == nullptr)
///     displayErrorMessage("amodule.cpp", 246); // reports and returns: carry on
///   KIV_ASSERT(count >= 0, "the count of open files");
///   KIV_TRACE_HERE();
///   Kiv_Trace("opened %s", name);              // "amodule.cpp [251]: opened report.txt"
/// \endcode

#include "acmdline.hpp"
#include "export.hpp"

#include <cstddef>
#include <cstdio>

/// \name Trace lines
/// A printf-style channel to a file or a standard stream, off until it is switched on.
/// @{

/// Flushes the stream in use, if there is one, and takes another; null stands for stdout. It is not owned: whoever closes
/// it sets another one before.
KIV_API void Kiv_TraceSetHandle(FILE * stream);

/// Sets the position that stands in front of the next line, and of that line only. The text is not copied: it has to
/// outlive the next Kiv_Trace. A null file takes a position back.
KIV_API void Kiv_TraceSetSourceInfo(char const * file, int line);

/// Writes the formatted text, in the form of the runtime's printf, and a line end, and flushes the stream; stdout where
/// none is set. A null format is an empty line. Switched off, nothing is done: the format is not looked at and a source
/// position stays for a later line.
KIV_API void Kiv_Trace(char const * format, ...) __attribute__((format(ms_printf, 1, 2)));

/// Switches tracing on or off. It is off at start.
KIV_API void Kiv_EnableTracing(bool on);
KIV_API bool Kiv_IsTracingEnabled();

/// A counter that nothing reads.
KIV_API void Kiv_IncTraceCounter();
KIV_API void Kiv_DecTraceCounter();
/// @}

/// Writes the text, as it stands and without a line end of its own, to the debugger if one is attached and to the
/// console (stderr, in the OEM character set) if the program was started with "-console". Otherwise nothing happens. A
/// null text is ignored. A line begins with a tag in square brackets that names its origin, "[aproc] ...".
KIV_API void KivDebugOut(char const * text);

/// \name Internal errors
/// @{

/// Marks the connection to the database as lost: internal errors then tell of that instead.
KIV_API void Kiv_SetDeadNet(bool dead);
KIV_API bool Kiv_IsDeadNet();

/// Reports a broken invariant and returns: a "[dEM]" line on the debug output and, unless dialogs are suppressed, a box
/// with the module, the line and the version. With "-assert" the box offers Cancel, which stops in the debugger;
/// without a debugger that ends the process. The application window, if there is one, is updated after the box. Without
/// an application object nothing happens; with a lost database connection displayDeadNetworkMessage is called instead.
/// The text is that of the language's resources; without a resource manager it is a built-in one in English.
/// \param file  the module's source name, such as "aparser.cpp"; its last four characters do not show in the code. Null
///              counts as empty
/// \param line  the place in it
KIV_API void displayErrorMessage(char const * file, unsigned line);

/// Tells, once per process, that the connection to the database is lost, in a box as that of an internal error. Under
/// suppression it goes to the suppression log. The process goes on.
KIV_API void displayDeadNetworkMessage();

/// Tells, once per process, that the program ends: in a box with OK and Cancel, with "-assert" only; under suppression in
/// the suppression log, with or without "-assert".
KIV_API void displayExitMessage();
/// @}

/// \name Assertions
/// @{

/// Reports a failed assertion in a box, unless dialogs are suppressed, and on the debug output, and returns: an
/// assertion never stops the program by itself. Callers use KIV_ASSERT. Texts that are null count as empty.
/// \return 1 when the box was cancelled, otherwise 0
KIV_API int KIV_Assert_Fail(char const * file, int line, char const * expression, char const * userMessage);

/// Whether assertions test: in debug builds, which define KIVARA_DEBUG, and in release builds when the program was started
/// with "-assert".
#ifdef KIVARA_DEBUG
#define KIV_ASSERTIONS_ENABLED() true
#else
#define KIV_ASSERTIONS_ENABLED() ::KivCmdline::releaseAssertionsEnabled()
#endif

/// Tests a condition and reports one that does not hold under the given place and text. Where assertions do not test,
/// nothing of it is evaluated.
#define KIV_ASSERT_AT(condition, expression, userMessage, file, line)                                                  \
  (!KIV_ASSERTIONS_ENABLED() || (condition)                                                                            \
       ? static_cast<void>(0)                                                                                          \
       : static_cast<void>(::KIV_Assert_Fail(file, line, expression, userMessage)))

/// The same under its own text and place.
#define KIV_ASSERT(condition, userMessage) KIV_ASSERT_AT(condition, #condition, userMessage, __FILE__, __LINE__)
/// @}

/// Puts this place in front of the next trace line.
#define KIV_TRACE_HERE() ::Kiv_TraceSetSourceInfo(__FILE__, __LINE__)

/// \name Pointers
/// Tests for diagnostics: what is readable now need not be so later. A pointer whose lower half is 0xCCCC, 0xCDCD,
/// 0xDDDD or 0xFDFD with any four digits behind is taken for one read from uninitialised, freed or guard memory,
/// whatever its upper half holds. Guard pages count as not accessible, and a test leaves them as they are.
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

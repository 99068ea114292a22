#pragma once
/// \file
/// The lowest diagnostic layer: trace lines, debug output, internal errors, failed assertions, and tests of pointers.
///
/// Nothing here reports an error to its caller, and everything works while the program is still starting or already
/// failing. Any thread may call. Nothing is locked: lines of several threads may interleave, and all threads share the
/// source position of the next trace line. Long texts are cut: the line of an internal error after 1023 bytes, the
/// texts of an assertion after 8191, the line of a heap check after 511.
///
/// \code
///   if (window == nullptr)
///     displayErrorMessage("amodule.cpp", 246); // reports and returns
///   KIV_ASSERT(count >= 0, "the count of open files");
///   KIV_TRACE_HERE();
///   Kiv_Trace("opened %s", name);              // "amodule.cpp [251]: opened report.txt"
/// \endcode

#include "acmdline.hpp"
#include "export.hpp"

#include <cstddef>
#include <cstdio>

/// \name Trace lines
/// A printf-style channel to a file or a standard stream; off until it is switched on.
/// @{

/// Flushes the current stream, if there is one, and switches to another; null stands for stdout. The stream is not
/// owned: set another one before closing it.
KIV_API void Kiv_TraceSetHandle(FILE * stream);

/// Sets the source position that the next line, and only that line, begins with. The string is not copied: it must
/// outlive the next Kiv_Trace. A null file removes a position that was set.
KIV_API void Kiv_TraceSetSourceInfo(char const * file, int line);

/// Writes a text, formatted as by the runtime's printf, and a line end, and flushes the stream; without a stream it
/// sets stdout. A null format gives an empty line. While tracing is off, it does nothing: the format is not read, and a
/// source position is kept for a later line.
KIV_API void Kiv_Trace(char const * format, ...) __attribute__((format(ms_printf, 1, 2)));

/// Switches tracing on or off. It is off at start.
KIV_API void Kiv_EnableTracing(bool on);
KIV_API bool Kiv_IsTracingEnabled();

/// A counter that nothing reads, kept for products that call these.
KIV_API void Kiv_IncTraceCounter();
KIV_API void Kiv_DecTraceCounter();
/// @}

/// Writes the text unchanged, without adding a line end, to the debugger if one is attached, and to the console
/// (stderr, in the OEM character set) if the program was started with "-console". Otherwise it does nothing. A null
/// text is ignored. A line begins with a tag in square brackets that names its origin: "[aproc] ...".
KIV_API void KivDebugOut(char const * text);

/// \name Internal errors
/// @{

/// Marks the connection to the database as lost or working. While it is lost, internal errors report that instead.
KIV_API void Kiv_SetDeadNet(bool dead);
KIV_API bool Kiv_IsDeadNet();

/// Reports a broken invariant and returns: writes a "[dEM]" line to the debug output and, unless dialogs are
/// suppressed, shows a box with the module, the line and the version. With "-assert" the box offers Cancel, which stops
/// the program in the debugger; without a debugger that ends the process. When the box closes, the window of this
/// thread that had the focus gets it back, and the application window, if there is one, is updated. Without an
/// application object nothing happens; while the database connection is lost, displayDeadNetworkMessage is called
/// instead. The text comes from the resources of the current language; without a resource manager a built-in English
/// text is used.
/// \param file  the module's source name, such as "aparser.cpp"; its last four characters are left out of the code.
///              Null counts as empty
/// \param line  the line in the module
KIV_API void displayErrorMessage(char const * file, unsigned line);

/// Reports, once per process, that the connection to the database is lost, in a box like that of an internal error.
/// Under suppression the message goes to the suppression log, if that has a name. It counts as reported even if no box
/// was shown. The process continues.
KIV_API void displayDeadNetworkMessage();

/// Shows, once per process, that the program ends: with "-assert" in a box with OK and Cancel, otherwise not at all.
/// Under suppression the notice goes to the suppression log, if that has a name, with or without "-assert". It counts
/// as shown even if no box was shown.
KIV_API void displayExitMessage();
/// @}

/// \name Assertions
/// @{

/// Reports a failed assertion and returns: shows a box, unless dialogs are suppressed, and writes to the debug output.
/// An assertion never stops the program by itself. Callers use KIV_ASSERT. Null texts count as empty.
/// \return 1 if the box was cancelled, otherwise 0
KIV_API int KIV_Assert_Fail(char const * file, int line, char const * expression, char const * userMessage);

/// Whether assertions are active: always in debug builds, which define KIVARA_DEBUG, and in release builds if the
/// program was started with "-assert".
#ifdef KIVARA_DEBUG
#define KIV_ASSERTIONS_ENABLED() true
#else
#define KIV_ASSERTIONS_ENABLED() ::KivCmdline::releaseAssertionsEnabled()
#endif

/// Tests a condition and reports it with the given text and place if it is false. If assertions are not active, no
/// argument is evaluated.
#define KIV_ASSERT_AT(condition, expression, userMessage, file, line)                                                  \
  (!KIV_ASSERTIONS_ENABLED() || (condition)                                                                            \
       ? static_cast<void>(0)                                                                                          \
       : static_cast<void>(::KIV_Assert_Fail(file, line, expression, userMessage)))

/// The same with the condition's own text and place.
#define KIV_ASSERT(condition, userMessage) KIV_ASSERT_AT(condition, #condition, userMessage, __FILE__, __LINE__)
/// @}

/// Lets the next trace line begin with this place.
#define KIV_TRACE_HERE() ::Kiv_TraceSetSourceInfo(__FILE__, __LINE__)

/// \name Pointers
/// Tests for diagnostics: memory that is readable now need not be readable later. A pointer whose lower 32 bits are
/// 0xCCCCnnnn, 0xCDCDnnnn, 0xDDDDnnnn or 0xFDFDnnnn is poisoned: it was probably read from uninitialised, freed or
/// guard memory. Its upper half does not matter. Guard pages count as inaccessible, and a test leaves them as they are.
/// @{

/// False for null, for a poisoned pointer, and if the \p length bytes cannot all be read.
KIV_API bool Kiv_MemoryIsReadable(void const * pointer, std::size_t length);

/// True if Kiv_MemoryIsReadable is true and the bytes can be written as well.
KIV_API bool Kiv_MemoryIsWriteable(void const * pointer, std::size_t length);

/// True for null, which stands for an absent string; otherwise whether a string can be read there up to its NUL. False
/// for a poisoned pointer.
KIV_API bool Kiv_MemoryIsString(char const * pointer);
/// @}

/// Marks a place in the debug output, unless the environment variable "KIV_NO_HEAPCHECK" is set. The heap is not
/// checked.
/// \param file, line  the place
/// \param ignored     not used
KIV_API void Kiv_DoHeapCheck(char const * file, long line, char const * ignored);

#include "atrace.hpp"

#include "acmdline.hpp"
#include "base/boundedtext.hpp"
#include "tools/winapi.hpp"

#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace {

bool tracingEnabled = false;
FILE * traceStream = nullptr;
char const * pendingFile = nullptr;
int pendingLine = 0;
unsigned traceCounter = 0; // unsigned: it may wrap in a loop that never ends

// The runtime's own functions (__ms_): those of libstdc++ interpret some formats differently.
void writePrefix() {
  __ms_fprintf(traceStream, "%s [%d]: ", pendingFile, pendingLine);
  pendingFile = nullptr;
  pendingLine = 0;
}

/// The length of the longest start of the text that has at most so many bytes and ends after a whole character.
std::size_t pieceLength(char const * text, std::size_t most) {
  std::size_t length = 0;
  while (text[length] != '\0') {
    bool const isPair = IsDBCSLeadByte(static_cast<BYTE>(text[length])) && text[length + 1] != '\0';
    std::size_t const next = length + (isPair ? 2 : 1);
    if (next > most)
      break;
    length = next;
  }
  return length;
}

/// The console shows the OEM character set. Lines are written whole, only very long texts in pieces: that needs little
/// stack and no heap, which may be what is broken.
void writeToConsole(char const * text) {
  char piece[4096];
  while (std::size_t const length = pieceLength(text, sizeof piece - 1)) {
    std::memcpy(piece, text, length);
    piece[length] = '\0';
    CharToOemBuffA(piece, piece, static_cast<DWORD>(length + 1)); // with the NUL, since the result may be shorter
    piece[length] = '\0';
    std::fputs(piece, stderr);
    text += length;
  }
}

} // namespace

void Kiv_TraceSetHandle(FILE * stream) {
  if (traceStream != nullptr)
    std::fflush(traceStream);
  traceStream = stream != nullptr ? stream : stdout;
}

void Kiv_TraceSetSourceInfo(char const * file, int line) {
  pendingFile = file;
  pendingLine = line;
}

void Kiv_Trace(char const * format, ...) {
  if (!tracingEnabled)
    return;
  if (traceStream == nullptr)
    Kiv_TraceSetHandle(nullptr);
  if (pendingFile != nullptr)
    writePrefix();
  va_list arguments;
  va_start(arguments, format);
  __ms_vfprintf(traceStream, format != nullptr ? format : "", arguments);
  va_end(arguments);
  std::fputc('\n', traceStream);
  std::fflush(traceStream);
}

void Kiv_EnableTracing(bool on) { tracingEnabled = on; }
bool Kiv_IsTracingEnabled() { return tracingEnabled; }

void Kiv_IncTraceCounter() { ++traceCounter; }
void Kiv_DecTraceCounter() { --traceCounter; }

void KivDebugOut(char const * text) {
  if (text == nullptr)
    return;
  if (IsDebuggerPresent())
    OutputDebugStringA(text);
  if (KivCmdline::dynamicConsole())
    writeToConsole(text);
}

void Kiv_DoHeapCheck(char const * file, long line, char const *) {
  if (std::getenv("KIV_NO_HEAPCHECK") != nullptr)
    return;
  kivara::BoundedText<512> const text("[debug] Performing HeapCheck %s (%u)", kivara::orEmpty(file),
                                      static_cast<unsigned>(line));
  KivDebugOut(text.c_str());
  KivDebugOut(" - done\n");
}

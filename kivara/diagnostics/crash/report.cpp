#include "diagnostics/crash/report.hpp"

#include "fixed_values.hpp"
#include "handles/handle.hpp"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <io.h>
#include <utility>

namespace kivara::crash {
namespace {

constexpr std::size_t kBufferSize = 4096;

/// The length of a text that _vsnprintf wrote to a buffer of that size: all of it, where the text did not fit.
std::size_t writtenLength(int result, std::size_t size) {
  return result < 0 || static_cast<std::size_t>(result) > size ? size : static_cast<std::size_t>(result);
}

bool isScrambled() { return dumpState().scramble && std::getenv("KIVDUMP_NO_ENCRYPT") == nullptr; }

void put(char * text, std::size_t length) {
  if (isScrambled())
    for (std::size_t i = 0; i < length; ++i)
      text[i] = static_cast<char>(static_cast<unsigned char>(text[i]) ^ fixed::kReportKey);
  DWORD written = 0;
  WriteFile(dumpState().report, text, static_cast<DWORD>(length), &written, nullptr);
}

void putInPieces(char const * text) {
  char piece[kBufferSize];
  for (std::size_t left = std::strlen(text); left != 0;) {
    std::size_t const length = left < kBufferSize ? left : kBufferSize;
    std::memcpy(piece, text, length);
    put(piece, length);
    text += length;
    left -= length;
  }
}

} // namespace

void DumpState::closeReport() { handles::File const closed(std::exchange(report, INVALID_HANDLE_VALUE)); }

DumpState & dumpState() {
  static DumpState state;
  return state;
}

bool openReport(char const * path, DWORD disposition) {
  HANDLE const file =
      CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition, FILE_FLAG_WRITE_THROUGH, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    return false;
  SetFilePointerEx(file, LARGE_INTEGER{}, nullptr, FILE_END);
  dumpState().report = file;
  return true;
}

void write(char const * format, ...) {
  char text[kBufferSize];
  va_list arguments;
  va_start(arguments, format);
  int const result = _vsnprintf(text, kBufferSize, format, arguments);
  va_end(arguments);
  put(text, writtenLength(result, kBufferSize));
}

void writeLong(char const * before, char const * text, char const * after) {
  putInPieces(before);
  putInPieces(text);
  putInPieces(after);
}

void writeError(char const * format, ...) {
  char text[255];
  va_list arguments;
  va_start(arguments, format);
  int const result = _vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  _write(2, text, static_cast<unsigned>(writtenLength(result, sizeof text)));
}

} // namespace kivara::crash

#include "areader.hpp"

#include "text/sparetexts.hpp"

#include "handles/handle.hpp"
#include "tools/winapi.hpp"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <utility>

namespace {

constexpr std::int32_t kBlockSize = 8192;
constexpr std::int32_t kLineLimit = 8192;

constexpr char kLineTooLong[] = "INTERNAL ERROR!\nThe maximum line length has been exceeded. Max. 8192 characters are "
                                "allowed per line! Aborting program.\n";

// Lines are built here, with their line feed. One buffer serves all readers, so only the resulting string is allocated.
char assemblyArea[kLineLimit + 1];

// Above this length, copying the line costs more than allocating it.
kivara::SpareTexts<244, 1> spareLines;

bool isLineBreak(char c) { return c == '\r' || c == '\n'; }

/// Copies the bytes from \p at up to the first line break or \p end, and returns where it stopped. May write as many bytes as
/// there are up to \p end, even if it stops before.
char * copyToLineBreak(char * at, char * end, char * to) {
  __m128i const carriageReturn = _mm_set1_epi8('\r');
  __m128i const lineFeed = _mm_set1_epi8('\n');
  for (; end - at >= 16; at += 16, to += 16) {
    __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const *>(at));
    _mm_storeu_si128(reinterpret_cast<__m128i *>(to), bytes);
    __m128i const breaks = _mm_or_si128(_mm_cmpeq_epi8(bytes, carriageReturn), _mm_cmpeq_epi8(bytes, lineFeed));
    if (unsigned const found = static_cast<unsigned>(_mm_movemask_epi8(breaks)); found != 0)
      return at + std::countr_zero(found);
  }
  for (; at != end && !isLineBreak(*at); ++at, ++to)
    *to = *at;
  return at;
}

} // namespace

KivLineReader::~KivLineReader() = default;

KivFileReader::KivFileReader(SV::String const & name)
    : handle(INVALID_HANDLE_VALUE), filename(name), buffer(new char[kBlockSize]) {}

KivFileReader::~KivFileReader() {
  handles::File const file(std::exchange(handle, INVALID_HANDLE_VALUE));
  delete[] buffer;
}

bool KivFileReader::Done() { return true; }

std::int64_t KivFileReader::GetCurrentOffset() const { return GetInBufferOffset() + absoluteBufferOffset; }

bool KivFileReader::Is2CharsForNewline() const { return is2CharsForNewline; }

// Computed with integers: before the first read and after a failed one, bufferPos is null.
std::int64_t KivFileReader::GetInBufferOffset() const {
  return static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(bufferPos) -
                                   reinterpret_cast<std::uintptr_t>(buffer));
}

double KivFileReader::GetCurrentPercent() const {
  if (fileSize == 0)
    return 0.0;
  return static_cast<double>(GetCurrentOffset()) / static_cast<double>(fileSize) * 100.0;
}

bool KivFileReader::_ImpOpenFile() {
  handle = CreateFileA(filename.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
  LARGE_INTEGER size;
  if (handle == INVALID_HANDLE_VALUE || !GetFileSizeEx(handle, &size))
    return false;
  fileSize = size.QuadPart;
  return true;
}

bool KivFileReader::_ImpRead() {
  if (bytesRead > 0)
    absoluteBufferOffset += bytesRead;
  DWORD count = 0;
  if (bytesRead != 0 && handle != INVALID_HANDLE_VALUE && ReadFile(handle, buffer, kBlockSize, &count, nullptr)) {
    bytesRead = static_cast<std::int32_t>(count);
    bufferPos = buffer;
    bufferEnd = buffer + count;
    return true;
  }
  bytesRead = 0;
  bufferPos = nullptr;
  bufferEnd = nullptr;
  return false;
}

bool KivFileReader::MoveTo(std::int64_t offset) {
  LARGE_INTEGER target;
  target.QuadPart = offset;
  if (handle == INVALID_HANDLE_VALUE || !SetFilePointerEx(handle, target, nullptr, FILE_BEGIN))
    return false;
  bytesRead = -1;
  absoluteBufferOffset = offset;
  return _ImpRead();
}

KivTextFileReader::KivTextFileReader(SV::String const & name) : KivFileReader(name) {}

KivTextFileReader::~KivTextFileReader() = default;

bool KivTextFileReader::Init() {
  is2CharsForNewline = false;
  return _ImpOpenFile() && _ImpRead();
}

bool KivTextFileReader::GetLine(SV::String & line) {
  // bufferPos is null when the file was opened but its size could not be read.
  if (handle == INVALID_HANDLE_VALUE || bytesRead == 0 || bufferPos == nullptr)
    return false;
  std::int32_t length = 0;
  if (!_ImpCopyLine(length) || !_ImpSkipTerminator())
    return false;
  assemblyArea[length] = '\n';
  spareLines.assign(line, assemblyArea, length + 1);
  return true;
}

/// Copies the bytes before the next line break, or before the end of the file, to assemblyArea.
bool KivTextFileReader::_ImpCopyLine(std::int32_t & length) {
  while (bytesRead > 0 && !isLineBreak(*bufferPos)) {
    auto const most = std::min<std::ptrdiff_t>(bufferEnd - bufferPos, kLineLimit - length);
    char * const stop = copyToLineBreak(bufferPos, bufferPos + most, assemblyArea + length);
    length += static_cast<std::int32_t>(stop - bufferPos);
    bufferPos = stop;
    if (bufferPos >= bufferEnd && !_ImpRead())
      return false;
    if (length >= kLineLimit) {
      FatalAppExitA(1, kLineTooLong);
      return false;
    }
  }
  return true;
}

/// At the end of the file this reads the first byte of the buffer, which still contains the last block: a line break there
/// loses the last line. Callers rely on such files being one line shorter, so there must be neither a guard nor a cleared buffer.
bool KivTextFileReader::_ImpSkipTerminator() {
  bool const carriageReturn = *bufferPos == '\r';
  if (carriageReturn && !_ImpAdvance())
    return false;
  bool const lineFeed = *bufferPos == '\n';
  if (lineFeed && !_ImpAdvance())
    return false;
  is2CharsForNewline = carriageReturn && lineFeed;
  return true;
}

bool KivTextFileReader::_ImpAdvance() {
  ++bufferPos;
  return bufferPos < bufferEnd || _ImpRead();
}

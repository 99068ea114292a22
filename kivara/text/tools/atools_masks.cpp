#include "atools.hpp"
#include "atrace.hpp"
#include "base/modules.hpp"
#include "text/tools/masking.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <cstring>

using SV::String;

namespace {

constexpr unsigned kLineExportBuffer = 3101;
constexpr unsigned kLineExportLineFeed = 3118;

constexpr auto kMostCharacters = static_cast<std::size_t>(SV::STRING_MAXLEN);

std::size_t lengthOf(char const * text) { return text != nullptr ? std::strlen(text) : 0; }

String ofLength(std::size_t length) { return String::ofLength(static_cast<std::int32_t>(length)); }

bool isWritten(DWORD protection) {
  constexpr DWORD kinds = PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
  return (protection & kinds) != 0 && (protection & PAGE_GUARD) == 0;
}

/// How many of the \p wanted bytes at \p start can be written.
std::size_t writableBytes(char const * start, std::size_t wanted) {
  MEMORY_BASIC_INFORMATION region = {};
  std::size_t bytes = 0;
  while (bytes < wanted && VirtualQuery(start + bytes, &region, sizeof region) != 0 && region.State == MEM_COMMIT &&
         isWritten(region.Protect))
    bytes = static_cast<std::size_t>(static_cast<char const *>(region.BaseAddress) + region.RegionSize - start);
  return std::min(bytes, wanted);
}

/// Writes the text to the caller's buffer, with a backslash before each stop character and each backslash.
/// \return the end of what was written; null when not even a NUL could be written
char * maskForExport(char const * text, char stop, char * out) {
  auto const needsMask = [stop](char c) { return (c == stop) | (c == '\\'); };
  std::size_t const length = lengthOf(text);
  kivara::MaskedExtent extent = kivara::maskedExtent(text, length, 2 * length, needsMask);
  if (!Kiv_MemoryIsWriteable(out, extent.written + 1)) {
    displayErrorMessage(kivara::modules::kAtools, kLineExportBuffer);
    // The check above also rejects valid addresses that look poisoned, so the system decides what can be written.
    std::size_t const room = writableBytes(out, extent.written + 1);
    if (room == 0)
      return nullptr;
    extent = kivara::maskedExtent(text, length, room - 1, needsMask);
  }
  bool const isApart = out + extent.written < text || text + length < out;
  String const kept(isApart ? nullptr : text);
  char * const end = kivara::writeMasked(isApart ? text : kept.c_str(), extent, '\\', out, needsMask);
  *end = '\0';
  return end;
}

} // namespace

String Kiv_Mask(char const * text, char masked, char escape) {
  auto const needsMask = [masked, escape](char c) { return (c == masked) | (c == escape); };
  auto const extent = kivara::maskedExtent(text, lengthOf(text), kMostCharacters, needsMask);
  String result = ofLength(extent.written);
  kivara::writeMasked(text, extent, escape, result.writable(), needsMask);
  return result;
}

String Kiv_Unmask(char const * text, char escape) {
  char const * const end = text + lengthOf(text);
  std::size_t length = 0;
  for (char const * at = text; at != end; ++at, ++length)
    if (*at == escape && ++at == end)
      break;
  String result = ofLength(std::min(length, kMostCharacters));
  char * out = result.writable();
  for (char const * const outEnd = out + result.Len(); out != outEnd; ++text) {
    if (*text == escape)
      ++text;
    *out++ = *text;
  }
  return result;
}

String Kiv_MaskCSV(String const & text) {
  auto const isQuote = [](char c) { return c == '"'; };
  auto const length = static_cast<std::size_t>(text.Len());
  auto const holds = [&text, length](char c) { return std::memchr(text.c_str(), c, length) != nullptr; };
  if (!holds(';') && !holds('"'))
    return text;
  auto const extent = kivara::maskedExtent(text.c_str(), length, kMostCharacters - 2, isQuote);
  String result = ofLength(extent.written + 2);
  char * out = result.writable();
  *out = '"';
  out = kivara::writeMasked(text.c_str(), extent, '"', out + 1, isQuote);
  *out = '"';
  return result;
}

void Kiv_Mask_Export_Name(char const * text, char * out) {
  char * const end = maskForExport(text, '>', out);
  if (end == nullptr)
    return;
  for (char * at = out; at != end; ++at) {
    if (*at != '\n')
      continue;
    displayErrorMessage(kivara::modules::kAtools, kLineExportLineFeed);
    *at = ' ';
  }
}

void Kiv_Mask_Export_Value(char const * text, char * out) { maskForExport(text, '"', out); }
void Kiv_Mask_Export_Path(char const * text, char * out) { maskForExport(text, '/', out); }

#include "pathparts.hpp"

#include "tools/winapi.hpp"

#include <algorithm>

namespace SV::pathparts {
namespace {

constexpr char kSeparator = '\\';

/// How many bytes the character at \p position has.
std::int32_t bytesAt(String const & text, std::int32_t position) {
  bool const isDouble = IsDBCSLeadByte(static_cast<BYTE>(text.charAt(position))) != 0;
  return isDouble && position + 1 < text.Len() ? 2 : 1;
}

/// The first separator from \p start on, or the length of the text.
std::int32_t nextSeparator(String const & path, std::int32_t start) {
  start = std::min(start, path.Len());
  while (start < path.Len() && path.charAt(start) != kSeparator)
    start += bytesAt(path, start);
  return start;
}

std::int32_t pastOneSeparator(String const & path, std::int32_t position) {
  return path.charAt(position) == kSeparator ? position + 1 : position;
}

/// The end of "server\share", which begins at \p start; the end of the server if no share follows.
std::int32_t shareEnd(String const & path, std::int32_t start) {
  std::int32_t const server = nextSeparator(path, start);
  std::int32_t const share = nextSeparator(path, server + 1);
  return share <= server + 1 ? server : share;
}

bool hasDriveAt(String const & path, std::int32_t position) {
  char const letter = static_cast<char>(path.charAt(position) | 0x20);
  return letter >= 'a' && letter <= 'z' && path.charAt(position + 1) == ':';
}

constexpr std::int32_t kDevicePrefix = 4; // "\\?\" or "\\.\"
constexpr std::int32_t kSharePrefix = 4;  // "UNC\" after it

bool isDevice(String const & path) {
  String const start = path.substr(0, kDevicePrefix);
  return start == "\\\\?\\" || start == "\\\\.\\";
}

bool isDeviceShare(String const & path) {
  return isDevice(path) && h_stricmp(path.substr(kDevicePrefix, kSharePrefix).c_str(), "UNC\\") == 0;
}

bool isPlainShare(String const & path) {
  return path.charAt(0) == kSeparator && path.charAt(1) == kSeparator && !isDevice(path);
}

std::int32_t deviceRootLength(String const & path) {
  std::int32_t const device = hasDriveAt(path, kDevicePrefix) ? kDevicePrefix + 2 : nextSeparator(path, kDevicePrefix);
  return pastOneSeparator(path, device);
}

} // namespace

String normalised(String const & path) {
  String text(path.c_str());
  for (std::int32_t i = 0; i < text.Len(); i += bytesAt(text, i)) {
    if (text.charAt(i) != '/')
      continue;
    text.makeUnique();
    text.writable()[i] = kSeparator;
  }
  return text;
}

std::int32_t rootLength(String const & path) {
  if (isDeviceShare(path))
    return shareEnd(path, kDevicePrefix + kSharePrefix);
  if (isDevice(path))
    return deviceRootLength(path);
  if (isPlainShare(path))
    return shareEnd(path, 2);
  return pastOneSeparator(path, hasDriveAt(path, 0) ? 2 : 0);
}

bool isOnShare(String const & path) { return isPlainShare(path) || isDeviceShare(path); }

String withoutTrailingSeparators(String const & path) {
  std::int32_t end = rootLength(path);
  for (std::int32_t i = end; i < path.Len(); i += bytesAt(path, i)) {
    if (path.charAt(i) != kSeparator)
      end = i + bytesAt(path, i);
  }
  return path.substr(0, end);
}

std::int32_t nameStart(String const & path) {
  std::int32_t const root = rootLength(path);
  std::int32_t const separator = lastOf(path, kSeparator, root);
  return separator < 0 ? root : separator + 1;
}

std::int32_t lastOf(String const & text, char c, std::int32_t start) {
  std::int32_t found = -1;
  for (std::int32_t i = start; i < text.Len(); i += bytesAt(text, i)) {
    if (text.charAt(i) == c)
      found = i;
  }
  return found;
}

} // namespace SV::pathparts

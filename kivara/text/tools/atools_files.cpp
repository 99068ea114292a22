#include "atools.hpp"

#include "base/openfile.hpp"
#include "handles/handle.hpp"
#include "tools/winapi.hpp"

#include <cstring>

namespace {

bool isSeparator(char c) { return c == '\\' || c == '/'; }
bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool isForbidden(char c) { return c != '\0' && std::strchr("|*<>?\"", c) != nullptr; }

/// What follows "\\server\share\"; null when the server, the share or a separator is missing.
char const * afterShare(char const * name) {
  char const * const server = name + 2;
  char const * at = server;
  while (*at != '\\') {
    if (static_cast<unsigned char>(*at) < 32)
      return nullptr;
    ++at;
  }
  if (at == server)
    return nullptr;
  char const * const share = ++at;
  while (*at != '\0' && !isSeparator(*at))
    ++at;
  return at != share && *at != '\0' ? at + 1 : nullptr;
}

bool beginsWithDevice(char const * text) {
  static constexpr char const * kDevices[] = {"CON",  "PRN",  "AUX",  "CLOCK$", "NUL",  "COM1", "COM2", "COM3",
                                              "COM4", "COM5", "COM6", "COM7",   "COM8", "COM9", "LPT1", "LPT2",
                                              "LPT3", "LPT4", "LPT5", "LPT6",   "LPT7", "LPT8", "LPT9"};
  for (char const * device : kDevices) {
    std::size_t const length = std::strlen(device);
    if (_strnicmp(text, device, length) == 0 && (text[length] == '\0' || text[length] == '.'))
      return true;
  }
  return false;
}

/// A colon is only valid after a drive letter: "ab:c" would be a stream of the file "ab".
bool holdsValidCharacters(char const * text, bool driveAllowed) {
  for (char const * at = text; *at != '\0'; ++at) {
    if (isForbidden(*at) || (isSeparator(at[0]) && isSeparator(at[1])))
      return false;
    if (*at == ':' && !(driveAllowed && at == text + 1 && isLetter(*text)))
      return false;
  }
  return true;
}

} // namespace

bool Kiv_Valid_Filename(char const * name) {
  if (name == nullptr || *name == '\0' || std::strstr(name, "://") != nullptr)
    return false;
  bool const withServer = name[0] == '\\' && name[1] == '\\';
  char const * const path = withServer ? afterShare(name) : name;
  if (path == nullptr || beginsWithDevice(path) || !holdsValidCharacters(path, !withServer))
    return false;
  char const last = name[std::strlen(name) - 1];
  return !isSeparator(last) && last != ':';
}

bool Kiv_Valid_DBFilename(char const * name) { return name != nullptr && _strnicmp(name, "DB:\\", 4) == 0; }

bool Kiv_FileExists(char const * name) {
  if (name == nullptr || *name == '\0' || Kiv_Valid_DBFilename(name))
    return false;
  return static_cast<bool>(kivara::openFile(name, "rb"));
}

bool Kiv_FileIsInUse(char const * name) {
  if (name == nullptr || Kiv_Valid_DBFilename(name))
    return false;
  handles::File const file(CreateFileA(name, GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  return !file && GetLastError() == ERROR_SHARING_VIOLATION;
}

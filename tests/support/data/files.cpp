#include "support/data/files.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace support {
namespace {

struct CloseFile {
  void operator()(FILE * file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, CloseFile>;

[[noreturn]] void failed(char const * what, std::string const & path) {
  throw std::runtime_error(std::string(what) + ' ' + path + ": error " + std::to_string(GetLastError()));
}

/// Asked once, before a test can change it.
std::string const & startFolder() {
  static std::string const folder = [] {
    char buffer[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof(buffer), buffer);
    return std::string(buffer);
  }();
  return folder;
}
std::string const & askedAtStart = startFolder();

struct Entry {
  std::string name;
  bool isFolder;
};

std::vector<Entry> entriesIn(std::string const & path) {
  std::vector<Entry> entries;
  WIN32_FIND_DATAA entry;
  HANDLE const search = FindFirstFileA((path + "\\*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE)
    return entries;
  do {
    std::string const name = entry.cFileName;
    if (name != "." && name != "..")
      entries.push_back({name, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
  } while (FindNextFileA(search, &entry));
  FindClose(search);
  return entries;
}

void removeTree(std::string const & path) {
  for (auto const & entry : entriesIn(path)) {
    std::string const full = path + '\\' + entry.name;
    SetFileAttributesA(full.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (entry.isFolder)
      removeTree(full);
    else
      DeleteFileA(full.c_str());
  }
  RemoveDirectoryA(path.c_str());
}

} // namespace

std::optional<std::string> readFile(std::string const & path) {
  File const file(std::fopen(path.c_str(), "rb"));
  if (!file)
    return std::nullopt;
  std::string bytes;
  char buffer[4096];
  while (std::size_t const count = std::fread(buffer, 1, sizeof(buffer), file.get()))
    bytes.append(buffer, count);
  return bytes;
}

void writeFile(std::string const & path, std::string_view bytes) {
  File const file(std::fopen(path.c_str(), "wb"));
  if (!file || std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
    failed("cannot write", path);
}

bool exists(std::string const & path) { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

std::vector<std::string> entriesOf(std::string const & folder) {
  std::vector<std::string> names;
  for (auto const & entry : entriesIn(folder))
    names.push_back(entry.name);
  std::sort(names.begin(), names.end());
  return names;
}

void setReadOnly(std::string const & path, bool on) {
  DWORD const attributes = GetFileAttributesA(path.c_str());
  DWORD const changed = on ? attributes | FILE_ATTRIBUTE_READONLY : attributes & ~DWORD{FILE_ATTRIBUTE_READONLY};
  if (attributes == INVALID_FILE_ATTRIBUTES || !SetFileAttributesA(path.c_str(), changed))
    failed("cannot change the attributes of", path);
}

std::string binFolder() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, sizeof(path));
  std::string const full(path);
  return full.substr(0, full.rfind('\\') + 1);
}

TempFolder::TempFolder() {
  static unsigned made = 0;
  path_ = startFolder() + "\\test-" + std::to_string(GetCurrentProcessId()) + '-' + std::to_string(++made);
  if (!CreateDirectoryA(path_.c_str(), nullptr))
    failed("cannot make the folder", path_);
}

TempFolder::~TempFolder() { removeTree(path_); }

FileInUse::FileInUse(std::string const & path)
    : handle_(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                          nullptr)) {
  if (handle_ == INVALID_HANDLE_VALUE)
    failed("cannot open", path);
}

FileInUse::~FileInUse() { CloseHandle(handle_); }

} // namespace support

#include "tools/dir.hpp"

#include "handles/handle.hpp"
#include "lasterror.hpp"

#include <algorithm>
#include <utility>

namespace SV {
namespace {

bool isWildcard(String const & name) {
  return h_strchr(name.c_str(), '*') != nullptr || h_strchr(name.c_str(), '?') != nullptr;
}

/// The string in the system's upper case, to compare names as the file system does.
String upperCase(String text) {
  text.makeUnique();
  CharUpperBuffA(text.writable(), static_cast<DWORD>(text.Len()));
  return text;
}

char const * next(char const * text) { return CharNextA(text); }

bool sameChar(char const * a, char const * b) {
  auto const bytes = next(a) - a;
  return bytes == next(b) - b && std::memcmp(a, b, static_cast<std::size_t>(bytes)) == 0;
}

/// Whether the whole name matches the pattern: '*' stands for any characters, '?' for a single one.
bool fits(char const * pattern, char const * name) {
  char const * star = nullptr;
  char const * resume = nullptr;
  while (*name != '\0') {
    if (*pattern == '*') {
      star = ++pattern;
      resume = name;
    } else if (*pattern != '\0' && (*pattern == '?' || sameChar(pattern, name))) {
      pattern = next(pattern);
      name = next(name);
    } else if (star != nullptr) {
      pattern = star;
      name = resume = next(resume);
    } else {
      return false;
    }
  }
  while (*pattern == '*')
    ++pattern;
  return *pattern == '\0';
}

bool isListed(WIN32_FIND_DATAA const & found, int kinds, String const & upperPattern) {
  String const name(found.cFileName);
  if (name == "." || name == "..")
    return false;
  bool const isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return (kinds & (isFolder ? FSYS_KIND_DIR : FSYS_KIND_FILE)) != 0 &&
         fits(upperPattern.c_str(), upperCase(name).c_str());
}

/// The error code of the call that has just failed; success if the code only says that there are no more entries.
FSysError errorUnless(DWORD nothingMore) {
  FSysError const code = lastSystemError();
  return code != nothingMore ? code : FSYS_ERR_OK;
}

} // namespace

Dir::Dir(DirEntry const & entry, int attributes) {
  String const name = entry.GetName();
  bool const hasPattern = isWildcard(name);
  String const folder = (hasPattern ? entry.GetPath() : entry).GetFull(FSYS_STYLE_HOST, 1);
  // "*.*" means every name, with or without a dot.
  String const pattern = hasPattern && !(name == "*.*") ? upperCase(name) : String("*");

  // The system also matches a pattern against the short 8.3 names, so all entries are read and matched here.
  WIN32_FIND_DATAA found;
  handles::FolderSearch const search(FindFirstFileA((folder + "*").c_str(), &found));
  if (!search) {
    error_ = errorUnless(ERROR_FILE_NOT_FOUND); // the root of an empty drive
    return;
  }
  do {
    if (isListed(found, attributes, pattern))
      entries_.emplace_back(folder + found.cFileName);
  } while (FindNextFileA(search.get(), &found));
  error_ = errorUnless(ERROR_NO_MORE_FILES);
}

void Dir::SetSort(int order) {
  if (order != FSYS_SORT_NAME)
    return;
  std::vector<std::pair<String, DirEntry>> keyed;
  keyed.reserve(entries_.size());
  for (DirEntry const & entry : entries_)
    keyed.emplace_back(upperCase(entry.GetName()), entry);
  std::stable_sort(keyed.begin(), keyed.end(), [](auto const & a, auto const & b) { return a.first < b.first; });
  std::transform(keyed.begin(), keyed.end(), entries_.begin(), [](auto const & each) { return each.second; });
}

DirEntry const & Dir::operator[](unsigned long position) const {
  static DirEntry const none{String()};
  return position < entries_.size() ? entries_[position] : none;
}

} // namespace SV

#include "filenames.hpp"

#include "tools/direntry.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace modeler {
namespace {

/// In capitals, as the file system compares names.
String foldedPath(String const & name) {
  String path = SV::DirEntry(name).GetFull();
  path.makeUnique();
  CharUpperBuffA(path.writable(), static_cast<DWORD>(path.Len()));
  return path;
}

} // namespace

bool isSameFile(String const & one, String const & other) { return foldedPath(one) == foldedPath(other); }

} // namespace modeler

#pragma once
/// \file
/// Files of the runtime that close themselves. Internal.

#include <cstdio>
#include <memory>

namespace kivara {

struct FileCloser {
  void operator()(FILE * file) const { std::fclose(file); }
};

/// A file that is open, or null; closed with this object.
using OpenFile = std::unique_ptr<FILE, FileCloser>;

/// Opens as fopen does; null when it fails.
inline OpenFile openFile(char const * name, char const * mode) { return OpenFile(std::fopen(name, mode)); }

} // namespace kivara

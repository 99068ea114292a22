#pragma once
/// \file
/// Where the tests of the package find the installation.

#include <algorithm>
#include <string>

/// The Windows path of a file below the folder of these tests.
inline std::string packagePath(std::string const & file) {
  std::string path = std::string(KIVARA_PACKAGE_TEST_DIR "/") + file;
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

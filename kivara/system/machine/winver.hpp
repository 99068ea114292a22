#pragma once
/// \file
/// What a version record of Windows amounts to.

namespace kivara {

/// Major and minor version and the platform id, of which 2 is the NT line.
struct WindowsVersion {
  unsigned long major;
  unsigned long minor;
  unsigned long platform;
};

constexpr bool isAtLeast(WindowsVersion const & version, unsigned long major, unsigned long minor) {
  return version.platform == 2 && (version.major > major || (version.major == major && version.minor >= minor));
}

constexpr bool isAtLeastXP(WindowsVersion const & version) { return isAtLeast(version, 5, 1); }
constexpr bool isAtLeastVista(WindowsVersion const & version) { return isAtLeast(version, 6, 0); }
constexpr bool isAtLeast7(WindowsVersion const & version) { return isAtLeast(version, 6, 1); }

} // namespace kivara

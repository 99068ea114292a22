#pragma once
/// \file
/// Files whose names may hold any character.

#include <filesystem>
#include <string>

namespace kivcrash {

/// The bytes of a file; throws std::runtime_error with its name and the reason.
std::string readWhole(std::filesystem::path const & path);

/// The absolute path without "..". Unlike that of the standard library, it keeps the beginning of a path in the network.
std::filesystem::path fullPath(std::filesystem::path const & path);

/// Whether it is there and no folder. A name that the system refuses is none.
bool isFile(std::filesystem::path const & path);

} // namespace kivcrash

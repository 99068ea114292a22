#pragma once
/// \file
/// Resource DLLs on disk.

#include "tools/string.hpp"
#include "tools/winapi.hpp"

#include <cstddef>
#include <span>

namespace SV::detail {

/// Maps the DLL as data. Null if it is missing or not sound, see isSoundResourceFile.
/// \param name  absolute, or relative to the program's folder
HMODULE loadResourceFile(String const & name);

/// Whether \p file is a complete DLL, for any processor, whose sections and resource table, if it has one, lie within it. The
/// system itself follows the table without such a check.
bool isSoundResourceFile(std::span<std::byte const> file);

} // namespace SV::detail

#pragma once
/// \file
/// Resource DLLs on disk.

#include "tools/string.hpp"
#include "tools/winapi.hpp"

#include <cstddef>
#include <span>

namespace SV::detail {

/// Maps the DLL as data. Null when it is missing or not sound, see isSoundResourceFile.
/// \param name  absolute, or counted from the program's folder
HMODULE loadResourceFile(String const & name);

/// Whether \p file is a whole DLL, for any processor, whose sections and whose table of resources, if it has one, lie
/// within it. The system itself follows the table wherever it leads.
bool isSoundResourceFile(std::span<std::byte const> file);

} // namespace SV::detail

#pragma once
/// \file
/// The zip archives that a product's archiver packs after a crash.

#include "common/text.hpp"

#include <map>
#include <string>
#include <string_view>

namespace kivcrash {

/// The contents by the names of the files, without folders.
using Contents = std::map<std::string, std::string>;

/// Whether the bytes begin as those of an archive.
bool isArchive(std::string_view bytes);

/// What can be unpacked of it. Nothing is written to the disk. Of a file that is damaged, what comes before the damage is there.
/// \param problems  gets what cannot be read, or would take more than 4 GiB
Contents unpackArchive(std::string_view bytes, Problems & problems);

} // namespace kivcrash

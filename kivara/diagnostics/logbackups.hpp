#pragma once
/// \file
/// Rules for the backups of a log file: their names, their dates and how many are too many. Nothing here opens or looks
/// up a file. Internal.

#include "tools/date.hpp"
#include "tools/direntry.hpp"
#include "tools/string.hpp"

#include <optional>

namespace kivara {

/// The backup with the log's content of that date: of "daily.log" it is "daily_2026.11.12.log" in the same folder.
SV::DirEntry backupOf(SV::String const & log, SV::Date const & date);

/// The pattern that all backups of a log match: "daily_*.log" in the same folder. Other files may match it too.
SV::DirEntry patternOfBackups(SV::String const & log);

/// The date that a log's text begins with, as the stamp of its first line does; none if it begins with anything else.
std::optional<SV::Date> dateAtStart(char const * text);

/// How many of \p count backups are to be deleted so that \p kept are left; a negative number keeps none.
unsigned long surplusBackups(unsigned long count, int kept);

} // namespace kivara

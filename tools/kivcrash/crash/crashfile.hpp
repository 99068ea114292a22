#pragma once
/// \file
/// What a program left behind, whichever of its files is given.

#include "crash/dump.hpp"
#include "crash/report.hpp"

#include <filesystem>
#include <memory>
#include <optional>

namespace kivcrash {

struct CrashFile {
  std::string dumpBytes; ///< what the dump's views are into
  std::optional<Dump> dump;
  std::vector<Report> reports;     ///< the oldest first
  std::vector<std::string> others; ///< what else is in the archive
  Report const * report = nullptr; ///< that of this crash; where there is no dump, the last one

  CrashFile() = default;
  CrashFile(CrashFile const &) = delete;
  CrashFile & operator=(CrashFile const &) = delete;
};

/// Reads an archive, a minidump or a log of reports; which of them it is, its first bytes say. The log beside a minidump is read too.
/// \param problems  gets what is wrong with it
/// \return null when nothing can be read
/// \throws std::runtime_error  where a file cannot be read
std::unique_ptr<CrashFile> openCrashFile(std::filesystem::path const & path, Problems & problems);

/// The same of bytes in memory; nothing lies beside them.
std::unique_ptr<CrashFile> readCrashFile(std::string bytes, Problems & problems);

} // namespace kivcrash

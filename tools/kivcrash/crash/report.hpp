#pragma once
/// \file
/// The text reports that a program appends to its log, scrambled or plain.

#include "common/text.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kivcrash {

/// One report of a log.
struct Report {
  std::string text;                 ///< as it was written: lines that end in CR LF, in the system's code page
  bool isCrash = false;             ///< false for one that the program asked for
  bool isComplete = false;          ///< false where the process died while it wrote
  std::optional<std::int64_t> time; ///< seconds since 1970, UTC
};

/// The reports of a log, the oldest first. Each may be scrambled, with any key, or plain: a log has both where the
/// settings of the program changed. Bytes before the first one are left out.
/// \param problems  gets what is wrong with them
std::vector<Report> readReports(std::string_view bytes, Problems & problems);

/// What follows the beginning of the line that begins so, without the line's end, in UTF-8; empty where there is none.
std::string lineAfter(Report const & report, std::string_view beginning);

/// The lines below one that ends so, up to the next empty line; in UTF-8, without blanks at their beginnings.
std::vector<std::string> linesBelow(Report const & report, std::string_view ending);

/// The report of the crash whose minidump is of that moment; null where there is none.
Report const * reportOf(std::vector<Report> const & reports, std::uint32_t dumpTime);

} // namespace kivcrash

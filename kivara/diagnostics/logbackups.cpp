#include "diagnostics/logbackups.hpp"

#include "base/boundedtext.hpp"

#include <algorithm>
#include <cstdio>

using SV::Date;
using SV::DirEntry;
using SV::String;

namespace kivara {
namespace {

constexpr char kExtensionMark = '.';

DirEntry withAddition(String const & log, char const * addition) {
  DirEntry entry(log);
  entry.ChangeBase(entry.GetBase(kExtensionMark) + addition, kExtensionMark);
  return entry;
}

} // namespace

DirEntry backupOf(String const & log, Date const & date) {
  BoundedText<16> const addition("_%04d.%02d.%02d", static_cast<int>(date.GetYear()), static_cast<int>(date.GetMonth()),
                                 static_cast<int>(date.GetDay()));
  return withAddition(log, addition.c_str());
}

DirEntry patternOfBackups(String const & log) { return withAddition(log, "_*"); }

std::optional<Date> dateAtStart(char const * text) {
  int year = 0;
  int month = 0;
  int day = 0;
  if (__ms_sscanf(text, "%d.%d.%d", &year, &month, &day) != 3)
    return std::nullopt;
  return Date(static_cast<unsigned long>(day), static_cast<unsigned long>(month), static_cast<unsigned long>(year));
}

unsigned long surplusBackups(unsigned long count, int kept) {
  unsigned long const left = static_cast<unsigned long>(std::max(kept, 0));
  return count > left ? count - left : 0;
}

} // namespace kivara

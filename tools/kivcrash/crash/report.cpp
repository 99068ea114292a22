#include "crash/report.hpp"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>

namespace kivcrash {
namespace {

constexpr std::string_view kCrash = "\r\n# [dump v4] Crash dump";
constexpr std::string_view kAsked = "# === [Mini Dump for ";
constexpr std::string_view kEnd = "[DONE]\r\n";
constexpr std::string_view kFailed = "# [failed to create the minidump";
constexpr std::string_view kEnvironment = "  Environment variables:";
constexpr std::string_view kSystemTime = "  System crash time: ";
/// A report is begun when the minidump has been written; looking for symbols may take its time before the clock is read.
constexpr std::int64_t kLongestWay = 120;

/// Where a report begins, and with what each byte from there on is combined.
struct Start {
  std::size_t at;
  unsigned char key;
};

/// Whatever the key is, two bytes side by side differ in the same bits as those of the text.
bool isAt(std::string_view bytes, std::size_t at, std::string_view text) {
  if (at + text.size() > bytes.size())
    return false;
  auto const key = static_cast<unsigned char>(bytes[at] ^ text[0]);
  for (std::size_t i = 1; i < text.size(); ++i)
    if (static_cast<unsigned char>(bytes[at + i] ^ text[i]) != key)
      return false;
  return true;
}

/// Each report has one of the two at its beginning, and no other report's beginning in it.
std::vector<Start> startsOf(std::string_view bytes) {
  std::vector<Start> starts;
  for (std::size_t at = 0; at < bytes.size(); ++at)
    for (std::string_view const beginning : {kCrash, kAsked})
      if (isAt(bytes, at, beginning))
        starts.push_back({at, static_cast<unsigned char>(bytes[at] ^ beginning[0])});
  return starts;
}

std::string unscrambled(std::string_view bytes, unsigned char key) {
  std::string text(bytes);
  for (char & c : text)
    c = static_cast<char>(static_cast<unsigned char>(c) ^ key);
  return text;
}

std::vector<std::string_view> rawLines(Report const & report) {
  std::vector<std::string_view> lines;
  std::string_view rest = report.text;
  while (!rest.empty()) {
    std::size_t const end = std::min(rest.find('\n'), rest.size());
    std::string_view const line = rest.substr(0, end);
    lines.push_back(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return lines;
}

std::optional<int> number(std::string_view text) {
  int value = 0;
  auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

/// "22.11.2026, 08:30.15"
std::optional<std::int64_t> readTime(std::string_view text) {
  constexpr std::string_view kForm = "00.00.0000, 00:00.00";
  if (text.size() != kForm.size())
    return std::nullopt;
  for (std::size_t i = 0; i < kForm.size(); ++i)
    if (kForm[i] != '0' && text[i] != kForm[i])
      return std::nullopt;
  auto const at = [&](std::size_t place, std::size_t length) {
    return number(text.substr(place, length)).value_or(-1);
  };
  using namespace std::chrono;
  year_month_day const date(year(at(6, 4)), month(static_cast<unsigned>(at(3, 2))),
                            day(static_cast<unsigned>(at(0, 2))));
  int const hour = at(12, 2);
  int const minute = at(15, 2);
  int const second = at(18, 2);
  if (!date.ok() || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 60)
    return std::nullopt;
  return sys_days(date).time_since_epoch().count() * std::int64_t{86'400} + hour * 3'600 + minute * 60 + second;
}

Report readReport(std::string text) {
  Report report{std::move(text), false, false, std::nullopt};
  report.isCrash = report.text.starts_with(kCrash);
  report.isComplete = report.text.find(kEnd) != std::string::npos || report.text.find(kFailed) != std::string::npos;
  report.time = readTime(lineAfter(report, kSystemTime));
  return report;
}

bool hasControlBytes(std::string_view line) {
  return std::ranges::any_of(line, [](char c) { return static_cast<unsigned char>(c) < ' ' && c != '\t'; });
}

/// Variables of the environment may have any bytes in them.
bool hasForeignBytes(Report const & report) {
  bool isEnvironment = false;
  for (std::string_view const line : rawLines(report)) {
    isEnvironment = (isEnvironment && !line.empty()) || line == kEnvironment;
    if (!isEnvironment && hasControlBytes(line))
      return true;
  }
  return false;
}

} // namespace

std::vector<Report> readReports(std::string_view bytes, Problems & problems) {
  std::vector<Report> reports;
  std::vector<Start> const starts = startsOf(bytes);
  if (starts.empty())
    problems.emplace_back("there is no report in it");
  else if (starts.front().at != 0)
    problems.emplace_back("the log does not begin with a report: something is missing before it");
  for (std::size_t i = 0; i < starts.size(); ++i) {
    std::size_t const end = i + 1 < starts.size() ? starts[i + 1].at : bytes.size();
    reports.push_back(readReport(unscrambled(bytes.substr(starts[i].at, end - starts[i].at), starts[i].key)));
    std::string const name = "report " + std::to_string(i + 1);
    if (!reports.back().isComplete)
      problems.push_back(name + " is cut off: the process ended while it wrote, or the file is not whole");
    else if (!reports.back().time && reports.back().text.find(kFailed) == std::string::npos)
      problems.push_back(name + " is damaged: it does not say when it was written");
    if (hasForeignBytes(reports.back()))
      problems.push_back(name + " is damaged: it has bytes in it that are no text");
  }
  return reports;
}

std::string lineAfter(Report const & report, std::string_view beginning) {
  for (std::string_view const line : rawLines(report))
    if (line.starts_with(beginning))
      return fromSystem(line.substr(beginning.size()));
  return "";
}

std::vector<std::string> linesBelow(Report const & report, std::string_view ending) {
  std::vector<std::string> found;
  bool isBelow = false;
  for (std::string_view const line : rawLines(report)) {
    if (isBelow && line.empty())
      break;
    if (isBelow)
      found.push_back(fromSystem(line.substr(std::min(line.find_first_not_of(' '), line.size()))));
    isBelow = isBelow || line.ends_with(ending);
  }
  return found;
}

Report const * reportOf(std::vector<Report> const & reports, std::uint32_t dumpTime) {
  Report const * best = nullptr;
  std::int64_t least = kLongestWay + 1;
  for (Report const & report : reports) {
    if (!report.isCrash || !report.time)
      continue;
    std::int64_t const way = *report.time - static_cast<std::int64_t>(dumpTime);
    if (way >= -1 && way < least) {
      least = way;
      best = &report;
    }
  }
  return best;
}

} // namespace kivcrash

#include "textlist.hpp"

#include "escapes.hpp"

#include <algorithm>
#include <optional>
#include <utility>

namespace kivml {
namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr char kBlanks[] = " \t";
constexpr char kDigits[] = "0123456789";

/// Why the bytes of a line cannot be meant; empty when they can. An editor does not show any of these.
std::string hiddenFault(std::string const & line) {
  if (line.find('\0') != std::string::npos)
    return "a NUL byte: the list is not UTF-8, or damaged; write \\x00 where one is meant";
  if (line.find('\r') != std::string::npos)
    return "a carriage return without a line feed; write \\r where one is meant";
  if (std::string(kBlanks).find(line.back()) != std::string::npos)
    return "a blank at the end of the line; write \\x20 or \\t where one is meant";
  return std::string();
}

/// The identifier at the start of \p line, which then begins after it.
std::optional<std::uint32_t> takeIdentifier(std::string & line, std::string & reason) {
  std::size_t const length = std::min(line.find_first_not_of(kDigits), line.size());
  if (length == 0 || (length < line.size() && std::string(kBlanks).find(line[length]) == std::string::npos)) {
    reason = "a line begins with the decimal identifier of its text, and a blank";
    return std::nullopt;
  }
  constexpr std::size_t kMostDigits = 9; // what has more is too large in any case
  std::string const digits = line.substr(0, length);
  std::size_t const significant = std::min(digits.find_first_not_of('0'), digits.size() - 1);
  std::size_t const count = digits.size() - significant;
  unsigned long const value = count <= kMostDigits ? std::stoul(digits) : kLastIdentifier + 1UL;
  if (value > kLastIdentifier) {
    reason = "the identifier " + digits + " is above 65535";
    return std::nullopt;
  }
  line.erase(0, length);
  return static_cast<std::uint32_t>(value);
}

std::optional<Text> readLine(std::string line, unsigned codePage, std::string & reason) {
  std::optional<std::uint32_t> const resId = takeIdentifier(line, reason);
  if (!resId)
    return std::nullopt;
  if (line.find_first_not_of(kBlanks) == std::string::npos) {
    reason = "the text is empty";
    return std::nullopt;
  }
  if (reason = hiddenFault(line); !reason.empty())
    return std::nullopt;
  std::optional<std::string> text = readWritten(line.substr(1), codePage, reason);
  if (!text)
    return std::nullopt;
  return Text{*resId, *text};
}

bool isText(std::string const & line) {
  std::size_t const start = line.find_first_not_of(kBlanks);
  return start != std::string::npos && line[start] != ';';
}

} // namespace

Texts readList(std::string const & bytes, unsigned codePage, Faults & faults) {
  Texts texts;
  std::vector<std::size_t> places;
  std::size_t position = bytes.starts_with(kByteOrderMark) ? sizeof kByteOrderMark - 1 : 0;
  for (std::size_t number = 1; position < bytes.size(); ++number) {
    std::size_t const end = std::min(bytes.find('\n', position), bytes.size());
    std::string line = bytes.substr(position, end - position);
    position = end + 1;
    if (line.ends_with('\r'))
      line.pop_back();
    if (!isText(line))
      continue;
    std::string reason;
    if (std::optional<Text> text = readLine(std::move(line), codePage, reason)) {
      texts.push_back(std::move(*text));
      places.push_back(number);
    } else {
      faults.push_back({number, reason});
    }
  }
  findRepeatedIdentifiers(texts, places, faults);
  return texts;
}

std::string writeList(Texts const & texts, unsigned codePage) {
  std::string list;
  for (Text const & text : texts)
    list += std::to_string(text.resId) + " " + writtenForm(text.text, codePage) + "\r\n";
  return list;
}

} // namespace kivml

// kivml: packs a list of texts for one language into kivml.dll, unpacks such a file and checks one.
#include "packedfile.hpp"
#include "shared/codepage.hpp"
#include "shared/fileaccess.hpp"
#include "textlist.hpp"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace {

using namespace kivml;
using kivtools::readFile;
using kivtools::writeFile;

constexpr int kDone = 0;
constexpr int kFaulty = 1;
constexpr int kMisused = 2;

constexpr char kUsage[] =
    "usage: kivml pack LIST PACKED [--codepage N]\n"
    "       kivml unpack PACKED LIST [--codepage N]\n"
    "       kivml check PACKED\n"
    "       kivml --help\n"
    "LIST is UTF-8 with a text on each line: its decimal identifier, a blank, the text. \\n, \\r, \\t,\n"
    "\\\\ and \\xHH stand for characters; lines that begin with ';' are comments. The code page is\n"
    "1252 unless --codepage gives another.\n"
    "Exit code 0: done; 1: a fault in the input, or a file that cannot be read or written; 2: wrong usage.\n";

struct Arguments {
  std::vector<std::string> words;
  unsigned codePage = 1252;
  bool wantsHelp = false;
};

/// The number of a code page that texts can be in.
std::optional<unsigned> readCodePage(std::string const & text) {
  constexpr std::size_t kMostDigits = 5;
  if (text.empty() || text.size() > kMostDigits || text.find_first_not_of("0123456789") != std::string::npos)
    return std::nullopt;
  auto const number = static_cast<unsigned>(std::stoul(text));
  return kivtools::isUsableCodePage(number) ? std::optional(number) : std::nullopt;
}

std::optional<Arguments> readArguments(int argc, char ** argv) {
  Arguments arguments;
  for (int i = 1; i < argc; ++i) {
    if (std::string(argv[i]) == "--help") {
      arguments.wantsHelp = true;
      continue;
    }
    if (std::string(argv[i]) != "--codepage") {
      arguments.words.emplace_back(argv[i]);
      continue;
    }
    if (++i == argc)
      return std::nullopt;
    std::optional<unsigned> const codePage = readCodePage(argv[i]);
    if (!codePage) {
      std::fprintf(stderr, "kivml: there is no code page %s with 8-bit characters\n", argv[i]);
      return std::nullopt;
    }
    arguments.codePage = *codePage;
  }
  return arguments;
}

/// Prints the faults in the order of their places, as "file:line: reason" or "file: record N: reason".
int printFaults(std::string const & file, Faults faults, char const * placeName) {
  std::stable_sort(faults.begin(), faults.end(), [](Fault const & a, Fault const & b) { return a.place < b.place; });
  for (Fault const & fault : faults) {
    std::string const place = fault.place == 0 ? "" : placeName + std::to_string(fault.place);
    std::fprintf(stderr, "%s%s: %s\n", file.c_str(), place.c_str(), fault.reason.c_str());
  }
  return faults.empty() ? kDone : kFaulty;
}

/// Refuses to put the result in the place of what it is made of: a translator's list would be gone.
void requireOtherFile(std::string const & from, std::string const & to) {
  std::error_code none;
  if (std::filesystem::equivalent(from, to, none))
    throw std::runtime_error(to + ": cannot be written: it is the file that is read");
}

int packList(std::string const & list, std::string const & packed, unsigned codePage) {
  requireOtherFile(list, packed);
  Faults faults;
  Texts const texts = readList(readFile(list), codePage, faults);
  if (faults.empty()) {
    writeFile(packed, pack(texts));
    std::printf("%s: %zu texts\n", packed.c_str(), texts.size());
  }
  return printFaults(list, faults, ":");
}

int unpackFile(std::string const & packed, std::string const & list, unsigned codePage) {
  requireOtherFile(packed, list);
  Faults faults;
  Texts const texts = unpack(readFile(packed), faults);
  if (faults.empty()) {
    writeFile(list, writeList(texts, codePage));
    std::printf("%s: %zu texts\n", list.c_str(), texts.size());
  }
  return printFaults(packed, faults, ": record ");
}

int checkFile(std::string const & packed) {
  Faults faults;
  Texts const texts = unpack(readFile(packed), faults);
  if (faults.empty())
    std::printf("%s: %zu texts, no fault\n", packed.c_str(), texts.size());
  return printFaults(packed, faults, ": record ");
}

int run(Arguments const & arguments) {
  if (arguments.wantsHelp) {
    std::fputs(kUsage, stdout);
    return kDone;
  }
  std::vector<std::string> const & words = arguments.words;
  if (words.size() == 3 && words[0] == "pack")
    return packList(words[1], words[2], arguments.codePage);
  if (words.size() == 3 && words[0] == "unpack")
    return unpackFile(words[1], words[2], arguments.codePage);
  if (words.size() == 2 && words[0] == "check")
    return checkFile(words[1]);
  std::fputs(kUsage, stderr);
  return kMisused;
}

} // namespace

int main(int argc, char ** argv) {
  try {
    std::optional<Arguments> const arguments = readArguments(argc, argv);
    if (arguments)
      return run(*arguments);
    std::fputs(kUsage, stderr);
    return kMisused;
  } catch (std::exception const & error) {
    std::fprintf(stderr, "kivml: %s\n", error.what());
    return kFaulty;
  }
}

#include "locale/language_run.hpp"

#include "locale/amlstr_format.hpp"
#include "support/processes/child_process.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <numeric>
#include <sstream>

namespace {

constexpr char kProgram[] = "language_product.exe";

void append(std::string & bytes, unsigned long value) {
  for (int shift = 0; shift < 32; shift += 8)
    bytes += static_cast<char>(value >> shift & 0xFF);
}

} // namespace

LanguageFolder::LanguageFolder() { addPack(kProgram, kProgram); }

void LanguageFolder::write(std::string const & name, std::string_view bytes) const {
  for (std::size_t at = name.find('\\'); at != std::string::npos; at = name.find('\\', at + 1))
    CreateDirectoryA((folder_ / name.substr(0, at)).c_str(), nullptr);
  support::writeFile(folder_ / name, bytes);
}

void LanguageFolder::addPack(std::string const & source, std::string const & name) const {
  write(name, support::readFile(support::binFolder() + source).value());
}

support::ProgramStart LanguageFolder::start(std::string const & steps, std::string const & arguments) const {
  support::ProgramStart start{.program = folder_ / kProgram, .arguments = arguments};
  start.environment["KIVARA_STEPS"] = steps;
  start.environment["PATH"] = support::binFolder() + ";C:\\windows\\system32";
  start.workingFolder = folder_.path();
  return start;
}

LanguageFolder::Facts LanguageFolder::facts(std::string const & steps, std::string const & arguments) const {
  return factsOf(support::runProgram(start(steps, arguments)).output);
}

std::vector<std::string> LanguageFolder::debugTexts(std::string const & steps, std::string const & arguments) const {
  support::Debugger const debugger(start(steps, arguments));
  debugger.waitForEnd();
  return debugger.texts();
}

LanguageFolder::Facts factsOf(std::string const & output) {
  LanguageFolder::Facts facts;
  std::istringstream stream(output);
  for (std::string line; std::getline(stream, line);) {
    if (line.ends_with('\r'))
      line.pop_back();
    std::size_t const sign = line.find('=');
    if (sign != std::string::npos)
      facts[line.substr(0, sign)] = line.substr(sign + 1);
  }
  return facts;
}

std::string packedTexts(std::vector<std::pair<unsigned long, std::string>> const & texts) {
  namespace mlfile = kivara::mlfile;
  std::string bytes;
  append(bytes, mlfile::kMagic);
  append(bytes, mlfile::kVersion);
  for (auto const & [resId, text] : texts) {
    append(bytes, static_cast<unsigned long>(text.size()));
    append(bytes, resId);
    for (char const c : text)
      bytes += static_cast<char>(static_cast<unsigned char>(c) ^ mlfile::kMask);
  }
  append(bytes, 0);
  return bytes;
}

testing::AssertionResult holds(std::string const & text, std::string const & part) {
  if (text.find(part) != std::string::npos)
    return testing::AssertionSuccess() << text;
  return testing::AssertionFailure() << '"' << part << "\" is not in \"" << text << '"';
}

testing::AssertionResult tells(std::vector<std::string> const & texts, std::string const & text) {
  if (std::find(texts.begin(), texts.end(), text) != texts.end())
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << '"' << text << "\" is none of\n"
                                     << std::accumulate(texts.begin(), texts.end(), std::string());
}

testing::AssertionResult anyHolds(std::vector<std::string> const & texts, std::string const & part) {
  return holds(std::accumulate(texts.begin(), texts.end(), std::string()), part);
}

// The numbers in the code and the texts in the resource scripts of both languages are the same.
#include "base/textids.hpp"

#include "support/data/files.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace texts = kivara::texts;

using Texts = std::map<unsigned long, std::string>;

/// Lines such as `  0x2922 "OK"`, and no pictures. A number that stands twice is an error.
Texts readScript(std::string const & language) {
  std::string const path = std::string(KIVARA_RESOURCES) + "/" + language + "/kivara.rc";
  std::istringstream script(support::readFile(path).value());
  Texts found;
  for (std::string line; std::getline(script, line);) {
    std::size_t const start = line.find_first_not_of(' ');
    std::size_t const quote = line.find('"');
    if (start == std::string::npos || line[start] < '0' || line[start] > '9' || quote == std::string::npos ||
        line.find(" BITMAP ") != std::string::npos)
      continue;
    std::string const text = line.substr(quote + 1, line.rfind('"') - quote - 1);
    if (!found.emplace(std::stoul(line.substr(start), nullptr, 0), text).second)
      throw std::runtime_error(path + " has a number twice: " + line);
  }
  return found;
}

/// What "%" stands before, in order: "%s" in "Error code: %s".
std::string placeholdersOf(std::string const & text) {
  std::string found;
  for (std::size_t at = text.find('%'); at != std::string::npos && at + 1 < text.size(); at = text.find('%', at + 2))
    found += text.substr(at, 2);
  return found;
}

std::set<unsigned long> numbersOfTheCode() {
  std::set<unsigned long> numbers;
  for (unsigned long const id : texts::kAll)
    numbers.insert(id & 0xFFFF);
  for (unsigned long index = 0; index < 12; ++index)
    numbers.insert((texts::kJanuary & 0xFFFF) + index);
  for (unsigned long index = 0; index < 7; ++index)
    numbers.insert((texts::kMonday & 0xFFFF) + index);
  for (long number = texts::kFirstError; number <= texts::kLastError; ++number)
    numbers.insert(static_cast<unsigned long>(number));
  for (unsigned long id = texts::kFirstFault; id <= texts::kLastFault; ++id)
    numbers.insert(id & 0xFFFF);
  return numbers;
}

/// Numbers that no code of the library asks for, each with the reason why the packs have them.
std::map<unsigned long, char const *> const kUnused = {
    {970, "packs have it between those of the codes 11 and 13, though code 12 has another text"}};

class TextsOfTheLibrary : public testing::TestWithParam<char const *> {};

TEST_P(TextsOfTheLibrary, AreThereForEachNumberInTheCode) {
  Texts const script = readScript(GetParam());
  for (unsigned long const number : numbersOfTheCode())
    EXPECT_TRUE(script.contains(number)) << number;
}

TEST_P(TextsOfTheLibrary, AreAllUsedButThoseWithAReason) {
  std::set<unsigned long> const numbers = numbersOfTheCode();
  for (auto const & [number, text] : readScript(GetParam()))
    EXPECT_TRUE(numbers.contains(number) != kUnused.contains(number)) << number << ": " << text;
}

INSTANTIATE_TEST_SUITE_P(Languages, TextsOfTheLibrary, testing::Values("1031", "2057"),
                         [](auto const & language) { return std::string(language.param); });

TEST(TextsOfBothLanguages, HaveTheSamePlaceholders) {
  Texts const english = readScript("2057");
  for (auto const & [number, german] : readScript("1031")) {
    ASSERT_TRUE(english.contains(number)) << number;
    EXPECT_EQ(placeholdersOf(german), placeholdersOf(english.at(number))) << number << ": " << german;
  }
}

TEST(TextsOfBothLanguages, HaveAPlaceholderForTheCodeOfAnInternalError) {
  EXPECT_EQ(placeholdersOf(readScript("2057").at(texts::kInternalError & 0xFFFF)), "%s");
}

} // namespace

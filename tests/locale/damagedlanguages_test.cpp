// Files of texts and lists of languages that are damaged in every way: nothing faults, hangs or stays open.
#include "amlstr.hpp"
#include "aplatfrm.hpp"
#include "locale/language_run.hpp"
#include "locale/languagelist.hpp"
#include "support/data/damage.hpp"
#include "support/data/files.hpp"
#include "support/imports/import_hook.hpp"
#include "support/memory/allocation.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>

namespace {

constexpr int kShards = 10;
constexpr std::size_t kTextsPerShard = 1'000;

/// The file name with which the reader, which looks below the program's folder, comes to \p path on the same drive.
SV::String fileNameFor(std::string const & path) {
  std::string up;
  for (int i = 0; i < 40; ++i) // more than folders are deep: the root's parent is the root
    up += "..\\";
  return SV::String((up + path.substr(3)).c_str());
}

/// The file is opened for this alone, which fails while anybody has it open.
void overwrite(std::string const & path, std::string const & bytes) {
  HANDLE const file =
      CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(file, INVALID_HANDLE_VALUE) << "the reader left it open: " << GetLastError();
  DWORD written = 0;
  WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(file);
  ASSERT_EQ(written, bytes.size());
}

std::vector<std::pair<unsigned long, std::string>> someTexts(std::mt19937 & random) {
  std::vector<std::pair<unsigned long, std::string>> texts;
  for (std::size_t count = random() % 6; count > 0; --count)
    texts.emplace_back(random() % 70'000, std::string(1 + random() % 60, static_cast<char>('a' + random() % 26)));
  return texts;
}

/// All texts before the first fault, by the rules of the format; whether the end record was reached.
bool expectedTexts(std::string const & bytes, std::map<unsigned short, std::string> & texts) {
  auto const number = [&](std::size_t at) {
    unsigned long value = 0;
    for (std::size_t i = 0; i < 4; ++i)
      value |= static_cast<unsigned long>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
    return value;
  };
  std::string const head = packedTexts({}).substr(0, 8);
  unsigned char const mask = static_cast<unsigned char>(packedTexts({{0, std::string(1, '\0')}})[16]);
  if (bytes.substr(0, 8) != head)
    return false;
  for (std::size_t at = 8;;) {
    if (bytes.size() - at < 4)
      return false;
    unsigned long const length = number(at);
    if (length == 0)
      return true;
    if (bytes.size() - at < 8 || bytes.size() - at - 8 < length)
      return false;
    std::string text = bytes.substr(at + 8, length);
    for (char & c : text)
      c = static_cast<char>(static_cast<unsigned char>(c) ^ mask);
    texts.try_emplace(static_cast<unsigned short>(number(at + 4)), text);
    at += 8 + length;
  }
}

class DamagedWordFiles : public testing::TestWithParam<int> {};
TEST_P(DamagedWordFiles, GiveWhatPrecedesTheFault) {
  support::TempFolder const folder;
  std::string const path = folder / "kivml.dll";
  ASSERT_EQ(path[0], Kiv_GetProgramPath(true).c_str()[0]) << "the test needs both on one drive";
  SV::String const name = fileNameFor(path);
  support::Random random(static_cast<unsigned>(GetParam()));
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(kTextsPerShard); ++i) {
    std::string const bytes = support::damaged(packedTexts(someTexts(random)), random);
    ASSERT_NO_FATAL_FAILURE(overwrite(path, bytes));
    KivStringContainer container;
    bool const isWhole = KivMLResFileReader(1, &container, name).Read();
    std::map<unsigned short, std::string> expected;
    ASSERT_EQ(isWhole, expectedTexts(bytes, expected)) << i;
    ASSERT_EQ(container.GetTexts().size(), expected.size()) << i;
    for (auto const & [resId, text] : expected) {
      SV::String const * const found = container.Find(resId);
      ASSERT_TRUE(found && std::string(found->c_str(), static_cast<std::size_t>(found->Len())) == text) << i;
    }
  }
}
INSTANTIATE_TEST_SUITE_P(Shards, DamagedWordFiles, testing::Range(0, kShards));

int readsThatSucceed = 0;

/// Reads as the runtime does, as often as it may; then the disk fails.
std::size_t readUntilItFails(void * target, std::size_t size, std::size_t count, FILE * file) {
  return readsThatSucceed-- > 0 ? std::fread(target, size, count, file) : 0;
}

TEST(WordFile, GivesWhatPrecedesAReadThatFailsWithinAText) {
  support::TempFolder const folder;
  std::string const path = folder / "kivml.dll";
  overwrite(path, packedTexts({{1, "first"}, {2, "second"}}));
  auto const readWith = [](auto * function) {
    support::replaceImports(GetModuleHandleA("kivara.dll"), "msvcrt.dll",
                            {{"fread", reinterpret_cast<void *>(function)}});
  };
  readWith(readUntilItFails);
  readsThatSucceed = 2 + 3 + 2; // the head, the first text with its numbers, the numbers of the second
  KivStringContainer container;
  EXPECT_FALSE(KivMLResFileReader(1, &container, fileNameFor(path)).Read());
  readWith(std::fread); // the counts of an instrumented build are read through it at the end
  ASSERT_EQ(container.GetTexts().size(), 1u);
  EXPECT_STREQ(container.Find(1)->c_str(), "first");
}

/// What the runtime reads of a text file: up to a Ctrl-Z, with CR LF for a line end.
std::string asText(std::string const & bytes) {
  std::string text;
  for (std::size_t at = 0; at < bytes.size() && bytes[at] != '\x1A'; ++at)
    if (bytes.compare(at, 2, "\r\n") != 0)
      text += bytes[at];
  return text;
}

/// The numbers of the lines, by the rules of the list.
std::vector<unsigned short> expectedLanguages(std::string const & bytes) {
  std::string const text = asText(bytes);
  std::vector<unsigned short> languages;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = std::min(at + 99, text.size());
    if (std::size_t const lineEnd = text.find('\n', at); lineEnd < end)
      end = lineEnd + 1;
    std::string line = text.substr(at, end - at);
    at = end;
    line = line.c_str(); // what follows a NUL is not seen
    if (line.ends_with('\n'))
      line.pop_back();
    line.erase(0, std::min(line.find_first_not_of(" \t\n\v\f\r"), line.size()));
    if (!line.empty() && line[0] != ';')
      languages.push_back(static_cast<unsigned short>(std::atoi(line.c_str())));
  }
  return languages;
}

class DamagedLanguageLists : public testing::TestWithParam<int> {};
TEST_P(DamagedLanguageLists, AreReadByTheRulesOfTheLines) {
  support::TempFolder const folder;
  std::string const path = folder / "lang.ini";
  support::Random random(1000u + static_cast<unsigned>(GetParam()));
  support::GuardPages const guard;
  for (std::size_t i = 0; i < support::times(kTextsPerShard); ++i) {
    std::string text = "; languages\n2057 English\r\n  1031\n" + std::string(random() % 200, ' ') + "1036\n\n9999;\n";
    text = support::damaged(text, random, {.pieces = {";", "\n", "\r\n", " ", "-1"}});
    ASSERT_NO_FATAL_FAILURE(overwrite(path, text));
    std::FILE * const file = std::fopen(path.c_str(), "rt");
    ASSERT_NE(file, nullptr);
    std::vector<unsigned short> languages;
    for (unsigned short id = 0; kivara::nextLanguage(file, id);)
      languages.push_back(id);
    std::fclose(file);
    ASSERT_EQ(languages, expectedLanguages(text)) << i;
  }
}
INSTANTIATE_TEST_SUITE_P(Shards, DamagedLanguageLists, testing::Range(0, kShards));

} // namespace

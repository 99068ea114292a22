// Runs with LC_ALL=ja_JP.UTF-8: code page 932, whose characters have one or two bytes.

#include "atrace.hpp"

#include "support/data/files.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

/// U+8868. The code page of the console is the same, so its bytes stay as they are.
constexpr char kCharacter[] = "\x95\x5C";

/// What the debug output writes to the stream of the console.
std::string consoleBytes(std::string const & text) {
  static char program[] = "tool.exe";
  static char option[] = "-console";
  static char * words[] = {program, option, nullptr};
  KivCmdline::init(2, words, true, "log");
  if (std::freopen("bytes.txt", "wb", stderr) == nullptr)
    return "no stream";
  KivDebugOut(text.c_str());
  std::fclose(stderr);
  return support::readFile("bytes.txt").value_or("no file");
}

class DoubleByteOutput : public testing::Test {
protected:
  void SetUp() override {
    if (GetACP() != 932 || GetOEMCP() != 932)
      GTEST_SKIP() << "the system does not take the code page from LC_ALL";
  }
};

std::string characters(int count) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += kCharacter;
  return text;
}

TEST_F(DoubleByteOutput, ForTheConsoleTearsNoCharacterOfALongText) {
  std::string const text = characters(5000);
  EXPECT_EQ(consoleBytes(text), text);
}

TEST_F(DoubleByteOutput, ForTheConsoleTearsNoneAfterAnOddByteEither) {
  std::string const text = "x" + characters(5000);
  EXPECT_EQ(consoleBytes(text), text);
}

TEST_F(DoubleByteOutput, ForTheConsoleEndsWithTheTextAfterHalfACharacter) {
  EXPECT_EQ(consoleBytes("text\x95").substr(0, 4), "text");
}

} // namespace

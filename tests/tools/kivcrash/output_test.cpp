#include "findings/facts.hpp"
#include "output/jsonoutput.hpp"
#include "output/textoutput.hpp"

#include <gtest/gtest.h>

using namespace kivcrash;

namespace {

Findings sound() {
  Findings findings;
  findings.facts = {{"program", "C:\\orders.exe"}, {"time", "today"}};
  findings.fault = Fault{"ACCESS_VIOLATION", 0xC0000005, 0x140001234, "orders.exe", 0x1234, "writing 0x10"};
  findings.plugins = {"01 a.dll [A \"b\"]"};
  StackLine const inlined{0x140001234, "orders.exe", 0x1234,
                          false,       false,        {{"inner(int)", {"a.cpp", 5}}, {"outer()", {"b.cpp", 7}}}};
  StackLine const guess{0x7FF800001000, "system.dll", 0x1000, true, true, {}};
  StackLine const nowhere{0x10, "", 0, true, false, {}};
  StackLine const noLine{0x140001300, "orders.exe", 0x1300, true, false, {{"", {"", 0}}}};
  findings.stacks = {Stack{8, true, {inlined, guess, nowhere, noLine}, "no more"}};
  findings.modules = {{Module{0x140000000, 0x10000, 1, 2, "C:\\orders.exe", "7.2.0.1"}, "D:\\orders.exe", "", true}};
  findings.report = "a\r\n";
  findings.problems = {"one \x1F"};
  return findings;
}

TEST(CrashText, HasFaultFactsPluginsAndStacks) {
  EXPECT_EQ(asText(sound(), false),
            "what happened:      ACCESS_VIOLATION (0xC0000005) at 0x0000000140001234, orders.exe+0x1234, writing 0x10\n"
            "program:            C:\\orders.exe\n"
            "time:               today\n"
            "plug-in:            01 a.dll [A \"b\"]\n"
            "\n"
            "Stack of thread 8, which failed:\n"
            "0     (inlined)  inner(int)  a.cpp:5\n"
            "      orders.exe+0x1234  outer()  b.cpp:7\n"
            "1   ? system.dll+0x1000\n"
            "2     0x0000000000000010\n"
            "3     orders.exe+0x1300  (no name)\n"
            "    (no more)\n");
}

TEST(CrashText, HasModulesWhereTheyAreWanted) {
  std::string const text = asText(sound(), true);
  EXPECT_NE(text.find("\nModules:\n"
                      "0x0000000140000000  7.2.0.1          C:\\orders.exe\n"
                      "    file:    D:\\orders.exe\n"
                      "    symbols: none\n"),
            std::string::npos)
      << text;
}

TEST(CrashText, SaysThatTheFaultIsInNoModule) {
  Findings findings;
  findings.fault = Fault{"X", 1, 0x10, "", 0, ""};
  EXPECT_EQ(asText(findings, false), "what happened:      X (0x00000001) at 0x0000000000000010, where no module was\n");
}

TEST(CrashFacts, NameTheOtherFilesOfAnArchiveTogether) {
  CrashFile file;
  file.others = {"orders.log", "notes.txt"};
  EXPECT_EQ(factsOf(file),
            (std::vector<std::pair<std::string, std::string>>{{"also in the archive", "orders.log, notes.txt"}}));
}

TEST(CrashTexts, HaveNoCharacterThatMovesTheCursor) {
  EXPECT_EQ(printable("a\x1B[2J\x7F b\n"), "a?[2J? b?");
  EXPECT_EQ(printable("\xC2\x80\xC2\x9B"
                      "2J\xC2\xA0\xC3\x9B\xC2"),
            "??2J\xC2\xA0\xC3\x9B\xC2")
      << "those of two bytes too";
  EXPECT_TRUE(hasControlCharacter("a\xC2\x9B"));
  EXPECT_FALSE(hasControlCharacter("B\xC3\xA4r? "));
}

TEST(CrashTexts, OfMoreThanTheSystemCanConvertAreRefused) {
  std::string_view const large("", std::size_t{1} << 31); // which is not looked at
  EXPECT_THROW(fromSystem(large), std::runtime_error);
  EXPECT_THROW(toUtf8(std::wstring_view(L"", std::size_t{1} << 31)), std::runtime_error);
}

TEST(CrashJson, IsUtf8WhateverTheNamesAre) {
  Findings findings;
  findings.plugins = {"B\xC3\xA4r", "a\xFF"
                                    "b"};
  EXPECT_EQ(asJson(findings), "{\"facts\": {}, \"plugins\": [\"B\xC3\xA4r\", \"a\xEF\xBF\xBD"
                              "b\"], \"stacks\": [], "
                              "\"modules\": [], \"problems\": []}\n");
}

TEST(CrashJson, HasAllOfItWithTextsEscaped) {
  EXPECT_EQ(
      asJson(sound()),
      "{\"facts\": {\"program\": \"C:\\\\orders.exe\", \"time\": \"today\"}, "
      "\"fault\": {\"name\": \"ACCESS_VIOLATION\", \"code\": \"0xC0000005\", \"address\": \"0x0000000140001234\", "
      "\"module\": \"orders.exe\", \"offset\": \"0x1234\", \"access\": \"writing 0x10\"}, "
      "\"plugins\": [\"01 a.dll [A \\\"b\\\"]\"], "
      "\"stacks\": [{\"thread\": 8, \"failing\": true, \"frames\": ["
      "{\"address\": \"0x0000000140001234\", \"module\": \"orders.exe\", \"offset\": \"0x1234\", \"guess\": false, "
      "\"locations\": [{\"function\": \"inner(int)\", \"file\": \"a.cpp\", \"line\": 5}, "
      "{\"function\": \"outer()\", \"file\": \"b.cpp\", \"line\": 7}]}, "
      "{\"address\": \"0x00007FF800001000\", \"module\": \"system.dll\", \"offset\": \"0x1000\", \"guess\": true, "
      "\"locations\": []}, "
      "{\"address\": \"0x0000000000000010\", \"guess\": false, \"locations\": []}, "
      "{\"address\": \"0x0000000140001300\", \"module\": \"orders.exe\", \"offset\": \"0x1300\", \"guess\": false, "
      "\"locations\": [{}]}], \"end\": \"no more\"}], "
      "\"modules\": [{\"path\": \"C:\\\\orders.exe\", \"base\": \"0x0000000140000000\", \"size\": 65536, "
      "\"timeStamp\": \"0x00000002\", \"version\": \"7.2.0.1\", \"file\": \"D:\\\\orders.exe\"}], "
      "\"report\": \"a\\u000d\\u000a\", \"problems\": [\"one \\u001f\"]}\n");
}

} // namespace

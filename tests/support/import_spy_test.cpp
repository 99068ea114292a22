#include "support/import_spy.hpp"

#include "tools/winapi.hpp"

#include <cfloat>
#include <gtest/gtest.h>
#include <string>

using support::SpiedCall;
using support::spyOnImport;

TEST(ImportSpy, SeesTheArgumentsAndLeavesTheCallAlone) {
  std::string seen;
  ASSERT_TRUE(spyOnImport(nullptr, "lstrcmpA", [&seen](SpiedCall const & call) {
    seen += std::string(call.text(0)) + '/' + call.text(1) + ';';
  }));
  EXPECT_EQ(lstrcmpA("same", "same"), 0);
  EXPECT_NE(lstrcmpA("one", "two"), 0);
  EXPECT_EQ(seen, "same/same;one/two;");
}

TEST(ImportSpy, KeepsNumbersInFloatingPointRegisters) {
  int calls = 0;
  ASSERT_TRUE(spyOnImport(nullptr, "_scalb", [&calls](SpiedCall const &) { calls += static_cast<int>(0.5 + 1.0); }));
  EXPECT_EQ(_scalb(1.5, 3), 12.0);
  EXPECT_EQ(calls, 1);
}

TEST(ImportSpy, AFunctionCanHaveSeveralSpies) {
  int first = 0, second = 0;
  spyOnImport(nullptr, "GetACP", [&first](SpiedCall const &) { ++first; });
  spyOnImport(nullptr, "GetACP", [&second](SpiedCall const &) { ++second; });
  EXPECT_NE(GetACP(), 0u);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 1);
}

TEST(ImportSpy, CanChangeAnArgument) {
  spyOnImport(nullptr, "lstrlenA", [](SpiedCall & call) { call.arguments[0] += 2; });
  EXPECT_EQ(lstrlenA("12345"), 3);
}

TEST(ImportSpy, SaysWhenTheModuleHasNoSuchImport) {
  EXPECT_FALSE(spyOnImport(nullptr, "lstrcmp", [](SpiedCall const &) {}));
  EXPECT_FALSE(spyOnImport("no_such.dll", "lstrcmpA", [](SpiedCall const &) {}));
}

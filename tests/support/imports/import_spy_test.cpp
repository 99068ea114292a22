#include "support/imports/import_spy.hpp"

#include "support/imports/import_hook.hpp"

#include <winhttp.h>

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

// This program loads winhttp.dll late.

wchar_t const kUrl[] = L"http://host/path";

BOOL splitUrl() {
  URL_COMPONENTS parts = {};
  parts.dwStructSize = sizeof parts;
  return WinHttpCrackUrl(kUrl, 0, 0, &parts);
}

TEST(LateImports, AreLoadedByTheFirstCall) {
  EXPECT_EQ(GetModuleHandleA("winhttp.dll"), nullptr);
  EXPECT_TRUE(splitUrl());
  EXPECT_NE(GetModuleHandleA("winhttp.dll"), nullptr);
}

TEST(LateImports, AreSeenAndTheCallGoesOn) {
  wchar_t const * seen = nullptr;
  int calls = 0;
  ASSERT_TRUE(spyOnImport(nullptr, "WinHttpCrackUrl", [&](SpiedCall const & call) {
    seen = reinterpret_cast<wchar_t const *>(call.arguments[0]);
    ++calls;
  }));
  EXPECT_EQ(GetModuleHandleA("winhttp.dll"), nullptr);
  EXPECT_TRUE(splitUrl());
  EXPECT_TRUE(splitUrl());
  EXPECT_EQ(seen, kUrl);
  EXPECT_EQ(calls, 2);
}

TEST(LateImports, CanHaveSeveralSpies) {
  int first = 0, second = 0;
  spyOnImport(nullptr, "WinHttpCrackUrl", [&first](SpiedCall const &) { ++first; });
  spyOnImport(nullptr, "WinHttpCrackUrl", [&second](SpiedCall const &) { ++second; });
  EXPECT_TRUE(splitUrl());
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 1);
}

TEST(LateImports, OfTheLibraryThatAreNotCalledHereAreNone) {
  EXPECT_FALSE(spyOnImport(nullptr, "WinHttpCreateUrl", [](SpiedCall const &) {}));
}

BOOL WINAPI refuseUrl(wchar_t const *, DWORD, DWORD, URL_COMPONENTS *) { return FALSE; }

TEST(LateImports, CanBeReplaced) {
  support::replaceImports(GetModuleHandleA(nullptr), "winhttp.dll",
                          {{"WinHttpCrackUrl", reinterpret_cast<void *>(refuseUrl)}});
  EXPECT_FALSE(splitUrl());
}

TEST(LateImports, OfAnotherLibraryAreLeftAlone) {
  support::replaceImports(GetModuleHandleA(nullptr), "wininet.dll",
                          {{"WinHttpCrackUrl", reinterpret_cast<void *>(refuseUrl)}});
  EXPECT_TRUE(splitUrl());
}

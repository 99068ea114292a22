#include "aentry.hpp"
#include "frame/box_watch.hpp"
#include "frame/recording_application.hpp"
#include "support/imports/import_hook.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

using kivtest::BoxWatch;

namespace {

/// More than any address space has, and hidden from the compiler.
std::size_t volatile tooMuch = std::size_t{1} << 50;

/// Does something in a running application.
void inApplication(std::function<void()> const & action) {
  kivtest::RecordingApplication application;
  application.onRun = [&] { return action(), 0; };
  EXPECT_EQ(Kiv_ToolkitEntry(GetModuleHandleA(nullptr), nullptr, nullptr, SW_HIDE), 0);
}

TEST(LowMemory, AsksWithItsTextAndRetriesUntilTheUserCancels) {
  BoxWatch watch({IDRETRY, IDRETRY, IDCANCEL});
  inApplication([] { EXPECT_EQ(std::malloc(tooMuch), nullptr); });
  ASSERT_EQ(watch.boxes().size(), 3u);
  EXPECT_EQ(watch.boxes()[0].title, "Low memory message");
  EXPECT_EQ(watch.boxes()[0].text, "Failed to allocate memory!\nClose other applications and press retry\n"
                                   "Or press cancel to abort the application!");
  EXPECT_EQ(watch.boxes()[0].owner, nullptr);
}

TEST(LowMemory, AfterCancelNewThrows) {
  BoxWatch watch({IDCANCEL});
  inApplication([] { EXPECT_THROW(::operator delete(::operator new(tooMuch)), std::bad_alloc); });
  EXPECT_EQ(watch.boxes().size(), 1u);
}

// This program has a start of its own.
TEST(LowMemory, WithoutKivaraMainAsksFromTheEntryOn) {
  BoxWatch watch({IDCANCEL});
  EXPECT_EQ(std::malloc(tooMuch), nullptr);
  EXPECT_EQ(watch.boxes().size(), 0u);
  inApplication([] { EXPECT_EQ(std::malloc(tooMuch), nullptr); });
  EXPECT_EQ(watch.boxes().size(), 1u);
}

TEST(LowMemory, AsksAgainAtTheNextFailure) {
  BoxWatch watch({IDCANCEL});
  inApplication([] {
    EXPECT_EQ(std::malloc(tooMuch), nullptr);
    EXPECT_EQ(std::malloc(tooMuch), nullptr);
  });
  EXPECT_EQ(watch.boxes().size(), 2u);
}

/// What the library does with the system's heap, which only its reserve comes from.
std::vector<std::string> heapCalls;

void * WINAPI heapAlloc(HANDLE heap, DWORD flags, SIZE_T size) {
  heapCalls.push_back("take " + std::to_string(size));
  return HeapAlloc(heap, flags, size);
}

BOOL WINAPI heapFree(HANDLE heap, DWORD flags, void * block) {
  heapCalls.push_back("give");
  return HeapFree(heap, flags, block);
}

TEST(LowMemory, GivesItsReserveBeforeItAsksAndTakesAnotherForARetryOnly) {
  support::replaceImports(
      GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
      {{"HeapAlloc", reinterpret_cast<void *>(heapAlloc)}, {"HeapFree", reinterpret_cast<void *>(heapFree)}});
  BoxWatch watch({IDRETRY, IDCANCEL, IDCANCEL});
  watch.whileOpen = [] { heapCalls.push_back("asked"); };
  inApplication([] {
    EXPECT_EQ(std::malloc(tooMuch), nullptr);
    EXPECT_EQ(std::malloc(tooMuch), nullptr);
  });
  EXPECT_EQ(heapCalls, (std::vector<std::string>{"give", "asked", "take 4096", "give", "asked", "asked"}));
}

TEST(LowMemory, ShowsNothingUnderSuppressionAndGivesUp) {
  BoxWatch watch;
  inApplication([] {
    SV::Application::SetModalDialogSuppression(true);
    EXPECT_EQ(std::malloc(tooMuch), nullptr);
  });
  EXPECT_TRUE(watch.boxes().empty());
}

} // namespace

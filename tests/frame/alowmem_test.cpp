#include "aentry.hpp"
#include "frame/box_watch.hpp"
#include "frame/recording_application.hpp"

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

TEST(LowMemory, AsksAgainAtTheNextFailure) {
  BoxWatch watch({IDCANCEL});
  inApplication([] {
    EXPECT_EQ(std::malloc(tooMuch), nullptr);
    EXPECT_EQ(std::malloc(tooMuch), nullptr);
  });
  EXPECT_EQ(watch.boxes().size(), 2u);
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

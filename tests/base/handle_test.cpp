#include "handles/handle.hpp"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace {

/// A kind whose handles are numbers that are written down when they are closed.
struct NumberKind {
  using Value = int;
  static int none() { return -1; }
  static void close(int number) {
    closed.push_back(number);
    SetLastError(ERROR_INVALID_HANDLE);
  }
  static inline std::vector<int> closed;
};
using Number = handles::Handle<NumberKind>;
using Numbers = std::vector<int>;

static_assert(!std::is_copy_constructible_v<Number> && !std::is_copy_assignable_v<Number>);
static_assert(!std::is_same_v<handles::File, handles::KernelObject>, "they differ in what means none");

class Handle : public testing::Test {
protected:
  Handle() { NumberKind::closed.clear(); }

  static Numbers const & closed() { return NumberKind::closed; }
};

TEST_F(Handle, IsClosedOnceAtItsEnd) {
  {
    Number const number(5);
    EXPECT_TRUE(static_cast<bool>(number));
    EXPECT_EQ(number.get(), 5);
    EXPECT_EQ(closed(), Numbers());
  }
  EXPECT_EQ(closed(), Numbers{5});
}

TEST_F(Handle, ThatIsNoneIsNotClosed) {
  {
    Number const empty;
    Number const none(-1);
    EXPECT_FALSE(static_cast<bool>(empty));
    EXPECT_FALSE(static_cast<bool>(none));
  }
  EXPECT_EQ(closed(), Numbers());
}

TEST_F(Handle, IsClosedWithoutAChangeToTheLastError) {
  SetLastError(ERROR_FILE_NOT_FOUND);
  { Number const number(5); }
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST_F(Handle, ThatIsMovedBelongsToItsNewOwnerAlone) {
  Number first(5);
  {
    Number const second(std::move(first));
    EXPECT_FALSE(static_cast<bool>(first)); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(second.get(), 5);
  }
  EXPECT_EQ(closed(), Numbers{5});
}

TEST_F(Handle, ThatIsAssignedToClosesItsFormerOne) {
  Number first(5);
  Number second(6);
  first = std::move(second);
  EXPECT_EQ(closed(), Numbers{5});
  EXPECT_EQ(first.get(), 6);
  EXPECT_FALSE(static_cast<bool>(second)); // NOLINT(bugprone-use-after-move)
}

TEST_F(Handle, ThatIsReleasedIsNotClosed) {
  Number number(5);
  EXPECT_EQ(number.release(), 5);
  EXPECT_FALSE(static_cast<bool>(number));
  EXPECT_EQ(closed(), Numbers());
}

TEST_F(Handle, ThatIsResetTakesAnotherOneOrNone) {
  Number number(5);
  number.reset(6);
  EXPECT_EQ(closed(), Numbers{5});
  EXPECT_EQ(number.get(), 6);
  number.reset();
  EXPECT_EQ(closed(), (Numbers{5, 6}));
  EXPECT_FALSE(static_cast<bool>(number));
}

TEST(HandleKinds, KnowWhatMeansNone) {
  EXPECT_EQ(handles::File().get(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(handles::FolderSearch().get(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(handles::KernelObject().get(), nullptr);
  EXPECT_EQ(handles::Stream().get(), nullptr);
}

bool isOpen(HANDLE handle) {
  DWORD flags = 0;
  return GetHandleInformation(handle, &flags) != 0;
}

TEST(HandleKinds, CloseWhatTheSystemHandsOut) {
  HANDLE const event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  HANDLE const file = CreateFileA("NUL", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  HDC const device = CreateCompatibleDC(nullptr);
  HRGN const region = CreateRectRgn(0, 0, 1, 1);
  {
    handles::KernelObject const ownedEvent(event);
    handles::File const ownedFile(file);
    handles::MemoryDevice const ownedDevice(device);
    handles::RegionObject const ownedRegion(region);
    EXPECT_TRUE(isOpen(event));
    EXPECT_TRUE(isOpen(file));
    EXPECT_NE(GetObjectType(device), 0u);
    EXPECT_NE(GetObjectType(region), 0u);
  }
  EXPECT_FALSE(isOpen(event));
  EXPECT_FALSE(isOpen(file));
  EXPECT_EQ(GetObjectType(device), 0u);
  EXPECT_EQ(GetObjectType(region), 0u);
}

} // namespace

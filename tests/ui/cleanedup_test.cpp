#include "ui/cleanedup.hpp"

#include <gtest/gtest.h>

namespace {

struct Counted {
  Counted() { ++alive; }
  Counted(Counted const &) = delete;
  Counted & operator=(Counted const &) = delete;
  ~Counted() { --alive; }
  static int alive;
  int value = 1;
};
int Counted::alive = 0;

constinit kivara::CleanedUp<Counted> counted;

class Exit : public KivEvent {
public:
  Exit() : KivEvent(KIV_EVENT_AppExit) {}
};

void triggerExit() { Exit().trigger(); }

TEST(CleanedUp, ObjectIsMadeWhenItIsFirstAskedFor) {
  EXPECT_EQ(counted.existing(), nullptr);
  EXPECT_EQ(Counted::alive, 0);
  Counted & first = counted.get();
  EXPECT_EQ(&counted.get(), &first);
  EXPECT_EQ(counted.existing(), &first);
  EXPECT_EQ(Counted::alive, 1);
  triggerExit();
}

TEST(CleanedUp, ObjectIsDeletedAtTheExitAndForgotten) {
  counted.get().value = 2;
  triggerExit();
  EXPECT_EQ(Counted::alive, 0);
  EXPECT_EQ(counted.existing(), nullptr);
}

TEST(CleanedUp, ObjectIsMadeAnewAfterTheExitAndDeletedAtTheNext) {
  counted.get().value = 2;
  triggerExit();
  EXPECT_EQ(counted.get().value, 1);
  triggerExit();
  EXPECT_EQ(Counted::alive, 0);
  triggerExit();
  EXPECT_EQ(counted.existing(), nullptr);
}

TEST(CleanedUp, ObjectThatWasNeverAskedForIsNotMade) {
  triggerExit();
  EXPECT_EQ(counted.existing(), nullptr);
}

} // namespace

#include "aebox.hpp"
#include "aevent.hpp"

#include <gtest/gtest.h>

namespace {

class Exit : public KivEvent {
public:
  Exit() : KivEvent(KIV_EVENT_AppExit) {}
};

class ShownMessages : public testing::Test {
protected:
  ~ShownMessages() override { KivErrorBox::ClearShownErrorBoxesTable(); }

  static int isShown(char const * text, KivErrorBoxType type) { return KivErrorBox::IsShownMessage(text, type); }
  static void remember(char const * text) { KivErrorBox::RememberMessage(text); }
};

TEST_F(ShownMessages, AreNoneAtFirst) {
  EXPECT_EQ(isShown("", ShowOncePerKey), 0);
  EXPECT_EQ(isShown("", ShowOncePerText), 0);
  KivErrorBox::ClearShownErrorBoxesTable();
}

TEST_F(ShownMessages, AreKnownByTheirKey) {
  remember("[a-01]\nfirst");
  EXPECT_EQ(isShown("[a-01]\nsecond", ShowOncePerKey), 1);
  EXPECT_EQ(isShown("[a-01]", ShowOncePerKey), 1);
  EXPECT_EQ(isShown("[a-02]\nfirst", ShowOncePerKey), 0);
  EXPECT_EQ(isShown("[A-01]\nfirst", ShowOncePerKey), 0);
}

TEST_F(ShownMessages, HaveAKeyThatGoesToTheFirstBracketWhereverItIs) {
  remember("The file x] is damaged]");
  EXPECT_EQ(isShown("The file x] is missing", ShowOncePerKey), 1);
  EXPECT_EQ(isShown("The file y] is damaged]", ShowOncePerKey), 0);
}

TEST_F(ShownMessages, WithoutABracketShareTheEmptyKey) {
  remember("first");
  EXPECT_EQ(isShown("second", ShowOncePerKey), 1);
  EXPECT_EQ(isShown("", ShowOncePerKey), 1);
  EXPECT_EQ(isShown("x]", ShowOncePerKey), 0);
}

TEST_F(ShownMessages, AreKnownByTheirText) {
  remember("[a-01]\nfirst");
  EXPECT_EQ(isShown("[a-01]\nfirst", ShowOncePerText), 1);
  EXPECT_EQ(isShown("[a-01]\nsecond", ShowOncePerText), 0);
  EXPECT_EQ(isShown("[a-01]\nfirs", ShowOncePerText), 0);
}

TEST_F(ShownMessages, OfOneKeyAreKnownByTheFirstText) {
  remember("[a-01]\nfirst");
  remember("[a-01]\nsecond");
  EXPECT_EQ(isShown("[a-01]\nfirst", ShowOncePerText), 1);
  EXPECT_EQ(isShown("[a-01]\nsecond", ShowOncePerText), 0);
}

TEST_F(ShownMessages, DoNotMatterForWhatIsAlwaysShown) {
  remember("[a-01]\nfirst");
  EXPECT_EQ(isShown("[a-01]\nfirst", ShowAlways), 0);
  EXPECT_EQ(isShown("[a-01]\nfirst", static_cast<KivErrorBoxType>(3)), 0);
}

TEST_F(ShownMessages, CanBeForgotten) {
  remember("[a-01]\nfirst");
  KivErrorBox::ClearShownErrorBoxesTable();
  EXPECT_EQ(isShown("[a-01]\nfirst", ShowOncePerKey), 0);
  remember("[a-01]\nsecond");
  EXPECT_EQ(isShown("[a-01]\nsecond", ShowOncePerText), 1);
}

TEST_F(ShownMessages, GoWithTheCleanUpAndCanBeNotedAgain) {
  remember("[a-01]\nfirst");
  Exit().trigger();
  EXPECT_EQ(isShown("[a-01]\nfirst", ShowOncePerKey), 0);
  KivErrorBox::ClearShownErrorBoxesTable();
  remember("[a-01]\nsecond");
  EXPECT_EQ(isShown("[a-01]\nsecond", ShowOncePerText), 1);
}

} // namespace

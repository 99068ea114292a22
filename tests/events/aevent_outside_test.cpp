// Changes of the dispatcher's map, and of its actions, that do not come through the bus.

#include "aevent_dispatcher.hpp"

#include "events/listeners.hpp"

#include <gtest/gtest.h>

#include <memory>

using kivtest::actionsOf;
using kivtest::Calls;
using kivtest::kOther;
using kivtest::kType;
using kivtest::Listener;
using kivtest::trigger;

namespace {

/// A number that the catalogue does not have.
constexpr auto kUnknownType = static_cast<KivEventType>(5000);

class DispatcherFromOutside : public kivtest::Dispatcher {
protected:
  static KivEventActionSeq const & sequence() { return *KivEventDispatcher::Instance().at(kType); }
};

class SequenceMap : public DispatcherFromOutside, public testing::WithParamInterface<KivEventType> {
protected:
  std::unique_ptr<Listener> listenerOfType(std::string const & name) {
    return std::make_unique<Listener>(calls, name, GetParam());
  }

  KivEventDispatcher & dispatcher = KivEventDispatcher::Instance();
};

TEST_P(SequenceMap, AnErasedSequenceIsNoLongerWalked) {
  auto const a = listenerOfType("a");
  std::unique_ptr<KivEventActionSeq> const taken(dispatcher.at(GetParam()));
  dispatcher.erase(GetParam());
  trigger(GetParam());
  EXPECT_EQ(calls, Calls());
  a->manualSignOff();
  EXPECT_EQ(taken->actions().size(), 1u) << "it is not the dispatcher's any more";
}

TEST_P(SequenceMap, ARegistrationAfterAnErasureMakesANewSequence) {
  auto const a = listenerOfType("a");
  std::unique_ptr<KivEventActionSeq> const taken(dispatcher.at(GetParam()));
  dispatcher.erase(GetParam());
  auto const b = listenerOfType("b");
  trigger(GetParam());
  EXPECT_EQ(calls, (Calls{"b"}));
  EXPECT_NE(dispatcher.at(GetParam()), taken.get());
}

TEST_P(SequenceMap, AReplacedSequenceIsWalkedInPlaceOfTheOldOne) {
  auto const a = listenerOfType("a");
  auto const other = std::make_unique<Listener>(calls, "other", kOther);
  std::swap(dispatcher.at(GetParam()), dispatcher.at(kOther));
  trigger(GetParam());
  EXPECT_EQ(calls, (Calls{"other"}));
  auto const b = listenerOfType("b");
  trigger(GetParam());
  EXPECT_EQ(calls, (Calls{"other", "b", "other"})) << "it takes registrations";
  other->manualSignOff();
  trigger(GetParam());
  EXPECT_EQ(calls.size(), 4u) << "and sign-offs";
}

TEST_P(SequenceMap, AnEnteredSequenceIsWalkedAndTakesRegistrations) {
  Listener early(calls, "early", kOther);
  KivEventAction const action = actionsOf(kOther).front();
  auto entered = std::make_unique<KivEventActionSeq>();
  entered->add(&early, action.handler, KIV_PRIORITY_EARLY);
  KivEventActionSeq const * const known = entered.get();
  ASSERT_TRUE(dispatcher.emplace(GetParam(), entered.get()).second);
  static_cast<void>(entered.release());
  trigger(GetParam());
  EXPECT_EQ(calls, (Calls{"early"}));
  auto const b = listenerOfType("b");
  EXPECT_EQ(dispatcher.at(GetParam()), known);
  trigger(GetParam());
  EXPECT_EQ(calls, (Calls{"early", "early", "b"}));
  early.manualSignOff();
  trigger(GetParam());
  EXPECT_EQ(calls, (Calls{"early", "early", "b", "b"}));
}

TEST_P(SequenceMap, ANullSequenceCountsAsNone) {
  EXPECT_EQ(dispatcher[GetParam()], nullptr);
  EXPECT_EQ(trigger(GetParam()), 0);
  Listener(calls, "never").manualSignOff();
  auto const a = listenerOfType("a");
  EXPECT_NE(dispatcher.at(GetParam()), nullptr);
  trigger(GetParam());
  EXPECT_EQ(calls, (Calls{"a"}));
}

TEST_P(SequenceMap, AClearedMapHasNoHandlers) {
  auto const a = listenerOfType("a");
  std::unique_ptr<KivEventActionSeq> const taken(dispatcher.at(GetParam()));
  dispatcher.clear();
  trigger(GetParam());
  a->manualSignOff();
  EXPECT_EQ(calls, Calls());
}

INSTANTIATE_TEST_SUITE_P(Types, SequenceMap, testing::Values(kType, KIV_EVENT_FIRST, KIV_EVENT_LAST, kUnknownType));

TEST_F(DispatcherFromOutside, AnErasureDuringAWalkLetsTheWalkGoOn) {
  auto const a = listener("a");
  auto const b = listener("b");
  std::unique_ptr<KivEventActionSeq> taken;
  b->then = [&](KivEvent *) {
    taken.reset(KivEventDispatcher::Instance().at(kType));
    KivEventDispatcher::Instance().erase(kType);
  };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "a"}));
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "a"}));
}

TEST_F(DispatcherFromOutside, AnActionThatIsMarkedAsRemovedIsSkippedUntilTheMarkIsTakenBack) {
  auto const a = listener("a");
  auto const b = listener("b");
  sequence().actions()[0]->removed = true;
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a"}));
  sequence().actions()[0]->removed = false;
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a", "b", "a"}));
}

TEST_F(DispatcherFromOutside, AMarkThatIsSetDuringTheWalkCounts) {
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [](KivEvent *) { sequence().actions()[1]->removed = true; };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b"}));
}

TEST_F(DispatcherFromOutside, AMarkedActionOfALiveListenerGoesWithIt) {
  auto a = listener("a");
  sequence().actions()[0]->removed = true;
  a.reset();
  EXPECT_TRUE(sequence().actions().empty());
}

TEST_F(DispatcherFromOutside, AnActionWhoseHandlerIsClearedIsSkippedAndOneThatGetsItBackRuns) {
  auto const a = listener("a");
  KivEventAction & action = *sequence().actions()[0];
  KivEventHandler const handler = std::exchange(action.handler, nullptr);
  trigger(kType);
  EXPECT_EQ(calls, Calls());
  action.handler = handler;
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a"}));
}

TEST_F(DispatcherFromOutside, AnActionWhoseListenerIsClearedIsSkippedAndOneThatGetsItBackRuns) {
  auto const a = listener("a");
  KivEventAction & action = *sequence().actions()[0];
  KivEventListener * const owner = std::exchange(action.listener, nullptr);
  trigger(kType);
  EXPECT_EQ(calls, Calls());
  action.listener = owner;
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a"}));
}

} // namespace

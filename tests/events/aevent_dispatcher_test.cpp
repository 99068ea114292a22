#include "aevent_dispatcher.hpp"

#include "events/listeners.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <type_traits>

using kivtest::actionsOf;
using kivtest::Calls;
using kivtest::Dispatcher;
using kivtest::kOther;
using kivtest::kType;
using kivtest::Listener;
using kivtest::TestEvent;
using kivtest::trigger;

namespace {

// Signing off during a walk

TEST_F(Dispatcher, AListenerSignedOffLaterInTheWalkIsNotCalled) {
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [&](KivEvent *) { a->manualSignOff(); };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b"}));
}

TEST_F(Dispatcher, AListenerThatDiesLaterInTheWalkIsNotCalled) {
  support::GuardPages const guard;
  auto a = listener("a");
  auto const b = listener("b");
  b->then = [&](KivEvent *) { a.reset(); };
  trigger(kType);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "b"}));
}

TEST_F(Dispatcher, AHandlerThatSignsItselfOffLetsTheWalkGoOn) {
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [&](KivEvent *) { b->manualSignOff(); };
  trigger(kType);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "a", "a"}));
}

TEST_F(Dispatcher, AListenerMayDieInItsOwnHandler) {
  support::GuardPages const guard;
  auto const a = listener("a");
  auto b = listener("b");
  b->on(kType);
  b->then = [&](KivEvent *) { b.reset(); };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "a"}));
}

TEST_F(Dispatcher, AnActionRemovedDuringTheWalkStaysMarkedAndIsSkippedLater) {
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [&](KivEvent *) { b->manualSignOff(); };
  trigger(kType);
  auto const actions = actionsOf(kType);
  ASSERT_EQ(actions.size(), 2u);
  EXPECT_TRUE(actions[0].removed);
  EXPECT_FALSE(actions[1].removed);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "a", "a"}));
  EXPECT_EQ(actionsOf(kType).size(), 2u) << "nothing sweeps them";
}

TEST_F(Dispatcher, AMarkedActionStaysWhenItsListenerSignsOffAgain) {
  auto const b = listener("b");
  b->then = [&](KivEvent *) { b->manualSignOff(); };
  trigger(kType);
  b->manualSignOff();
  EXPECT_EQ(actionsOf(kType).size(), 1u);
}

TEST_F(Dispatcher, AMarkedActionGoesWithTheNextOneOfItsListener) {
  auto const b = listener("b");
  b->then = [&](KivEvent *) { b->manualSignOff(); };
  trigger(kType);
  b->on(kType);
  EXPECT_EQ(actionsOf(kType).size(), 2u);
  b->manualSignOff();
  EXPECT_TRUE(actionsOf(kType).empty());
}

TEST_F(Dispatcher, ASequenceThatIsNotBeingWalkedLosesItsActionsAtOnce) {
  auto const a = listener("a");
  Listener b(calls, "b", kOther);
  b.on(kType);
  a->then = [&](KivEvent *) {
    b.manualSignOff();
    EXPECT_EQ(actionsOf(kOther).size(), 0u);
    EXPECT_EQ(actionsOf(kType).size(), 2u);
  };
  trigger(kType);
}

// What the bus owns

KivEventAction const * firstActionOf(KivEventType type) {
  return KivEventDispatcher::Instance().find(type)->second->actions().front();
}

TEST_F(Dispatcher, ASignOffFreesTheActionAtOnce) {
  support::GuardPages const guard;
  auto const a = listener("a");
  KivEventAction const * const action = firstActionOf(kType);
  ASSERT_TRUE(support::GuardPages::guards(action));
  a->manualSignOff();
  EXPECT_FALSE(support::GuardPages::guards(action));
}

TEST_F(Dispatcher, AMarkedActionIsFreedWithTheNextOneOfItsListener) {
  support::GuardPages const guard;
  auto const b = listener("b");
  b->then = [&](KivEvent *) { b->manualSignOff(); };
  trigger(kType);
  KivEventAction const * const marked = firstActionOf(kType);
  EXPECT_TRUE(support::GuardPages::guards(marked));
  b->on(kType);
  b->manualSignOff();
  EXPECT_FALSE(support::GuardPages::guards(marked));
}

TEST_F(Dispatcher, ASequenceFreesItsActionsMarkedOnesIncluded) {
  support::GuardPages const guard;
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [&](KivEvent *) { b->manualSignOff(); };
  trigger(kType);
  auto & dispatcher = KivEventDispatcher::Instance();
  KivEventActionSeq const * const sequence = dispatcher.find(kType)->second;
  auto const actions = sequence->actions();
  ASSERT_EQ(actions.size(), 2u);
  dispatcher.erase(kType);
  delete sequence;
  for (KivEventAction const * action : actions)
    EXPECT_FALSE(support::GuardPages::guards(action));
}

// Nested walks

TEST_F(Dispatcher, AHandlerMayTriggerAnotherType) {
  auto const a = listener("a");
  auto const b = listener("b");
  Listener const c(calls, "c", kOther);
  b->then = [](KivEvent *) { trigger(kOther); };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "c", "a"}));
}

TEST_F(Dispatcher, AHandlerThatTriggersItsOwnTypeWalksItFromTheStart) {
  auto const a = listener("a");
  auto const b = listener("b");
  auto const c = listener("c");
  int depth = 0;
  b->then = [&](KivEvent *) {
    if (++depth < 3)
      trigger(kType);
  };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"c", "b", "c", "b", "c", "b", "a", "a", "a"}));
}

TEST_F(Dispatcher, ResultsOfNestedEventsAreTheirOwn) {
  auto const a = listener("a");
  long inner = 0;
  a->then = [&](KivEvent * event) {
    if (calls.size() == 1)
      inner = trigger(kType);
    event->setResultValue(static_cast<long>(calls.size()) * (inner == 0 ? 10 : 1));
  };
  EXPECT_EQ(trigger(kType), 2);
  EXPECT_EQ(inner, 20);
}

TEST_F(Dispatcher, AfterANestedWalkTheOuterOneStillOnlyMarks) {
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [&](KivEvent *) {
    if (calls.size() > 1)
      return;
    trigger(kType);
    a->manualSignOff();
    EXPECT_EQ(actionsOf(kType).size(), 2u);
  };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "b", "a"}));
  b->manualSignOff();
  EXPECT_EQ(actionsOf(kType).size(), 1u) << "idle again: freed at once";
}

TEST_F(Dispatcher, ANestedWalkSkipsWhatTheOuterOneMarked) {
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [&](KivEvent *) {
    b->manualSignOff();
    trigger(kType);
  };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "a", "a"}));
}

TEST_F(Dispatcher, AHandlerMayRegisterForATypeThatIsNotBeingWalked) {
  auto const a = listener("a");
  a->then = [&](KivEvent *) {
    if (calls.size() == 1) {
      a->onSecond(kOther);
      trigger(kOther);
    }
  };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a", "a'"}));
}

// Not supported, yet harmless: the walk stays inside of the sequence when it grows.
TEST_F(Dispatcher, AHandlerRegisteredBeforeTheRunningOneLetsThatRunAgain) {
  support::GuardPages const guard;
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [&](KivEvent *) {
    if (calls.size() == 1)
      a->onSecond(kType, 600);
  };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "b", "a"}));
}

TEST_F(Dispatcher, AHandlerRegisteredAfterTheRunningOneRunsInTheSameWalk) {
  support::GuardPages const guard;
  auto const a = listener("a");
  a->then = [&](KivEvent *) {
    for (int i = 0; i < 40; ++i)
      a->onSecond(kType, -1);
  };
  trigger(kType);
  Calls expected(41, "a'");
  expected[0] = "a";
  EXPECT_EQ(calls, expected);
}

// The number 700 means that nothing is being walked, so an event of that type frees at once.
TEST_F(Dispatcher, AnEventOfTheFirstSentinelSurvivesASignOffInItsWalk) {
  support::GuardPages const guard;
  Listener a(calls, "a", KIV_EVENT_FIRST);
  Listener b(calls, "b", KIV_EVENT_FIRST);
  b.then = [&](KivEvent *) { b.manualSignOff(); };
  trigger(KIV_EVENT_FIRST);
  EXPECT_EQ(actionsOf(KIV_EVENT_FIRST).size(), 1u);
  calls.clear();
  trigger(KIV_EVENT_FIRST);
  EXPECT_EQ(calls, (Calls{"a"}));
}

// Exceptions from handlers

TEST_F(Dispatcher, AnExceptionLeavesTheTriggerAndTheRestDoesNotRun) {
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [](KivEvent * event) {
    event->setResultValue(3);
    throw std::runtime_error("from b");
  };
  TestEvent event(kType);
  EXPECT_THROW(event.trigger(), std::runtime_error);
  EXPECT_EQ(event.getResultValue(), 3);
  EXPECT_EQ(calls, (Calls{"b"}));
}

TEST_F(Dispatcher, AfterAnExceptionTheTypeStillFiresButRemovalsOnlyMark) {
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [](KivEvent *) { throw std::runtime_error("from b"); };
  EXPECT_THROW(trigger(kType), std::runtime_error);
  b->manualSignOff();
  EXPECT_EQ(actionsOf(kType).size(), 2u);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "a"}));
  a->manualSignOff();
  EXPECT_EQ(actionsOf(kType).size(), 2u) << "a whole walk does not mend it";
}

TEST_F(Dispatcher, AnExceptionThatAnOuterWalkOfTheSameTypeCatchesLeavesNoTrace) {
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [&](KivEvent *) {
    if (calls.size() > 1)
      throw std::runtime_error("from the inner walk");
    EXPECT_THROW(trigger(kType), std::runtime_error);
  };
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"b", "b", "a"}));
  a->manualSignOff();
  EXPECT_EQ(actionsOf(kType).size(), 1u);
}

// Cost and layout

TEST_F(Dispatcher, ATriggerAllocatesNothing) {
  struct Counter : KivEventListener {
    explicit Counter(int depth) : rest(depth) {
      setEventHandler(kType, &Counter::handle);
      setEventHandler(kType, &Counter::handle, KIV_PRIORITY_EARLY);
    }
    void handle(KivEvent * event) {
      event->setResultValue(event->getResultValue() + 1);
      if (rest-- > 0)
        trigger(kType);
    }
    int rest;
  } counter(5);
  std::vector<std::unique_ptr<Listener>> others;
  for (int i = 0; i < 60; ++i)
    others.push_back(std::make_unique<Listener>(calls, "other", static_cast<KivEventType>(kType + 1 + i)));
  support::AllocationCount const count;
  long const result = trigger(kType);
  EXPECT_EQ(count.value(), 0u);
  EXPECT_EQ(result, 2);
}

TEST_F(Dispatcher, AnActionHasItsFourFieldsAndNoOther) {
  auto const a = listener("a", 600);
  auto const [owner, handler, priority, removed] = actionsOf(kType).front();
  EXPECT_EQ(owner, a.get());
  EXPECT_TRUE((std::is_same_v<decltype(handler), KivEventHandler const>));
  EXPECT_EQ(priority, 600);
  EXPECT_FALSE(removed);
  EXPECT_EQ(sizeof(KivEventAction), 32u);
}

TEST_F(Dispatcher, SequencesAndTheDispatcherHoldWhatTheyNeedAndNoMore) {
  struct Sequence {
    void * virtualFunctions;
    std::vector<KivEventAction *> actions;
    std::set<KivEventListener *> listeners;
    KivEventType firing;
  };
  struct Bus {
    void * virtualFunctions;
    std::map<KivEventType, KivEventActionSeq *> sequences;
    bool dispatching;
  };
  EXPECT_EQ(sizeof(KivEventActionSeq), sizeof(Sequence));
  EXPECT_EQ(sizeof(KivEventDispatcher), sizeof(Bus));
}

TEST_F(Dispatcher, ActionsAreLaidOutInTheirOrder) {
  EXPECT_EQ(offsetof(KivEventAction, listener), 0u);
  EXPECT_EQ(offsetof(KivEventAction, handler), 8u);
  EXPECT_EQ(offsetof(KivEventAction, priority), 24u);
  EXPECT_EQ(offsetof(KivEventAction, removed), 28u);
  EXPECT_EQ(sizeof(KivEventListener), sizeof(void *));
  EXPECT_EQ(sizeof(KivEventType), 4u);
  EXPECT_EQ(sizeof(KivEventPriority), 4u);
}

} // namespace

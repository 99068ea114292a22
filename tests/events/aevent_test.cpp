#include "aevent.hpp"

#include "events/listeners.hpp"
#include "support/memory/allocation.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
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

TEST_F(Dispatcher, EventsKnowTheirTypeAndName) {
  TestEvent const event(KIV_EVENT_AppExit);
  EXPECT_EQ(event.getEventType(), KIV_EVENT_AppExit);
  EXPECT_EQ(event.getEventName(), Kiv_GetEventNames()[76]);
  EXPECT_EQ(event.getResultValue(), 0);
}

TEST_F(Dispatcher, SentinelsHaveNamesTooAndOtherNumbersAnEmptyOne) {
  EXPECT_STREQ(TestEvent(KIV_EVENT_FIRST).getEventName(), "__FIRST__");
  EXPECT_STREQ(TestEvent(KIV_EVENT_LAST).getEventName(), "__LAST__");
  for (int const number : {699, 855, 0, -1, INT_MIN, INT_MAX})
    EXPECT_STREQ(TestEvent(static_cast<KivEventType>(number)).getEventName(), "") << number;
}

// Modules that were built against a later catalogue have more of them.
TEST_F(Dispatcher, HandlersOfTypesOutsideOfTheCatalogueRunToo) {
  for (int const number : {699, 855, 5000, -1, INT_MIN, INT_MAX}) {
    auto const type = static_cast<KivEventType>(number);
    EXPECT_EQ(trigger(type), 0) << number;
    Listener const a(calls, "a", type);
    Listener const b(calls, "b", type);
    calls.clear();
    trigger(type);
    EXPECT_EQ(calls, (Calls{"b", "a"})) << number;
  }
}

TEST_F(Dispatcher, ATriggerWithoutHandlersLeavesTheResultAt0) { EXPECT_EQ(trigger(kType), 0); }

TEST_F(Dispatcher, ATriggerLeavesTheResultThatTheEventCarries) {
  TestEvent event(kType);
  event.setResultValue(7);
  event.trigger();
  EXPECT_EQ(event.getResultValue(), 7) << "without a handler";
  long seen = 99;
  auto const a = listener("a");
  a->then = [&](KivEvent * told) { seen = told->getResultValue(); };
  event.trigger();
  EXPECT_EQ(seen, 7);
  EXPECT_EQ(event.getResultValue(), 7);
}

TEST_F(Dispatcher, ASecondTriggerOfAnEventStartsFromTheResultOfTheFirst) {
  auto const a = listener("a");
  a->then = [](KivEvent * event) { event->setResultValue(event->getResultValue() + 1); };
  TestEvent event(kType);
  event.trigger();
  event.trigger();
  EXPECT_EQ(event.getResultValue(), 2);
}

TEST_F(Dispatcher, ATriggerMakesNoSequence) {
  trigger(kType);
  EXPECT_TRUE(KivEventDispatcher::Instance().empty());
}

TEST_F(Dispatcher, HandlersRunByPriorityAndAmongEqualOnesTheNewestFirst) {
  auto const a = listener("first 600", 600);
  auto const b = listener("0", 0);
  auto const c = listener("second 600", 600);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"second 600", "first 600", "0"}));
}

TEST_F(Dispatcher, ThreeListenersOfEqualPriorityRunNewestFirst) {
  auto const a = listener("a");
  auto const b = listener("b");
  auto const c = listener("c");
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"c", "b", "a"}));
}

TEST_F(Dispatcher, PrioritiesAreSignedNumbers) {
  Calls expected{"2147483647", "600", "1", "0", "-1", "-2147483648"};
  std::vector<std::unique_ptr<Listener>> all;
  for (int const priority : {0, INT_MIN, 600, -1, INT_MAX, 1})
    all.push_back(listener(std::to_string(priority), priority));
  trigger(kType);
  EXPECT_EQ(calls, expected);
}

TEST_F(Dispatcher, NamedPrioritiesAre0And600) {
  EXPECT_EQ(KIV_PRIORITY_NORMAL, 0);
  EXPECT_EQ(KIV_PRIORITY_EARLY, 600);
}

TEST_F(Dispatcher, AHandlerRegisteredTwiceIsCalledTwiceAndOneSignOffRemovesBoth) {
  auto const a = listener("a");
  a->on(kType);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a", "a"}));
  a->manualSignOff();
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a", "a"}));
  EXPECT_TRUE(actionsOf(kType).empty());
}

TEST_F(Dispatcher, AListenerMayHaveSeveralHandlersForAType) {
  auto const a = listener("a", 600);
  auto const b = listener("b", 300);
  a->onSecond(kType, 0);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a", "b", "a'"}));
}

TEST_F(Dispatcher, HandlersOfOtherTypesAreNotCalled) {
  auto const a = listener("a");
  Listener const b(calls, "b", kOther);
  trigger(kOther);
  EXPECT_EQ(calls, (Calls{"b"}));
}

TEST_F(Dispatcher, TheLastHandlerThatSetsAResultWinsAndSeesTheFormerOne) {
  auto const a = listener("a", 0);
  auto const b = listener("b", 600);
  long seen = 99;
  b->then = [](KivEvent * event) { event->setResultValue(-7); };
  a->then = [&](KivEvent * event) {
    seen = event->getResultValue();
    event->setResultValue(5);
  };
  EXPECT_EQ(trigger(kType), 5);
  EXPECT_EQ(seen, -7);
}

TEST_F(Dispatcher, AResultDoesNotShortenTheWalk) {
  auto const a = listener("a");
  auto const b = listener("b");
  b->then = [](KivEvent * event) { event->setResultValue(1); };
  EXPECT_EQ(trigger(kType), 1);
  EXPECT_EQ(calls, (Calls{"b", "a"}));
}

TEST_F(Dispatcher, AnActionWithoutAHandlerIsSkipped) {
  auto const a = listener("a");
  a->setEventHandler(kType, nullptr);
  a->setEventHandler(kType, static_cast<void (Listener::*)(KivEvent *)>(nullptr), KIV_PRIORITY_EARLY);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a"}));
  EXPECT_EQ(actionsOf(kType).size(), 3u);
}

TEST_F(Dispatcher, AnActionWithoutAListenerIsSkipped) {
  struct Nobody : KivEventListener {
    static KivEventHandler handler() { return static_cast<KivEventHandler>(&Nobody::fail); }
    void fail(KivEvent *) { FAIL(); }
  };
  auto const a = listener("a");
  KivEventDispatcher::Instance().registerAction(kType, nullptr, Nobody::handler(), KIV_PRIORITY_EARLY);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a"}));
  EXPECT_EQ(actionsOf(kType).size(), 2u);
}

TEST_F(Dispatcher, HandlersMayBeVirtualAndOfAnyBase) {
  struct Data {
    virtual ~Data() = default;
    int number = 7;
  };
  struct Base : Data, KivEventListener {
    explicit Base(int & sum) : sum_(sum) {}
    virtual void handle(KivEvent *) { sum_ += number; }
    int & sum_;
  };
  struct Derived : Base {
    explicit Derived(int & sum) : Base(sum) { setEventHandler(kType, &Base::handle); }
    void handle(KivEvent *) override { sum_ += 10 * number; }
  };
  int sum = 0;
  {
    Derived const derived(sum);
    trigger(kType);
    EXPECT_EQ(sum, 70);
  }
  trigger(kType);
  EXPECT_EQ(sum, 70);
}

// Signing off

TEST_F(Dispatcher, AListenerThatDiesIsSignedOffFromAllTypes) {
  auto a = listener("a");
  a->on(kOther);
  a.reset();
  trigger(kType);
  trigger(kOther);
  EXPECT_EQ(calls, Calls());
  EXPECT_EQ(KivEventDispatcher::Instance().size(), 2u) << "sequences stay";
}

TEST_F(Dispatcher, SigningOffTwiceOrWithoutARegistrationDoesNothing) {
  Listener never(calls, "never");
  never.manualSignOff();
  auto const a = listener("a");
  never.manualSignOff();
  a->manualSignOff();
  a->manualSignOff();
  trigger(kType);
  EXPECT_EQ(calls, Calls());
}

TEST_F(Dispatcher, AListenerThatSignedOffMayRegisterAgain) {
  auto const a = listener("a");
  a->manualSignOff();
  a->on(kType);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a"}));
}

TEST_F(Dispatcher, CheckDoesNothing) {
  auto const a = listener("a");
  a->check();
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a"}));
}

TEST_F(Dispatcher, ACopyIsNotRegisteredAndItsEndLeavesTheOriginalIn) {
  auto const a = listener("a");
  {
    Listener copy(*a);
    trigger(kType);
    EXPECT_EQ(calls, (Calls{"a"}));
    EXPECT_EQ(actionsOf(kType).size(), 1u);
  }
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a", "a"}));
}

TEST_F(Dispatcher, AssignmentLeavesTheRegistrationsOfBothSides) {
  auto const a = listener("a");
  Listener b(calls, "b", kOther);
  KivEventListener const & source = *a;
  static_cast<KivEventListener &>(b) = source;
  trigger(kType);
  trigger(kOther);
  EXPECT_EQ(calls, (Calls{"a", "b"}));
}

// Lack of memory

TEST_F(Dispatcher, ALackOfMemoryLeavesTheRegistrationUndone) {
  Listener a(calls, "a");
  {
    support::AllocationLimit const limit(0);
    EXPECT_THROW(a.on(kType), std::bad_alloc);
  }
  trigger(kType);
  EXPECT_EQ(calls, Calls());
  a.on(kType);
  trigger(kType);
  EXPECT_EQ(calls, (Calls{"a"}));
}

// A limit in bytes for each of a registration's blocks: the action, the listener's entry, the vector that has to grow.
TEST_F(Dispatcher, ALackOfMemoryInAnyStepOfARegistrationLeavesTheOthersAsTheyWere) {
  std::vector<std::unique_ptr<Listener>> others;
  Calls expected;
  for (int i = 0; i < 8; ++i) {
    others.push_back(listener(std::to_string(i)));
    expected.insert(expected.begin(), std::to_string(i));
  }
  Listener late(calls, "late");
  ASSERT_LT(sizeof(KivEventAction), 39u);
  for (std::size_t const mostBytes : {std::size_t{0}, sizeof(KivEventAction), std::size_t{64}}) {
    {
      support::AllocationLimit const limit(mostBytes);
      EXPECT_THROW(late.on(kType, 600), std::bad_alloc) << mostBytes;
    }
    calls.clear();
    trigger(kType);
    EXPECT_EQ(calls, expected) << mostBytes;
    late.manualSignOff();
    EXPECT_EQ(actionsOf(kType).size(), 8u) << mostBytes;
  }
  calls.clear();
  late.on(kType, 600);
  trigger(kType);
  expected.insert(expected.begin(), "late");
  EXPECT_EQ(calls, expected);
}

TEST_F(Dispatcher, OnlyConcreteEventsAreMadeAndAllIsDestroyedThroughItsBase) {
  EXPECT_FALSE((std::is_constructible_v<KivEvent, KivEventType>));
  EXPECT_TRUE((std::is_base_of_v<KivEventData, KivEvent>));
  EXPECT_TRUE((std::is_base_of_v<std::map<KivEventType, KivEventActionSeq *>, KivEventDispatcher>));
  EXPECT_TRUE(std::has_virtual_destructor_v<KivEventData>);
  EXPECT_TRUE(std::has_virtual_destructor_v<KivEvent>);
  EXPECT_TRUE(std::has_virtual_destructor_v<KivEventListener>);
  EXPECT_TRUE(std::has_virtual_destructor_v<KivEventActionSeq>);
  EXPECT_TRUE(std::has_virtual_destructor_v<KivEventDispatcher>);
}

} // namespace

// Registration of handlers that take the class of their events.

#include "aevents.hpp"

#include "events/listeners.hpp"
#include "support/memory/allocation.hpp"
#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

using kivtest::actionsOf;
using kivtest::Calls;
using kivtest::kOther;
using kivtest::kType;
using kivtest::TestEvent;
using SV::String;

namespace {

/// An event class with one type.
class NameEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = kType;

  explicit NameEvent(char const * name) : KivEvent(kEventType), name_(name) {}
  char const * GetName() const { return name_; }

private:
  char const * name_;
};

/// One that serves several types, and whose part of the bus is not its first base.
struct Ballast {
  virtual ~Ballast() = default;
  long weight = 4;
};
class HeavyEvent : public Ballast, public KivEvent {
public:
  explicit HeavyEvent(KivEventType type) : KivEvent(type) {}
};

long trigger(KivEvent && event) {
  event.trigger();
  return event.getResultValue();
}

TEST(TypedHandler, GetsTheEventAsItsClass) {
  class Hearer : public KivEventListener {
  public:
    Hearer() { setEventHandler<&Hearer::hear>(); }
    KivEvent const * heard = nullptr;
    std::string name;

  private:
    void hear(NameEvent * event) {
      heard = event;
      name = event->GetName();
      event->setResultValue(5);
    }
  };
  Hearer const hearer;
  NameEvent event("order");
  event.trigger();
  EXPECT_EQ(hearer.heard, &event);
  EXPECT_EQ(hearer.name, "order");
  EXPECT_EQ(event.getResultValue(), 5);
}

TEST(TypedHandler, HearsOfNoOtherType) {
  struct Hearer : KivEventListener {
    Hearer() { setEventHandler<&Hearer::hear>(); }
    void hear(NameEvent *) { FAIL(); }
  };
  Hearer const hearer;
  trigger(TestEvent(kOther));
  EXPECT_EQ(KivEventDispatcher::Instance().size(), 1u);
}

TEST(TypedHandler, OfAClassThatServesSeveralTypesIsRegisteredByType) {
  struct Hearer : KivEventListener {
    Hearer() {
      setEventHandler<&Hearer::hear>(kType);
      setEventHandler<&Hearer::hear>(kOther);
    }
    void hear(HeavyEvent * event) {
      names.emplace_back(event->getEventName());
      event->setResultValue(event->weight);
    }
    Calls names;
  };
  Hearer const hearer;
  EXPECT_EQ(trigger(HeavyEvent(kOther)), 4);
  EXPECT_EQ(trigger(HeavyEvent(kType)), 4);
  EXPECT_EQ(hearer.names, (Calls{"OpenModel", "SaveModel"}));
}

TEST(TypedHandler, MayTakeAnyEvent) {
  struct Hearer : KivEventListener {
    Hearer() { setEventHandler<&Hearer::hear>(kOther, KIV_PRIORITY_EARLY); }
    void hear(KivEvent * event) { event->setResultValue(event->getEventType()); }
  };
  Hearer const hearer;
  EXPECT_EQ(trigger(TestEvent(kOther)), kOther);
}

TEST(TypedHandler, RunsByItsPriorityAmongTheOthers) {
  struct Hearer : KivEventListener {
    Hearer() {
      setEventHandler<&Hearer::early>(KIV_PRIORITY_EARLY);
      setEventHandler<&Hearer::heavy>(kOther, static_cast<KivEventPriority>(7));
      setEventHandler<&Hearer::normal>();
      setEventHandler(kType, &Hearer::untyped, static_cast<KivEventPriority>(1));
    }
    void early(NameEvent *) { calls.emplace_back("early"); }
    void normal(NameEvent *) { calls.emplace_back("normal"); }
    void heavy(HeavyEvent *) {}
    void untyped(KivEvent *) { calls.emplace_back("untyped"); }
    Calls calls;
  };
  Hearer const hearer;
  trigger(NameEvent("order"));
  EXPECT_EQ(hearer.calls, (Calls{"early", "untyped", "normal"}));
  EXPECT_EQ(actionsOf(kOther).front().priority, 7);
  EXPECT_EQ(actionsOf(kType).back().priority, KIV_PRIORITY_NORMAL);
}

TEST(TypedHandler, RegisteredTwiceIsCalledTwiceAndOneSignOffRemovesBoth) {
  struct Hearer : KivEventListener {
    Hearer() {
      setEventHandler<&Hearer::hear>();
      setEventHandler<&Hearer::hear>();
    }
    void hear(NameEvent *) { ++calls; }
    int calls = 0;
  };
  Hearer hearer;
  trigger(NameEvent("order"));
  EXPECT_EQ(hearer.calls, 2);
  hearer.manualSignOff();
  trigger(NameEvent("order"));
  EXPECT_EQ(hearer.calls, 2);
  EXPECT_TRUE(actionsOf(kType).empty());
}

TEST(TypedHandler, MayBeConstOrNoexceptAndMayTakeAConstEvent) {
  struct Hearer : KivEventListener {
    explicit Hearer(int & sum) : sum_(sum) {
      setEventHandler<&Hearer::one>();
      setEventHandler<&Hearer::ten>();
      setEventHandler<&Hearer::hundred>();
      setEventHandler<&Hearer::thousand>();
    }
    void one(NameEvent const *) { sum_ += 1; }
    void ten(NameEvent *) const { sum_ += 10; }
    void hundred(NameEvent *) noexcept { sum_ += 100; }
    void thousand(NameEvent const *) const noexcept { sum_ += 1000; }
    int & sum_;
  };
  int sum = 0;
  Hearer const hearer(sum);
  trigger(NameEvent("order"));
  EXPECT_EQ(sum, 1111);
}

TEST(UntypedHandler, MayBeNoexcept) {
  struct Hearer : KivEventListener {
    Hearer() { setEventHandler(kType, &Hearer::hear); }
    void hear(KivEvent * event) noexcept { event->setResultValue(3); }
  };
  Hearer const hearer;
  EXPECT_EQ(trigger(NameEvent("order")), 3);
}

TEST(TypedHandler, MayBeVirtualAndOfAnyBase) {
  struct Base : Ballast, KivEventListener {
    explicit Base(int & sum) : sum_(sum) {}
    virtual void hear(NameEvent *) { sum_ += 1; }
    int & sum_;
  };
  struct Derived : Base {
    explicit Derived(int & sum) : Base(sum) { setEventHandler<&Derived::hear>(); }
    void hear(NameEvent *) override { sum_ += static_cast<int>(10 * weight); }
  };
  struct Heir : Base {
    explicit Heir(int & sum) : Base(sum) { setEventHandler<&Heir::hear>(); }
  };
  int sum = 0;
  {
    Derived const derived(sum);
    Heir const heir(sum);
    trigger(NameEvent("order"));
    EXPECT_EQ(sum, 41);
  }
  trigger(NameEvent("order"));
  EXPECT_EQ(sum, 41);
}

template <class Number> struct TemplateHearer : KivEventListener {
  TemplateHearer() { setEventHandler<&TemplateHearer::hear>(); }
  void hear(NameEvent * event) { event->setResultValue(sizeof(Number)); }
};

template <class Base> struct TemplateHeir : Base {
  TemplateHeir() { this->template setEventHandler<&TemplateHeir::hearToo>(KIV_PRIORITY_EARLY); }
  void hearToo(NameEvent * event) { event->setResultValue(99); }
};

TEST(TypedHandler, MayBelongToAClassTemplate) {
  TemplateHeir<TemplateHearer<char>> const hearer;
  EXPECT_EQ(trigger(NameEvent("order")), 1);
  EXPECT_EQ(actionsOf(kType).size(), 2u);
}

TEST(TypedHandler, TakesTheMemoryOfAnUntypedOne) {
  struct Hearer : KivEventListener {
    void hear(NameEvent *) {}
    void hearAny(KivEvent *) {}
  } hearer;
  hearer.setEventHandler(kType, &Hearer::hearAny);
  hearer.manualSignOff(); // the sequence and its room are there
  support::AllocationCount const untyped;
  hearer.setEventHandler(kType, &Hearer::hearAny);
  EXPECT_EQ(untyped.value(), 2u);
  hearer.manualSignOff();
  support::AllocationCount const typed;
  hearer.setEventHandler<&Hearer::hear>();
  EXPECT_EQ(typed.value(), 2u);
}

template <class Event> void expectItsType(Event const & event) {
  EXPECT_EQ(event.getEventType(), Event::kEventType) << event.getEventName();
  EXPECT_TRUE((std::is_same_v<decltype(Event::kEventType), KivEventType const>));
}

TEST(EventClasses, OfTheLibraryDeclareTheirTypes) {
  expectItsType(KivUserEvent(KivUserEvent::AfterCreate, 1));
  expectItsType(KivUserGroupEvent(KivUserGroupEvent::AfterCreate, 1));
  expectItsType(KivExitAppEvent("end(0)"));
  expectItsType(KivWindowStackChangedEvent(1, true, ""));
  expectItsType(KivSystemSettingsChangedEvent(SV::SYSCHANGE_FONTS));
  expectItsType(KivBeforeGrabFocusEvent());
}

#ifdef KIVARA_DEBUG
constexpr unsigned long kExitCode = 0x80000003; // a breakpoint
#else
constexpr unsigned long kExitCode = 0;
#endif

support::ProgramResult trigger(std::string const & what) {
  return support::runProgram({.program = "event_classes", .arguments = what});
}

TEST(TypedHandlerInDebugForm, ReportsAnEventOfAnotherClass) {
  auto const child = trigger("other");
  EXPECT_NE(child.errors.find("[assertion] "), std::string::npos) << child.errors;
  EXPECT_NE(child.errors.find("): the event is of the class that its handler takes"), std::string::npos)
      << child.errors;
  EXPECT_EQ(child.exitCode, kExitCode);
}

TEST(TypedHandlerInDebugForm, ReportsNoEventOfItsClassOrOfOneThatDerivesFromIt) {
  for (char const * what : {"own", "derived", "any"}) {
    auto const child = trigger(what);
    EXPECT_EQ(child.output, "heard\r\n") << what;
    EXPECT_EQ(child.errors, "") << what;
    EXPECT_EQ(child.exitCode, 0u) << what;
  }
}

} // namespace

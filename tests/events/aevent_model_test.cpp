// The dispatcher as a machine: long random sequences of everything that listeners and senders may do, from the outside and
// from inside of handlers, with each call held against a model at the moment at which it comes.
//
// Left out is what the bus does not support: a registration for a type that is being walked.

#include "aevent.hpp"

#include "events/bus_model.hpp"
#include "events/listeners.hpp"
#include "support/data/random.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <utility>

namespace {

using kivtest::BusModel;
using kivtest::ModelAction;
using kivtest::TestEvent;

class Machine;

struct Ballast {
  virtual ~Ballast() = default;
  long weight = 1;
};

/// A listener whose bus part is not its first base, with plain and virtual handlers.
class Subject : public Ballast, public KivEventListener {
public:
  static constexpr int kHandlers = 3;

  explicit Subject(Machine & machine) : machine_(&machine) {}

  void enter(KivEventType type, int handler, int priority) {
    static constexpr std::array<void (Subject::*)(KivEvent *), kHandlers> kAll{&Subject::first, &Subject::second,
                                                                               &Subject::third};
    auto const chosen = handler < 0 ? nullptr : kAll[static_cast<std::size_t>(handler)];
    setEventHandler(type, chosen, static_cast<KivEventPriority>(priority));
  }

  KivEventListener const * key() const { return this; }

private:
  void first(KivEvent * event);
  virtual void second(KivEvent * event);
  void third(KivEvent * event);

  Machine * machine_;
};

struct Thrown {};

class Machine {
public:
  explicit Machine(unsigned seed) : random_(seed) {
    for (int & type : types_)
      type = nextType_++;
  }
  Machine(Machine const &) = delete;
  Machine & operator=(Machine const &) = delete;
  ~Machine() {
    for (Place & place : places_)
      place.kill();
  }

  void run(std::size_t steps) {
    while (steps_ < steps && !failed_) {
      budget_ = 300;
      operate(60);
      compareSequences();
      replaceStuckTypes();
    }
  }

  /// A handler was called.
  void called(Subject const & subject, int handler, KivEvent & event) {
    if (failed_)
      return;
    ++calls;
    ModelAction const * const expected = model_.next();
    expect(expected != nullptr && expected->listener == subject.key() && expected->handler == handler, "call");
    expect(event.getResultValue() == results_.back(), "result of the handlers before");
    // From here on the subject may be gone.
    if (chance(350))
      operate(25);
    if (chance(300))
      event.setResultValue(results_.back() = static_cast<long>(random_()));
    if (chance(1) && chance(250) && nextType_ < KIV_EVENT_LAST - 5) {
      ++throws;
      throw Thrown();
    }
  }

  bool failed() const { return failed_; }

  std::size_t calls = 0;
  std::size_t nestedInSameType = 0;
  std::size_t marks = 0;
  std::size_t throws = 0;
  std::size_t deepest = 0;

private:
  /// Where a listener lives: always the same addresses, so that dead actions meet new listeners.
  struct Place {
    alignas(Subject) char room[sizeof(Subject)];
    Subject * subject = nullptr;
    void kill() {
      if (Subject * const dying = std::exchange(subject, nullptr))
        dying->~Subject();
    }
  };

  std::size_t below(std::size_t count) { return random_() % count; }
  bool chance(std::size_t outOf1000) { return below(1000) < outOf1000; }

  void expect(bool holds, char const * what) {
    if (holds || failed_)
      return;
    failed_ = true;
    ADD_FAILURE() << what << " differs at step " << steps_ << ", call " << calls << ", depth " << model_.depth();
  }

  Place & anyPlace() { return places_[below(places_.size())]; }
  int anyType() { return types_[below(types_.size())]; }

  /// One random operation, a trigger in so many of 100 cases.
  void operate(std::size_t triggers) {
    if (failed_ || budget_ == 0)
      return;
    --budget_;
    ++steps_;
    Place & place = anyPlace();
    if (below(100) < triggers && model_.depth() < 6)
      fire(anyType());
    else if (place.subject == nullptr)
      chance(700) ? make(place) : copyTo(place);
    else
      change(place);
  }

  void change(Place & place) {
    switch (below(10)) {
    case 0:
    case 1: end(place); break;
    case 2:
      signOffInModel(place);
      place.subject->manualSignOff();
      break;
    case 3: assignTo(place); break;
    default: enter(place); break;
    }
  }

  void make(Place & place) {
    place.subject = new (place.room) Subject(*this);
    for (std::size_t count = below(4); count > 0; --count)
      enter(place);
  }

  void copyTo(Place & place) {
    Place const & source = anyPlace();
    if (source.subject != nullptr)
      place.subject = new (place.room) Subject(*source.subject);
  }

  void assignTo(Place & place) {
    Place const & source = anyPlace();
    if (source.subject != nullptr)
      *place.subject = *source.subject;
  }

  void enter(Place & place) {
    static constexpr int kPriorities[] = {0, 0, 0, 600, 600, 7, -1, 0x7FFFFFFF};
    int const type = anyType();
    if (model_.isWalked(type) || model_.actions(type).size() > 60)
      return;
    int const handler = static_cast<int>(below(Subject::kHandlers * 8 + 1)) % (Subject::kHandlers + 1) - 1;
    int const priority = kPriorities[below(std::size(kPriorities))];
    place.subject->enter(static_cast<KivEventType>(type), handler, priority);
    model_.add(type, place.subject->key(), handler, priority);
  }

  void signOffInModel(Place const & place) {
    model_.signOff(place.subject->key());
    marks += model_.depth() != 0 ? 1 : 0;
  }

  void end(Place & place) {
    signOffInModel(place);
    place.kill();
  }

  void fire(int type) {
    nestedInSameType += model_.isWalked(type) ? 1 : 0;
    TestEvent event(static_cast<KivEventType>(type));
    model_.begin(type);
    deepest = std::max(deepest, model_.depth());
    results_.push_back(0);
    bool thrown = false;
    try {
      event.trigger();
    } catch (Thrown const &) {
      thrown = true;
    }
    if (!failed_) {
      if (!thrown)
        expect(model_.next() == nullptr, "end of the walk");
      expect(event.getResultValue() == results_.back(), "result");
    }
    thrown ? model_.abandon() : model_.end();
    results_.pop_back();
    if (thrown && model_.depth() != 0 && chance(500))
      throw Thrown();
  }

  void compareSequences() {
    for (int const type : types_)
      expect(isEqual(type), "sequence");
  }

  bool isEqual(int type) const {
    std::vector<ModelAction> const & expected = model_.actions(type);
    KivEventDispatcher const & dispatcher = KivEventDispatcher::Instance();
    auto const entry = dispatcher.find(static_cast<KivEventType>(type));
    if (entry == dispatcher.end())
      return expected.empty();
    auto const & actions = entry->second->actions();
    return std::equal(actions.begin(), actions.end(), expected.begin(), expected.end(),
                      [](KivEventAction const * action, ModelAction const & model) {
                        return action->listener == model.listener && action->priority == model.priority &&
                               action->removed == model.removed && (action->handler == nullptr) == (model.handler < 0);
                      });
  }

  /// After an exception a type only marks for ever: once it has grown, another one takes its place.
  void replaceStuckTypes() {
    for (int & type : types_)
      if (model_.onlyMarks(type) && model_.actions(type).size() > 50 && nextType_ < KIV_EVENT_LAST)
        type = nextType_++;
  }

  support::Random random_;
  BusModel model_;
  std::array<Place, 24> places_;
  std::array<int, 10> types_{};
  int nextType_ = KIV_EVENT_User;
  std::vector<long> results_; ///< of the events under way
  std::size_t steps_ = 0;
  std::size_t budget_ = 0; ///< of operations that a trigger from outside may lead to
  bool failed_ = false;
};

void Subject::first(KivEvent * event) { machine_->called(*this, 0, *event); }
void Subject::second(KivEvent * event) { machine_->called(*this, 1, *event); }
void Subject::third(KivEvent * event) { machine_->called(*this, 2, *event); }

class DispatcherMachine : public testing::TestWithParam<unsigned> {};
TEST_P(DispatcherMachine, CallsWhatTheModelCallsForAMillionSteps) {
  auto const machine = std::make_unique<Machine>(GetParam());
  machine->run(support::times(1'000'000));
  EXPECT_FALSE(machine->failed());
  // That it was all there.
  EXPECT_GT(machine->calls, 1'000'000u);
  EXPECT_GT(machine->nestedInSameType, 10'000u);
  EXPECT_GT(machine->marks, 50'000u);
  EXPECT_GT(machine->throws, 20u);
  EXPECT_EQ(machine->deepest, 6u);
}
INSTANTIATE_TEST_SUITE_P(Seeds, DispatcherMachine, testing::Values(1u, 2u, 3u));

} // namespace

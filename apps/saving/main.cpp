// saving MODEL...: "saves" each model. It asks the listeners first, any of which may refuse, and announces the result
// afterwards.
//
//   saving order "old invoice" order
//
// A sample of the event bus: the sender knows none of the listeners, and none of them knows another.

#include "aevent.hpp"
#include "tools/string.hpp"

#include <cstdio>
#include <cstring>
#include <memory>

using SV::String;

namespace {

/// What the events about a model carry.
class ModelEvent : public KivEvent {
public:
  String const & GetModel() const { return model_; }

protected:
  ModelEvent(KivEventType type, String const & model) : KivEvent(type), model_(model) {}

private:
  String model_;
};

/// A model is about to be saved; any result but 0 refuses it.
class BeforeSaveEvent : public ModelEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_BeforeSaveModel;

  explicit BeforeSaveEvent(String const & model) : ModelEvent(kEventType, model) {}
};

/// A model has been saved.
class SavedEvent : public ModelEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_SaveModel;

  explicit SavedEvent(String const & model) : ModelEvent(kEventType, model) {}
};

/// Writes down what happens, before all listeners of normal priority.
class Journal : public KivEventListener {
public:
  Journal() {
    setEventHandler<&Journal::note>(KIV_EVENT_BeforeSaveModel, KIV_PRIORITY_EARLY);
    setEventHandler<&Journal::note>(KIV_EVENT_SaveModel, KIV_PRIORITY_EARLY);
  }
  ~Journal() override {
    manualSignOff(); // the handler uses the count below
    std::printf("journal: %d lines\n", count_);
  }

private:
  void note(ModelEvent * event) {
    std::printf("%d %s %s\n", ++count_, event->getEventName(), event->GetModel().c_str());
  }

  int count_ = 0;
};

/// Refuses models that begin with "old".
class Archive : public KivEventListener {
public:
  Archive() { setEventHandler<&Archive::refuseOld>(); }

private:
  void refuseOld(BeforeSaveEvent * event) {
    if (std::strncmp(event->GetModel().c_str(), "old", 3) == 0)
      event->setResultValue(1);
  }
};

/// Greets the first model that is saved, and signs off.
class Welcome : public KivEventListener {
public:
  Welcome() { setEventHandler<&Welcome::greet>(); }

private:
  void greet(SavedEvent * event) {
    std::printf("welcome, %s\n", event->GetModel().c_str());
    manualSignOff();
  }
};

bool save(String const & model) {
  BeforeSaveEvent before(model);
  before.trigger();
  if (before.getResultValue() != 0)
    return false;
  std::printf("saving %s\n", model.c_str());
  SavedEvent(model).trigger();
  return true;
}

} // namespace

int main(int count, char ** arguments) {
  if (count < 2) {
    std::fputs("usage: saving MODEL...\n", stderr);
    return 2;
  }
  Archive const archive;
  Welcome const welcome;
  auto const journal = std::make_unique<Journal>();
  int refused = 0;
  for (int i = 1; i < count; ++i)
    if (!save(arguments[i])) {
      std::printf("refused %s\n", arguments[i]);
      ++refused;
    }
  return refused != 0 ? 1 : 0;
}

// saving MODEL...: "saves" each model: asks the listeners first, any of which may refuse, and tells them afterwards.
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

/// A model is about to be saved, or has been: one class may serve several types.
class ModelEvent : public KivEvent {
public:
  ModelEvent(KivEventType type, String const & model) : KivEvent(type), model_(model) {}

  String const & GetModel() const { return model_; }

private:
  String model_;
};

String const & modelOf(KivEvent const * event) { return static_cast<ModelEvent const *>(event)->GetModel(); }

/// Writes down what happens, before all listeners of normal priority.
class Journal : public KivEventListener {
public:
  Journal() {
    setEventHandler(KIV_EVENT_BeforeSaveModel, &Journal::note, KIV_PRIORITY_EARLY);
    setEventHandler(KIV_EVENT_SaveModel, &Journal::note, KIV_PRIORITY_EARLY);
  }
  ~Journal() override {
    manualSignOff(); // the handler uses the count below
    std::printf("journal: %d lines\n", count_);
  }

private:
  void note(KivEvent * event) { std::printf("%d %s %s\n", ++count_, event->getEventName(), modelOf(event).c_str()); }

  int count_ = 0;
};

/// Refuses models that begin with "old".
class Archive : public KivEventListener {
public:
  Archive() { setEventHandler(KIV_EVENT_BeforeSaveModel, &Archive::refuseOld); }

private:
  void refuseOld(KivEvent * event) {
    if (std::strncmp(modelOf(event).c_str(), "old", 3) == 0)
      event->setResultValue(1);
  }
};

/// Greets the first model that is saved, and is gone.
class Welcome : public KivEventListener {
public:
  Welcome() { setEventHandler(KIV_EVENT_SaveModel, &Welcome::greet); }

private:
  void greet(KivEvent * event) {
    std::printf("welcome, %s\n", modelOf(event).c_str());
    manualSignOff();
  }
};

bool save(String const & model) {
  ModelEvent before(KIV_EVENT_BeforeSaveModel, model);
  before.trigger();
  if (before.getResultValue() != 0)
    return false;
  std::printf("saving %s\n", model.c_str());
  ModelEvent(KIV_EVENT_SaveModel, model).trigger();
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

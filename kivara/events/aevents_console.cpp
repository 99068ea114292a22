#include "aevents.hpp"
#include "atrace.hpp"

using SV::String;

namespace {

/// All that the library knows of the event of a start-up phase, whose class belongs to the product.
struct StartupPhaseLayout : KivEvent {
  String text;
};
static_assert(sizeof(KivEvent) == 32 && sizeof(StartupPhaseLayout) == 40, "the string comes right after the result");

} // namespace

KivDynamicConsoleListener::KivDynamicConsoleListener() {
  using Self = KivDynamicConsoleListener;
  setEventHandler(KIV_EVENT_AppChangeStartupPhase, &Self::_onStartupPhase, KIV_PRIORITY_EARLY);
  setEventHandler(KIV_EVENT_AppInitialized, &Self::_onInitialized, KIV_PRIORITY_EARLY);
  setEventHandler(KIV_EVENT_AppExit, &Self::_onExit, KIV_PRIORITY_EARLY);
  setEventHandler<&Self::_onWindowStack>(KIV_PRIORITY_EARLY);
}

KivDynamicConsoleListener::~KivDynamicConsoleListener() = default;

void KivDynamicConsoleListener::_onStartupPhase(KivEvent * event) {
  KivDebugOut((static_cast<StartupPhaseLayout const *>(event)->text + "\n").c_str());
}

void KivDynamicConsoleListener::_onInitialized(KivEvent *) { KivDebugOut("[kiv] Application initialized\n"); }

void KivDynamicConsoleListener::_onExit(KivEvent *) { KivDebugOut("[kiv] Application shutdown event recognized\n"); }

void KivDynamicConsoleListener::_onWindowStack(KivWindowStackChangedEvent * event) {
  String const line = String("[kiv] WinStack: ") + (event->IsPushed() ? "+= " : "-= ") + String(event->GetDepth()) +
                      " [" + event->GetTitle() + "]\n";
  KivDebugOut(line.c_str());
}

// userwatch.dll: a general plug-in. It writes a trace line for each change of a user or a group, in any program that loads it.
//
// A general plug-in has nothing beyond being loaded: the object below is made then, and goes when the plug-in is unloaded.

#include "aevents.hpp"
#include "atrace.hpp"

namespace {

class UserWatch : public KivEventListener {
public:
  UserWatch() {
    setEventHandler<&UserWatch::noteUser>();
    setEventHandler<&UserWatch::noteGroup>();
  }

private:
  void noteUser(KivUserEvent * event) {
    Kiv_Trace("userwatch: user %ld: %s", event->GetID(), event->GetActionName().c_str());
  }

  void noteGroup(KivUserGroupEvent * event) {
    Kiv_Trace("userwatch: group %ld: %s, user %ld", event->GetUserGroupID(), event->GetActionName().c_str(),
              event->GetUserID());
  }
};

UserWatch theWatch;

} // namespace

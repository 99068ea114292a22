#pragma once
/// \file
/// The inside of the event bus: who is registered for what, and in which order. Modules that announce or observe events need
/// aevent.hpp only.
///
/// \code
///   auto const & dispatcher = KivEventDispatcher::Instance();
///   auto const entry = dispatcher.find(KIV_EVENT_AppExit);
///   bool const isHeard = entry != dispatcher.end() && !entry->second->actions().empty();
/// \endcode
///
/// Everything here belongs to the main thread; nothing is locked.

#include "aevent.hpp"
#include "export.hpp"

#include <map>
#include <set>
#include <vector>

/// One registration. A change from outside of listener, handler or removed counts from then on; one of the priority does not
/// move the action.
struct KivEventAction {
  KivEventListener * listener; ///< not owned; null: never called
  KivEventHandler handler;     ///< null: never called
  KivEventPriority priority;
  bool removed; ///< true: never called. Set when the listener leaves during a walk: the action has to stay in its place
};

/// The registrations of one type, in the order in which they run.
class KIV_API KivEventActionSeq {
public:
  KivEventActionSeq();
  KivEventActionSeq(KivEventActionSeq const &) = delete;
  KivEventActionSeq & operator=(KivEventActionSeq const &) = delete;
  virtual ~KivEventActionSeq();

  /// Inserts an action before the first one of the same or a lower priority. Throws std::bad_alloc; nothing has changed then.
  void add(KivEventListener * listener, KivEventHandler handler, KivEventPriority priority);

  /// Removes the listener's actions; while the sequence is being walked it only marks them. Marked actions stay until the
  /// sequence is destroyed, or until a listener at the same address registers here and is removed while nothing is being walked.
  void remove(KivEventListener * listener);

  /// Runs the actions that are not marked, including those that are added after the running one meanwhile. An exception
  /// from a handler passes through. The event must not be null.
  void fire(KivEvent * event);

  /// The actions, marked ones included.
  std::vector<KivEventAction *> const & actions() const { return actions_; }

private:
  std::vector<KivEventAction *> actions_;
  std::set<KivEventListener *> listeners_; ///< those with an action that is not marked
  KivEventType firing_ = KIV_EVENT_FIRST;  ///< KIV_EVENT_FIRST while nothing is being walked
};

/// The one dispatcher of the process: a map of the sequences by type, which it owns. A type gets its sequence with its first
/// registration and keeps it, even when it is empty.
///
/// The map may be changed from outside: each operation looks its sequence up afresh. A sequence that is entered becomes the
/// dispatcher's; one that is erased or replaced belongs to whoever did it, and so do its registrations, which no sign-off
/// finds any more. A null sequence counts as none. The same sequence must not be there twice, and none must be deleted while
/// it is being walked.
class KIV_API KivEventDispatcher : public std::map<KivEventType, KivEventActionSeq *> {
public:
  /// Made on first use and destroyed by the exit processing of the runtime: must not be used once isShutDown is true.
  static KivEventDispatcher & Instance();

  KivEventDispatcher(KivEventDispatcher const &) = delete;
  KivEventDispatcher & operator=(KivEventDispatcher const &) = delete;
  virtual ~KivEventDispatcher();

  /// What KivEvent::trigger calls. Nothing happens for a type without a sequence. The event must not be null.
  void dispatch(KivEvent * event);
  /// What KivEventListener::setEventHandler calls. Throws std::bad_alloc; no action is added then.
  void registerAction(KivEventType type, KivEventListener * listener, KivEventHandler handler,
                      KivEventPriority priority);
  /// What KivEventListener::manualSignOff calls.
  void signOff(KivEventListener * listener);

  /// Whether the dispatcher is gone.
  static bool isShutDown();

private:
  KivEventDispatcher();
  KivEventActionSeq & sequenceFor(KivEventType type);

  bool dispatching_ = false; ///< cleared by the first walk that ends, even inside another one: not a guard
  static bool shutDown_;     ///< static, because listeners that outlive the dispatcher read it
};

#pragma once
/// \file
/// The event bus: the catalogue of event types, and the synchronous dispatcher.
///
/// A sender builds a concrete event on its stack and triggers it; every handler of its type runs at once, on the sender's thread,
/// before trigger returns. The event is the only way back: a handler writes a result value into it, the last one wins. No handler
/// can stop the walk.
///
/// \code
///   class Autosave : public KivEventListener {
///   public:
///     Autosave() { setEventHandler(KIV_EVENT_AppExit, &Autosave::onExit); }
///     ~Autosave() override { manualSignOff(); } // onExit uses members of this class
///
///   private:
///     void onExit(KivEvent * event);
///   };
/// \endcode
///
/// Handlers run by descending priority, among equal ones the newest registration first. A handler may sign off any listener,
/// itself too, and may trigger further events, of the same type too. It must not register handlers for a type that is being
/// walked: the running action may then run again. An exception from a handler leaves trigger; the rest of the walk is skipped and
/// its type counts as being walked from then on, so that listeners that leave are only marked.
///
/// Everything here belongs to the main thread; nothing is locked. After the dispatcher's end, at the end of the process, trigger,
/// sign-off and registering do nothing.

#include "export.hpp"

#include <map>
#include <set>
#include <vector>

/// The types of all events of the product: 700 and 854 are sentinels, the events proper lie between them without a gap.
enum KivEventType : int {
  KIV_EVENT_FIRST = 700,
#define KIV_EVENT(name) KIV_EVENT_##name,
#include "detail/aevent_types.inc"
  KIV_EVENT_LAST
};
static_assert(KIV_EVENT_LAST == 854, "modules that are built already know the numbers");

/// The order of handlers: a larger number runs earlier.
enum KivEventPriority : int { KIV_PRIORITY_NORMAL = 0, KIV_PRIORITY_EARLY = 600 };

/// \name Names of event types
/// The tables never change, so any thread may ask.
/// @{

/// The names; that of a type is at its number minus 700. The table is never written, whatever its type says.
KIV_API char const ** Kiv_GetEventNames();

/// How many names there are, both sentinels included: the events proper are 1 to this number less 2.
KIV_API unsigned long Kiv_GetEventCount();

/// The type of a name, by exact comparison; KIV_EVENT_LAST where no event has it, for the sentinels and for null too.
KIV_API KivEventType Kiv_GetEventTypeOfName(char const * name);

/// The index of a name in the table; 0 where no event has it.
KIV_API unsigned long Kiv_GetEventIndexOfName(char const * name);

/// Compares all names with each other and reports an internal error for each that stands twice.
KIV_API void Kiv_CheckEventNames();
/// @}

/// The root of all events.
class KIV_API KivEventData {
public:
  /// \param type  is not tested; one outside of the catalogue has an empty name
  explicit KivEventData(KivEventType type);
  virtual ~KivEventData();

  KivEventType getEventType() const { return type_; } ///< as it was made
  /// The name of the type in the table.
  char const * getEventName() const { return name_; }

private:
  KivEventType type_;
  char const * name_;
};

/// What is triggered. Only concrete events are made.
class KIV_API KivEvent : public KivEventData {
public:
  ~KivEvent() override;

  /// Runs all handlers of the type.
  void trigger();

  /// 0 until a handler sets it. What it means is up to the concrete event.
  long getResultValue() const { return resultValue_; }
  void setResultValue(long value) { resultValue_ = value; }

protected:
  explicit KivEvent(KivEventType type) : KivEventData(type) {} ///< for concrete events

private:
  long resultValue_ = 0;
};

class KivEventListener;

/// A handler: a member function of a listener.
using KivEventHandler = void (KivEventListener::*)(KivEvent *);

/// Base of everything that wants events. Registrations belong to the object's address: a copy starts with none, and assignment
/// leaves those of both sides as they are. The destructor signs off; a class whose handlers use members of its own signs off in
/// its own destructor.
class KIV_API KivEventListener {
public:
  KivEventListener();
  KivEventListener(KivEventListener const &);
  KivEventListener & operator=(KivEventListener const &);
  virtual ~KivEventListener();

  /// Registers a handler. The same one registered twice is called twice. A null handler is kept and never called. Throws
  /// std::bad_alloc; nothing is registered then.
  void setEventHandler(KivEventType type, KivEventHandler handler, KivEventPriority priority = KIV_PRIORITY_NORMAL);

  /// The same for a member function of a derived class.
  template <class Listener>
  void setEventHandler(KivEventType type, void (Listener::*handler)(KivEvent *),
                       KivEventPriority priority = KIV_PRIORITY_NORMAL) {
    setEventHandler(type, static_cast<KivEventHandler>(handler), priority);
  }

  /// Removes all handlers of this listener from all types.
  void manualSignOff();

  /// Does nothing.
  void check() const {}
};

/// One registration.
struct KivEventAction {
  KivEventListener * listener; ///< not owned
  KivEventHandler handler;
  KivEventPriority priority;
  bool removed; ///< its listener has left during a walk; it stays in its sequence
  bool skipped; ///< removed, or without a handler: no walk calls it
};

/// The registrations of one type in the order in which they run.
class KIV_API KivEventActionSeq {
public:
  KivEventActionSeq();
  KivEventActionSeq(KivEventActionSeq const &) = delete;
  KivEventActionSeq & operator=(KivEventActionSeq const &) = delete;
  virtual ~KivEventActionSeq();

  /// Puts an action in front of those of its priority and below. Throws std::bad_alloc; nothing has changed then.
  void add(KivEventListener * listener, KivEventHandler handler, KivEventPriority priority);

  /// Takes the listener's actions out, or only marks them while the sequence is being walked. Marked actions stay until the
  /// sequence dies or the listener is removed again while nothing is walked.
  void remove(KivEventListener * listener);

  /// Runs the actions that are not marked, those too that are added behind the running one meanwhile. What a handler throws
  /// passes through. The event is not null.
  void fire(KivEvent * event);

  /// The actions, marked ones included.
  std::vector<KivEventAction *> const & actions() const { return actions_; }

private:
  std::vector<KivEventAction *> actions_;
  std::set<KivEventListener *> listeners_; ///< those with an action that is not marked
  KivEventType firing_ = KIV_EVENT_FIRST;  ///< KIV_EVENT_FIRST when nothing is being walked
};

/// The one dispatcher of the process: the sequences by type, which it owns. The map is for reading; nobody else enters or
/// erases a sequence. None is made for a type before its first registration, and an emptied one stays.
class KIV_API KivEventDispatcher : public std::map<KivEventType, KivEventActionSeq *> {
public:
  /// Made on first use, destroyed by the runtime's exit processing: not to be used once isShutDown is true.
  static KivEventDispatcher & Instance();

  KivEventDispatcher(KivEventDispatcher const &) = delete;
  KivEventDispatcher & operator=(KivEventDispatcher const &) = delete;
  virtual ~KivEventDispatcher();

  /// What KivEvent::trigger and the operations of KivEventListener call. Nothing happens for a type without a sequence. The
  /// event is not null.
  void dispatch(KivEvent * event);
  void registerAction(KivEventType type, KivEventListener * listener, KivEventHandler handler,
                      KivEventPriority priority); ///< Throws std::bad_alloc; no action is added then.
  void signOff(KivEventListener * listener);      ///< from all types

  /// Whether the dispatcher has come to its end.
  static bool isShutDown();

private:
  KivEventDispatcher();
  KivEventActionSeq * sequenceOf(KivEventType type) const;
  KivEventActionSeq & madeSequence(KivEventType type);

  bool dispatching_ = false; ///< cleared by the first walk that ends: not a guard
  /// The sequences of the catalogue's types once more, so that an event finds its own without a search.
  KivEventActionSeq * byIndex_[KIV_EVENT_LAST - KIV_EVENT_FIRST + 1] = {};
};

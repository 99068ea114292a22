#pragma once
/// \file
/// The event bus: modules announce events and observe those of others, without knowing each other.
///
/// A sender builds a concrete event on its stack and triggers it. Every handler of the event's type runs at once, on the
/// sender's thread, before trigger returns. The event is the only way back to the sender: a handler writes a result into
/// it, and the last handler that writes one wins. No handler can stop the walk through the others.
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
/// Handlers run in descending order of priority; among equal priorities the newest registration comes first. A handler may
/// sign off any listener, itself included, and may trigger further events, also of the same type. It must not register a
/// handler for a type that is being walked: the running handler may then be called again. An exception from a handler
/// leaves trigger and skips the remaining handlers. From then on the type counts as being walked, so listeners that leave
/// are only marked.
///
/// Everything here belongs to the main thread; nothing is locked. After the end of the dispatcher, at the end of the
/// process, trigger, registration and sign-off do nothing.

#include "aevent_names.hpp"
#include "export.hpp"

/// The order of handlers: a larger number runs earlier. Any number will do.
enum KivEventPriority : int { KIV_PRIORITY_NORMAL = 0, KIV_PRIORITY_EARLY = 600 };

/// The root of all events.
class KIV_API KivEventData {
public:
  /// \param type  not checked; a type outside the catalogue has an empty name
  explicit KivEventData(KivEventType type);
  virtual ~KivEventData();

  KivEventType getEventType() const { return type_; } ///< as given to the constructor
  /// The name of the type in the catalogue.
  char const * getEventName() const { return name_; }

private:
  KivEventType type_;
  char const * name_;
};

/// What is triggered. Only concrete events can be made.
class KIV_API KivEvent : public KivEventData {
public:
  ~KivEvent() override;

  /// Runs all handlers of the type. They see the result that the event already carries.
  void trigger();

  /// 0 until somebody sets it. What it means is up to the concrete event.
  long getResultValue() const { return resultValue_; }
  void setResultValue(long value) { resultValue_ = value; }

protected:
  explicit KivEvent(KivEventType type) : KivEventData(type) {} ///< for concrete events

private:
  long resultValue_ = 0;
};

class KivEventListener;

/// A registered handler: a member function of a listener.
using KivEventHandler = void (KivEventListener::*)(KivEvent *);

/// The base class of everything that wants events. Registrations belong to the object's address: a copy starts with none,
/// and assignment leaves those of both sides as they are. The destructor signs off; a class whose handlers use members of
/// its own must call manualSignOff in its own destructor, because those members are gone by the time this one runs.
class KIV_API KivEventListener {
public:
  KivEventListener();
  KivEventListener(KivEventListener const &);
  KivEventListener & operator=(KivEventListener const &);
  virtual ~KivEventListener();

  /// \name Registration
  /// Each call adds a registration, so a handler that is registered twice is called twice. Throws std::bad_alloc; nothing
  /// is registered then.
  /// @{

  /// Registers a handler. A null handler is kept and never called.
  void setEventHandler(KivEventType type, KivEventHandler handler, KivEventPriority priority = KIV_PRIORITY_NORMAL);

  /// The same for a member function, void note(KivEvent *), of a derived class. This object must be of that class.
  template <class Listener>
  void setEventHandler(KivEventType type, void (Listener::*handler)(KivEvent *),
                       KivEventPriority priority = KIV_PRIORITY_NORMAL) {
    setEventHandler(type, static_cast<KivEventHandler>(handler), priority);
  }
  /// @}

  /// Removes all handlers of this listener from all types.
  void manualSignOff();

  /// Does nothing.
  void check() const {}
};

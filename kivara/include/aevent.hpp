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
///     Autosave() { setEventHandler<&Autosave::onExit>(); }
///     ~Autosave() override { manualSignOff(); } // onExit uses members of this class
///
///   private:
///     void onExit(KivExitAppEvent * event);
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
#include "detail/eventhandler.hpp"
#include "export.hpp"
#include "tools/assert.hpp"

#include <type_traits>
#include <typeinfo> // otherwise GCC exports the type information of the dispatcher's base class as well

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
///
/// An event class whose events all have the same type declares it, so that handlers of that class register without naming it:
///
/// \code
///   static constexpr KivEventType kEventType = KIV_EVENT_AppExit;
/// \endcode
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

  /// Registers a member function, void onExit(KivExitAppEvent *), for the one type that its event class declares:
  /// setEventHandler<&Autosave::onExit>(). This object must be of the class that declares the handler, and every event of
  /// the type must be of the class that the handler takes; debug builds check the latter at each call.
  template <auto handler> void setEventHandler(KivEventPriority priority = KIV_PRIORITY_NORMAL);

  /// The same where the event class declares no type because it serves several, and for KivEvent itself:
  /// setEventHandler<&Journal::note>(KIV_EVENT_SaveModel).
  template <auto handler> void setEventHandler(KivEventType type, KivEventPriority priority = KIV_PRIORITY_NORMAL);

  /// Registers a handler that is only known at run time. A null handler is kept and never called.
  void setEventHandler(KivEventType type, KivEventHandler handler, KivEventPriority priority = KIV_PRIORITY_NORMAL);

  /// The same for a member function, void note(KivEvent *), of a derived class. This object must be of that class.
  template <class Handler>
  requires std::is_member_pointer_v<Handler>
  void setEventHandler(KivEventType type, Handler handler, KivEventPriority priority = KIV_PRIORITY_NORMAL);
  /// @}

  /// Removes all handlers of this listener from all types.
  void manualSignOff();

  /// Does nothing.
  void check() const {}

private:
  template <auto handler> void callTyped(KivEvent * event);
};

template <auto handler> void KivEventListener::setEventHandler(KivEventPriority priority) {
  using Handler = decltype(handler);
  if constexpr (kivara::detail::isHandler<Handler, KivEventListener, KivEvent>())
    if constexpr (kivara::detail::hasOneType<Handler>())
      setEventHandler(kivara::detail::HandlerOf<Handler>::Event::kEventType, &KivEventListener::callTyped<handler>,
                      priority);
}

template <auto handler> void KivEventListener::setEventHandler(KivEventType type, KivEventPriority priority) {
  using Handler = decltype(handler);
  if constexpr (kivara::detail::isHandler<Handler, KivEventListener, KivEvent>())
    if constexpr (kivara::detail::hasSeveralTypes<Handler>())
      setEventHandler(type, &KivEventListener::callTyped<handler>, priority);
}

template <class Handler>
requires std::is_member_pointer_v<Handler>
void KivEventListener::setEventHandler(KivEventType type, Handler handler, KivEventPriority priority) {
  if constexpr (kivara::detail::isUntypedHandler<Handler, KivEventListener, KivEvent>()) {
    using Listener = typename kivara::detail::HandlerOf<Handler>::Listener;
    kivara::detail::Untyped<Listener, KivEvent> const plain = handler; // a noexcept would keep the cast from compiling
    setEventHandler(type, static_cast<KivEventHandler>(plain), priority);
  }
}

// What a typed registration stores: a pointer to the handler itself must not be called as one that takes a KivEvent.
template <auto handler> void KivEventListener::callTyped(KivEvent * event) {
  using Classes = kivara::detail::HandlerOf<decltype(handler)>;
  SV_DEBUG_CHECK(dynamic_cast<typename Classes::Event *>(event) != nullptr,
                 "the event is of the class that its handler takes");
  (static_cast<typename Classes::Listener *>(this)->*handler)(static_cast<typename Classes::Event *>(event));
}

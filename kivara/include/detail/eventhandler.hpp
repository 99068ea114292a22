#pragma once
/// \file
/// What the type of a handler says about it, and the words for what cannot be registered. Private to aevent.hpp.

#include <type_traits>

namespace kivara::detail {

/// The class that declares a handler, and the class of its events.
template <class ListenerClass, class EventClass> struct HandlerClasses {
  using Listener = ListenerClass;
  using Event = EventClass;
};

/// The classes of a member function that takes one pointer and returns nothing; no members for any other type.
template <class Handler> struct HandlerOf {};
template <class L, class E> struct HandlerOf<void (L::*)(E *)> : HandlerClasses<L, E> {};
template <class L, class E> struct HandlerOf<void (L::*)(E *) const> : HandlerClasses<L, E> {};
template <class L, class E> struct HandlerOf<void (L::*)(E *) noexcept> : HandlerClasses<L, E> {};
template <class L, class E> struct HandlerOf<void (L::*)(E *) const noexcept> : HandlerClasses<L, E> {};

template <class Handler>
concept HasHandlerShape = requires {
  typename HandlerOf<Handler>::Event;
};

/// The form in which a handler can be a value of the program.
template <class Listener, class Event> using Untyped = void (Listener::*)(Event *);

/// Whether pointers convert in both directions. They do not for a private, ambiguous or virtual base, nor for a class that
/// is only declared.
template <class Derived, class Base>
concept DerivesFrom = std::is_convertible_v<Derived *, Base *> && requires(Base * base) {
  static_cast<Derived *>(base);
};

template <class Event>
concept HasEventType = requires {
  Event::kEventType;
};

/// True for a member function of a listener that takes an event; anything else does not compile. Listener and Event are the
/// base classes.
template <class Handler, class Listener, class Event> constexpr bool isHandler() {
  static_assert(HasHandlerShape<Handler>,
                "a handler is a member function that takes a pointer to an event and returns nothing");
  if constexpr (HasHandlerShape<Handler>) {
    using Classes = HandlerOf<Handler>;
    constexpr bool isOfListener = DerivesFrom<typename Classes::Listener, Listener>;
    constexpr bool takesEvent = DerivesFrom<std::remove_const_t<typename Classes::Event>, Event>;
    static_assert(isOfListener,
                  "the handler's class must derive from KivEventListener: publicly, once and not virtually");
    static_assert(takesEvent,
                  "the class of the handler's event must be defined here and derive from KivEvent: publicly, once "
                  "and not virtually");
    return isOfListener && takesEvent;
  }
  return false;
}

/// True for a handler that is a value of the program; anything else does not compile.
template <class Handler, class Listener, class Event> constexpr bool isUntypedHandler() {
  if constexpr (isHandler<Handler, Listener, Event>()) {
    constexpr bool isUntyped = std::is_convertible_v<Handler, Untyped<typename HandlerOf<Handler>::Listener, Event>>;
    static_assert(isUntyped, "a const handler, or one that takes a class of its own, must be a template argument: "
                             "setEventHandler<&Class::handler>(type)");
    return isUntyped;
  }
  return false;
}

/// True when the handler's event class declares a type; one that declares none does not compile.
template <class Handler> constexpr bool hasOneType() {
  constexpr bool declares = HasEventType<typename HandlerOf<Handler>::Event>;
  static_assert(declares, "name the type of the events: their class declares no kEventType");
  return declares;
}

/// True when it declares none; one that does declare a type does not compile.
template <class Handler> constexpr bool hasSeveralTypes() {
  constexpr bool declares = HasEventType<typename HandlerOf<Handler>::Event>;
  static_assert(!declares, "leave the type out: the class of the events declares it as kEventType");
  return !declares;
}

} // namespace kivara::detail

// What does not compile, a case for each REFUSED_ name; without one of them it does.

#include "aevent.hpp"

namespace {

class SaveEvent : public KivEvent {
public:
  static constexpr KivEventType kEventType = KIV_EVENT_SaveModel;
  SaveEvent() : KivEvent(kEventType) {}
};

class SeveralEvent : public KivEvent {
public:
  explicit SeveralEvent(KivEventType type) : KivEvent(type) {}
};

class PrivateEvent : KivEvent {
public:
  PrivateEvent();
};
class VirtualEvent : public virtual KivEvent {
public:
  VirtualEvent();
};
class UnknownEvent;
class NoEvent {};

struct Hearer : KivEventListener {
  void hear(SaveEvent *) {}
  void hearSeveral(SeveralEvent *) {}
  void hearAny(KivEvent *) {}
  void hearConst(KivEvent *) const {}
  void hearPrivate(PrivateEvent *) {}
  void hearVirtual(VirtualEvent *) {}
  void hearUnknown(UnknownEvent *) {}
  void hearNoEvent(NoEvent *) {}
  void hearNothing() {}
  void hearReference(SaveEvent &) {}
  void hearTwo(SaveEvent *, int) {}
  bool answer(SaveEvent *) { return true; }
  static void hearStatic(SaveEvent *) {}
  int data = 0;

  Hearer() {
    constexpr KivEventType type = KIV_EVENT_SaveModel;
    setEventHandler<&Hearer::hear>();
    setEventHandler<&Hearer::hearSeveral>(type);
    setEventHandler<&Hearer::hearAny>(type);
    setEventHandler(type, &Hearer::hearAny);
    setEventHandler(type, nullptr);
#if defined REFUSED_NoType
    setEventHandler<&Hearer::hearSeveral>();
#elif defined REFUSED_NoTypeOfAnyEvent
    setEventHandler<&Hearer::hearAny>();
#elif defined REFUSED_SecondType
    setEventHandler<&Hearer::hear>(type);
#elif defined REFUSED_TypedAtRunTime
    setEventHandler(type, &Hearer::hear);
#elif defined REFUSED_ConstAtRunTime
    setEventHandler(type, &Hearer::hearConst);
#elif defined REFUSED_PrivateEvent
    setEventHandler<&Hearer::hearPrivate>(type);
#elif defined REFUSED_VirtualEvent
    setEventHandler<&Hearer::hearVirtual>(type);
#elif defined REFUSED_UnknownEvent
    setEventHandler<&Hearer::hearUnknown>(type);
#elif defined REFUSED_NoEvent
    setEventHandler<&Hearer::hearNoEvent>(type);
#elif defined REFUSED_NoParameter
    setEventHandler<&Hearer::hearNothing>(type);
#elif defined REFUSED_Reference
    setEventHandler<&Hearer::hearReference>();
#elif defined REFUSED_TwoParameters
    setEventHandler<&Hearer::hearTwo>();
#elif defined REFUSED_Result
    setEventHandler<&Hearer::answer>();
#elif defined REFUSED_Static
    setEventHandler<&Hearer::hearStatic>();
#elif defined REFUSED_Data
    setEventHandler<&Hearer::data>(type);
#elif defined REFUSED_DataAtRunTime
    setEventHandler(type, &Hearer::data);
#elif defined REFUSED_NullArgument
    setEventHandler<nullptr>(type);
#endif
  }
};

struct NoListener {
  void hear(SaveEvent *) {}
  void hearAny(KivEvent *) {}
};
struct Beside : NoListener, KivEventListener {
  Beside() {
#if defined REFUSED_NoListener
    setEventHandler<&Beside::hear>();
#elif defined REFUSED_NoListenerAtRunTime
    setEventHandler(KIV_EVENT_SaveModel, &Beside::hearAny);
#endif
  }
};

struct PrivateListener : private KivEventListener {
  PrivateListener() {
#if defined REFUSED_PrivateListener
    setEventHandler<&PrivateListener::hear>();
#elif defined REFUSED_PrivateListenerAtRunTime
    setEventHandler(KIV_EVENT_SaveModel, &PrivateListener::hearAny);
#endif
  }
  void hear(SaveEvent *) {}
  void hearAny(KivEvent *) {}
};

struct VirtualListener : virtual KivEventListener {
  VirtualListener() {
#if defined REFUSED_VirtualListener
    setEventHandler<&VirtualListener::hear>();
#elif defined REFUSED_VirtualListenerAtRunTime
    setEventHandler(KIV_EVENT_SaveModel, &VirtualListener::hearAny);
#endif
  }
  void hear(SaveEvent *) {}
  void hearAny(KivEvent *) {}
};

struct Left : KivEventListener {};
struct Right : KivEventListener {};
struct TwiceListener : Left, Right {
  TwiceListener() {
#if defined REFUSED_TwiceListener
    Left::setEventHandler<&TwiceListener::hear>();
#endif
  }
  void hear(SaveEvent *) {}
};

} // namespace

void registerAll() {
  Hearer const hearer;
  Beside const beside;
  PrivateListener const privateListener;
  VirtualListener const virtualListener;
  TwiceListener const twiceListener;
}

#pragma once
/// \file
/// Objects that the clean-up at the end deletes. Internal.

#include "acleanup.hpp"

namespace kivara {

/// Has the registry of the clean-up delete an object, and then clear the variable that points to it, so that no
/// caller gets a deleted object.
/// \param object  a variable of static storage that holds an object from operator new
template <class T> void deleteAtCleanUp(T *& object) {
  class Forgetting : public KivCleanUpAction {
  public:
    explicit Forgetting(T *& variable) : variable_(variable) {}
    bool execute() override {
      variable_ = nullptr;
      return true;
    }

  private:
    T *& variable_;
  };

  KivCleanUp::Instance().AddAction(new KivSingletonDeleteAction<T>(object));
  KivCleanUp::Instance().AddAction(new Forgetting(object));
}

/// One object that is made when it is first asked for and that the registry of the clean-up deletes. Whoever asks after
/// that gets a new one, which the end of the process deletes. Meant for a variable of static storage: it has no
/// destructor, since objects that are destroyed late may ask it. Main thread.
///
/// \code
///   CleanedUp<Cache> cache;
///   Cache & Cache::Instance() { return cache.get(); }
/// \endcode
template <class T> class CleanedUp {
public:
  constexpr CleanedUp() = default;
  CleanedUp(CleanedUp const &) = delete;
  CleanedUp & operator=(CleanedUp const &) = delete;

  T & get() {
    if (object_ == nullptr) {
      object_ = new T;
      deleteAtCleanUp(object_);
    }
    return *object_;
  }

  /// Null while there is none.
  T * existing() const { return object_; }

private:
  T * object_ = nullptr;
};

} // namespace kivara

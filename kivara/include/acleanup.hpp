#pragma once
/// \file
/// What is done at the end of the process: files to delete, singletons to destroy.
///
/// The registry waits for the event AppExit, runs its actions once, in the order of their registration, and forgets
/// them. What is still there when the process ends without that event is run then.
///
/// Nothing is locked: actions are added and removed on the main thread. They run on the thread that triggers the event,
/// which for an event of the console is one of the system's.
///
/// \code
///   KivCleanUp::Instance().AddFileCleanUpAction(temporaryName);
///   KivCleanUp::Instance().AddAction(new KivSingletonDeleteAction<Cache>(cache));
/// \endcode

#include "aevent.hpp"
#include "export.hpp"
#include "tools/string.hpp"

#include <memory>
#include <vector>

/// Something to do at the end.
class KIV_API KivCleanUpAction {
public:
  KivCleanUpAction() = default;
  KivCleanUpAction(KivCleanUpAction const &) = delete;
  KivCleanUpAction & operator=(KivCleanUpAction const &) = delete;
  virtual ~KivCleanUpAction();

  /// Whether it could be done; nobody acts on a failure.
  virtual bool execute() = 0;
};

/// Deletes a file.
class KIV_API KivFileCleanUpAction : public KivCleanUpAction {
public:
  explicit KivFileCleanUpAction(SV::String const & fileName); ///< the file need not exist yet
  ~KivFileCleanUpAction() override;

  bool execute() override;

  SV::String const & GetFileName() const { return fileName_; } ///< as given

private:
  SV::String fileName_;
};

/// Deletes an object when it is executed, and only then. Other pointers to it dangle from then on: nobody may ask for
/// such a singleton after AppExit.
template <class T> class KivSingletonDeleteAction : public KivCleanUpAction {
public:
  /// \param object  from operator new; may be null
  explicit KivSingletonDeleteAction(T * object) : object_(object) {}

  bool execute() override {
    delete object_;
    object_ = nullptr;
    return true;
  }

private:
  T * object_;
};

/// The registry.
class KIV_API KivCleanUp : public KivEventListener {
public:
  /// Made on first use, destroyed at the end of the process.
  static KivCleanUp & Instance();

  KivCleanUp(KivCleanUp const &) = delete;
  KivCleanUp & operator=(KivCleanUp const &) = delete;
  ~KivCleanUp() override;

  /// Appends an action, which the registry owns from then on, whatever happens. Null is passed over. Throws
  /// std::bad_alloc.
  void AddAction(KivCleanUpAction * action);

  /// Appends the deletion of a file. A name may stand there more than once. Throws std::bad_alloc.
  void AddFileCleanUpAction(SV::String const & file);

  /// Forgets the first deletion of that name, which is compared with regard to case; the file stays. Unknown names do
  /// nothing.
  void RemoveFileCleanUpAction(SV::String const & file);

protected:
  /// Runs and forgets all actions. The event is not read and may be null. An exception of an action passes through; the
  /// actions behind it stay for the next event.
  void _onExit(KivEvent * event);

private:
  KivCleanUp();

  std::vector<std::unique_ptr<KivCleanUpAction>> actions_;
};

#pragma once
/// \file
/// Clean-up at the end of the process: files to delete, singletons to destroy.
///
/// The registry waits for the event AppExit, runs its actions once, in the order in which they were added, and removes
/// them. Actions that are still registered when the process ends without that event run at that point.
///
/// There are no locks: actions are added and removed on the main thread. They run on the thread that triggers the event; for
/// a console event that is a thread of the system.
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

/// One step of the clean-up.
class KIV_API KivCleanUpAction {
public:
  KivCleanUpAction() = default;
  KivCleanUpAction(KivCleanUpAction const &) = delete;
  KivCleanUpAction & operator=(KivCleanUpAction const &) = delete;
  virtual ~KivCleanUpAction();

  /// Carries out the step. The registry ignores the result.
  virtual bool execute() = 0;
};

/// Deletes a file. A failure is not reported.
class KIV_API KivFileCleanUpAction : public KivCleanUpAction {
public:
  explicit KivFileCleanUpAction(SV::String const & fileName); ///< the file need not exist yet
  ~KivFileCleanUpAction() override;

  bool execute() override;

  SV::String const & GetFileName() const { return fileName_; } ///< as given

private:
  SV::String fileName_;
};

/// Deletes an object when it is executed, and only then. All other pointers to the object dangle from then on, so such a
/// singleton must not be used after AppExit.
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
  /// The one registry, created on first use and destroyed at the end of the process.
  static KivCleanUp & Instance();

  KivCleanUp(KivCleanUp const &) = delete;
  KivCleanUp & operator=(KivCleanUp const &) = delete;
  ~KivCleanUp() override;

  /// Appends an action. The registry takes ownership, even if this throws. Null is ignored. Throws std::bad_alloc.
  void AddAction(KivCleanUpAction * action);

  /// Appends the deletion of a file. The same name may be added more than once. Throws std::bad_alloc.
  void AddFileCleanUpAction(SV::String const & file);

  /// Removes the first deletion of that name without executing it, so the file stays. Names are the same if they have the
  /// same length and are equal up to their first NUL; the comparison is case-sensitive, even where the file system is not.
  /// An unknown name does nothing.
  void RemoveFileCleanUpAction(SV::String const & file);

protected:
  /// Runs and removes all actions. The event is not read and may be null. An exception from an action passes through; the
  /// actions after it stay registered for the next event.
  void _onExit(KivEvent * event);

private:
  KivCleanUp();

  std::vector<std::unique_ptr<KivCleanUpAction>> actions_;
};

#pragma once
/// \file
/// What an endurance run does, over and over.

#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

namespace endurance {

/// Where the activities work. Both folders are counted: each round leaves as many files as it found.
struct Place {
  std::string folder;    ///< for all that they write
  std::string temporary; ///< for temporary files of the library
};

/// Held while a file is open that is deleted or renamed afterwards, and while a program is started: it inherits what is open, and keeps
/// it open up to its end.
inline std::mutex & filesInUse() {
  static std::mutex mutex;
  return mutex;
}

/// A round that did not go as it should.
inline void expect(bool holds, char const * what) {
  if (!holds)
    throw std::runtime_error(what);
}

/// Something that a program does, in rounds. Made and destroyed on the main thread, after the library has started and before it ends.
class Activity {
public:
  Activity() = default;
  Activity(Activity const &) = delete;
  Activity & operator=(Activity const &) = delete;
  virtual ~Activity() = default;

  /// Does it once; an exception for what did not go well.
  /// \return false when there was nothing to do yet, which counts as no round
  virtual bool round() = 0;
};

using ActivityPtr = std::unique_ptr<Activity>;

/// \name All activities
/// @{
ActivityPtr printPages(Place const & place); ///< null where there is no print server
ActivityPtr changeLanguages(Place const & place);
ActivityPtr openWindows(Place const & place);
ActivityPtr switchThemes(Place const & place);
ActivityPtr sendEvents(Place const & place);
ActivityPtr loadPlugins(Place const & place);
ActivityPtr callFar(Place const & place);
ActivityPtr makeTemporaryFiles(Place const & place);
ActivityPtr matchTexts(Place const & place);
ActivityPtr showBoxes(Place const & place);
ActivityPtr paintPictures(Place const & place);
ActivityPtr showTrayIcon(Place const & place);
ActivityPtr dragTexts(Place const & place);
ActivityPtr writeLogs(Place const & place);
ActivityPtr requestPages(Place const & place);
ActivityPtr startProcesses(Place const & place);
ActivityPtr calculate(Place const & place);
/// @}

/// Loses one thing a round: "handle", "thread", "gdi", "user", "memory" or "file"; or "rounds", all that follow the first ones, or
/// "result", its own. Null for any other word.
ActivityPtr leak(std::string const & what, Place const & place);

/// So many rounds each activity has before anything counts.
inline constexpr int kRoundsToWarmUp = 3;

/// An activity with its pace.
struct Plan {
  char const * name;
  ActivityPtr (*make)(Place const & place);
  double every;   ///< seconds from the beginning of a round to that of the next
  double atLeast; ///< rounds a minute without which it counts as asleep: far below those that a busy machine makes
  bool hasThread; ///< one of its own, where the library allows that; otherwise the main thread does it
};

/// In the order in which they are made.
std::vector<Plan> const & plans();

} // namespace endurance

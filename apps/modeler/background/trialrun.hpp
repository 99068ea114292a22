#pragma once
/// \file
/// A run through a model in passing time.

#include "kivara.hpp"
#include "sv/timer.hpp"

#include <functional>

namespace modeler {

/// One case on its way through a model, an hour of which takes a second. The program goes on meanwhile.
class TrialRun {
public:
  /// \param ended  called when the case has arrived
  explicit TrialRun(std::function<void()> ended);

  /// Begins; a former run ends without a word.
  /// \param time  how long the way takes in the model; the run lasts at least a second, and at most an hour
  void Start(KivCoreTime const & time);
  bool IsRunning() const { return timer_.IsActive(); }

private:
  SV::Timer timer_;
};

} // namespace modeler

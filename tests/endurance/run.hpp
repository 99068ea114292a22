#pragma once
/// \file
/// A run: all activities at once, each at its own pace, with samples of what the process holds.

#include "activity.hpp"
#include "gate.hpp"
#include "growth.hpp"
#include "options.hpp"

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace endurance {

class Run {
public:
  /// Makes the activities that the options want. Main thread, with the library running.
  /// \throws std::runtime_error for an option with an unknown name
  Run(Options options, Place place);
  Run(Run const &) = delete;
  Run & operator=(Run const &) = delete;
  ~Run();

  /// Works for that time and prints what it has seen.
  /// \return whether all was done often enough, nothing failed and nothing grew
  bool execute();

private:
  struct Worked {
    Plan plan;
    ActivityPtr activity;
    std::atomic<long> rounds = 0;
    double next = 0; ///< when its next round is due
  };

  void make(Plan const & plan, ActivityPtr activity);
  void refuseUnknownNames() const;
  void doRound(Worked & worked);
  void doDueRounds();
  void work(Worked & worked);
  void startThreads();
  void endThreads();
  void warmUp();
  void takeSample();
  void fail(std::string const & message);
  bool hasFailed();
  bool wereAllAwake() const;
  void writeSamples() const;
  bool report();

  Options options_;
  Place place_;
  std::vector<std::unique_ptr<Worked>> all_;
  std::vector<std::thread> threads_;
  Gate gate_;
  std::atomic<bool> isOver_ = false;
  std::vector<Sample> samples_;
  double start_ = 0;
  std::mutex failureMutex_;
  std::string failure_; ///< the first one
};

} // namespace endurance

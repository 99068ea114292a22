#pragma once
/// \file
/// A gate between the rounds of several threads: while it is shut, none of them is inside of a round.

#include <condition_variable>
#include <mutex>

namespace endurance {

class Gate {
public:
  /// Waits until it is open; the caller is inside then.
  void enter() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !isShut_; });
    ++inside_;
  }
  void leave() {
    std::scoped_lock const lock(mutex_);
    --inside_;
    changed_.notify_all();
  }

  /// Lets no thread in any more, and waits until none is inside.
  void shut() {
    std::unique_lock lock(mutex_);
    isShut_ = true;
    changed_.wait(lock, [this] { return inside_ == 0; });
  }
  void open() {
    std::scoped_lock const lock(mutex_);
    isShut_ = false;
    changed_.notify_all();
  }

private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int inside_ = 0;
  bool isShut_ = false;
};

} // namespace endurance

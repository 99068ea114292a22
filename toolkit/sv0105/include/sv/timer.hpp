#pragma once
/// \file
/// Timer: calls a handler at intervals.

#include "sv/export.hpp"
#include "tools/object.hpp"

#include <functional>

namespace SV {

/// Calls a handler from the event loop at intervals, until it is stopped. Main thread, between InitSV and DeInitSV.
///
/// \code
///   timer_.ChangeTimeoutHdl([this](SV::Timer *) { Blink(); });
///   timer_.Start(500);
/// \endcode
class SV_API Timer : public LinkHdl {
public:
  using TimeoutHandler = std::function<void(Timer *)>;

  Timer(); ///< stopped
  Timer(Timer const &) = delete;
  Timer & operator=(Timer const &) = delete;
  /// Stops it.
  ~Timer() override;

  /// Starts or restarts the timer. The system lengthens intervals below 10.
  /// \return false, and it is stopped, before InitSV, after DeInitSV, or if the system has no timer left
  bool Start(unsigned long milliseconds);
  /// Timeout is not called after this, even if it is already due.
  void Stop();
  bool IsActive() const { return id_ != 0; } ///< between Start and Stop

  /// The interval is over. The base calls the handler. It may stop the timer or delete it.
  virtual void Timeout();

  /// ChangeTimeoutHdl returns the previous one.
  TimeoutHandler ChangeTimeoutHdl(TimeoutHandler handler);

private:
  unsigned long long id_ = 0;
  TimeoutHandler handler_;
};

} // namespace SV

#pragma once
/// \file
/// An application that records what the frame asks of it.

#include "aapp.hpp"

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace kivtest {

/// Each of the frame's calls is one step. Severe exceptions are recorded and answered as handled unless set otherwise,
/// so that an application without resources runs to its end.
class RecordingApplication : public KivMDIApplication {
public:
  explicit RecordingApplication(bool hasGUI = true, char const * applicationName = "Recorder")
      : KivMDIApplication(applicationName, hasGUI, "log_recorder") {}

  /// What the two calls do besides; they give 0 when they are not set.
  std::function<int()> onPrepare;
  std::function<int()> onRun;

  int prepareApplication() override {
    steps_.emplace_back("prepare");
    return onPrepare ? onPrepare() : 0;
  }

  int runApplication() override {
    steps_.emplace_back("run");
    return onRun ? onRun() : 0;
  }

  bool getMDIClientImage(SV::Image &, int &) override { return false; }

  void Exception(long code, unsigned long arg) override {
    char text[64];
    std::snprintf(text, sizeof text, "exception 0x%lx of 0x%lx", static_cast<unsigned long>(code), arg);
    steps_.emplace_back(text);
  }

  std::vector<std::string> const & steps() const { return steps_; }

  using KivApplicationInterface::_handleException;
  using KivMDIApplication::appInitialized;

private:
  std::vector<std::string> steps_;
};

} // namespace kivtest

#include "background/trialrun.hpp"

#include <algorithm>

namespace modeler {
namespace {

constexpr double kSecondsOfAnHour = 3600;
constexpr double kShortest = 1; // in seconds of the clock, as is the longest
constexpr double kLongest = 3600;

} // namespace

TrialRun::TrialRun(std::function<void()> ended) {
  timer_.ChangeTimeoutHdl([ended = std::move(ended)](SV::Timer * timer) {
    timer->Stop();
    ended();
  });
}

void TrialRun::Start(KivCoreTime const & time) {
  double const seconds = std::clamp(time.asDouble() / kSecondsOfAnHour, kShortest, kLongest);
  timer_.Start(static_cast<unsigned long>(seconds * 1000));
}

} // namespace modeler

#include "run.hpp"

#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "sv/application.hpp"

#include <algorithm>
#include <cstdio>

namespace endurance {
namespace {

using support::detail::now;

constexpr int kSamples = 60;               ///< over the whole run, however long it is
constexpr std::size_t kFewestSamples = 12; ///< a busy machine takes longer for them
constexpr double kSecondsToWarmUp = 120;

template <class... Values> void print(char const * format, Values... values) {
  std::printf(format, values...);
  std::fflush(stdout);
}

} // namespace

Run::Run(Options options, Place place) : options_(std::move(options)), place_(std::move(place)) {
  refuseUnknownNames();
  for (Plan const & plan : plans())
    if (options_.wants(plan.name))
      make(plan, plan.make(place_));
  if (!options_.leak.empty())
    make({"leak", nullptr, 0.05, 1, false}, leak(options_.leak, place_));
}

Run::~Run() { endThreads(); }

void Run::make(Plan const & plan, ActivityPtr activity) {
  if (activity == nullptr)
    throw std::runtime_error(std::string("this cannot be done here: ") + plan.name);
  all_.push_back(std::make_unique<Worked>());
  all_.back()->plan = plan;
  all_.back()->activity = std::move(activity);
}

void Run::refuseUnknownNames() const {
  for (auto const * const names : {&options_.only, &options_.without})
    for (std::string const & name : *names)
      if (std::none_of(plans().begin(), plans().end(), [&](Plan const & plan) { return plan.name == name; }))
        throw std::runtime_error("there is no activity '" + name + "'");
}

void Run::doRound(Worked & worked) {
  worked.next = now() + worked.plan.every;
  try {
    worked.rounds += worked.activity->round() ? 1 : 0;
  } catch (std::exception const & fault) {
    fail(std::string(worked.plan.name) + ": " + fault.what());
  }
}

void Run::doDueRounds() {
  for (auto const & worked : all_)
    if (!worked->plan.hasThread && worked->next <= now() && !hasFailed())
      doRound(*worked);
  SV::Application::Reschedule();
  support::pause(0.002);
}

void Run::work(Worked & worked) {
  while (!isOver_) {
    gate_.enter();
    doRound(worked);
    gate_.leave();
    while (!isOver_ && now() < worked.next)
      support::pause(0.01);
  }
}

void Run::startThreads() {
  for (auto const & worked : all_)
    if (worked->plan.hasThread)
      threads_.emplace_back([this, &each = *worked] { work(each); });
}

void Run::endThreads() {
  isOver_ = true;
  for (std::thread & thread : threads_)
    thread.join();
  threads_.clear();
}

/// What is loaded and kept at the first use is there before the first sample.
void Run::warmUp() {
  double const limit = now() + kSecondsToWarmUp;
  auto const isCold = [](auto const & worked) { return worked->rounds < kRoundsToWarmUp; };
  while (!hasFailed() && std::any_of(all_.begin(), all_.end(), isCold)) {
    doDueRounds();
    if (now() > limit)
      fail(std::string((*std::find_if(all_.begin(), all_.end(), isCold))->plan.name) + ": does not begin");
  }
  for (auto const & worked : all_)
    worked->rounds = 0;
}

/// While no other thread is inside of a round, and after the messages that are waiting.
void Run::takeSample() {
  gate_.shut();
  SV::Application::Reschedule();
  samples_.push_back({now() - start_, measure({place_.folder, place_.temporary})});
  gate_.open();
}

void Run::fail(std::string const & message) {
  std::scoped_lock const lock(failureMutex_);
  if (failure_.empty())
    failure_ = message;
}

bool Run::hasFailed() {
  std::scoped_lock const lock(failureMutex_);
  return !failure_.empty();
}

bool Run::execute() {
  samples_.reserve(2 * kSamples); // what it takes later would be counted
  startThreads();
  warmUp();
  start_ = now();
  double const interval = options_.seconds / kSamples;
  double next = start_;
  double told = start_;
  while ((now() - start_ < options_.seconds || samples_.size() < kFewestSamples) && !hasFailed()) {
    doDueRounds();
    if (now() < next)
      continue;
    takeSample();
    next += interval;
    if (now() - told >= 60) {
      told = now();
      print("%3.0f seconds: %.0f handles, %.0f KiB on the heap\n", told - start_, samples_.back().figures[kHandles],
            samples_.back().figures[kHeapBytes] / 1024);
    }
  }
  takeSample();
  endThreads();
  return report();
}

bool Run::wereAllAwake() const {
  double const minutes = samples_.back().seconds / 60;
  bool all = true;
  print("activity          rounds  at least\n");
  for (auto const & worked : all_) {
    long const needed = std::max(1L, static_cast<long>(worked->plan.atLeast * minutes));
    bool const isAwake = worked->rounds >= needed;
    print("%-16s %7ld %9ld%s\n", worked->plan.name, worked->rounds.load(), needed, isAwake ? "" : "   ASLEEP");
    all = all && isAwake;
  }
  return all;
}

void Run::writeSamples() const {
  std::string lines = "seconds";
  for (int kind = 0; kind < kKinds; ++kind)
    lines += std::string(",") + nameOf(static_cast<Kind>(kind));
  lines += '\n';
  for (Sample const & sample : samples_)
    lines += asLine(sample);
  support::writeFile(options_.samples, lines);
}

bool Run::report() {
  if (hasFailed()) {
    print("FAILED: %s\n", failure_.c_str());
    return false;
  }
  if (!options_.samples.empty())
    writeSamples();
  bool isWell = wereAllAwake();
  std::vector<Growth> const rows = growthIn(samples_);
  print("\n%s", tableOf(rows).c_str());
  for (Growth const & row : rows)
    if (row.isTooMuch()) {
      print("grew: %s\n", nameOf(row.kind));
      isWell = false;
    }
  print(isWell ? "nothing grew in %.0f seconds\n" : "not well after %.0f seconds\n", samples_.back().seconds);
  return isWell;
}

} // namespace endurance

// What is lost on purpose, to see that it is noticed.

#include "../activity.hpp"

#include "support/data/files.hpp"
#include "tools/winapi.hpp"

#include <cstdlib>
#include <functional>
#include <map>

namespace endurance {
namespace {

class Leak : public Activity {
public:
  explicit Leak(std::function<void()> lose) : lose_(std::move(lose)) {}
  bool round() override {
    lose_();
    return true;
  }

private:
  std::function<void()> lose_;
};

/// Falls asleep once all others are warm: it has as many rounds as that takes.
class Sleeper : public Activity {
public:
  bool round() override { return ++count_ <= kRoundsToWarmUp; }

private:
  int count_ = 0;
};

DWORD WINAPI sleepForEver(void *) {
  Sleep(INFINITE);
  return 0;
}

void loseThread() {
  HANDLE const thread =
      CreateThread(nullptr, 1 << 16, sleepForEver, nullptr, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  CloseHandle(thread);
}

/// Kept, so that the compiler cannot leave it out.
void * volatile lastBlock;

} // namespace

ActivityPtr leak(std::string const & what, Place const & place) {
  if (what == "rounds")
    return std::make_unique<Sleeper>();
  std::string const folder = place.folder;
  std::map<std::string, std::function<void()>> const ways = {
      {"handle", [] { CreateEventA(nullptr, TRUE, FALSE, nullptr); }},
      {"thread", loseThread},
      {"gdi", [] { CreatePen(PS_SOLID, 1, 0x010203); }},
      {"user", [] { CreatePopupMenu(); }},
      {"memory", [] { lastBlock = std::malloc(20'000); }},
      {"result", [] { expect(false, "lost on purpose"); }},
      {"file",
       [folder, count = 0]() mutable {
         support::writeFile(folder + "\\lost" + std::to_string(++count) + ".txt", "lost");
       }},
  };
  auto const found = ways.find(what);
  return found == ways.end() ? nullptr : std::make_unique<Leak>(found->second);
}

} // namespace endurance

#pragma once
/// \file
/// A desktop of the test's own, without a display: no other process has its windows there, no shell is started for it, and none of
/// its windows can take the keyboard from another test. What is broadcast there stays there.
///
///     struct ShellTest : private support::PrivateStation, public testing::Test {};   // before the test's first window
///     support::ChildProcess shell({.program = "tray_shell", .desktop = support::PrivateStation::name()});

#include "tools/winapi.hpp"

#include <stdexcept>
#include <string>

namespace support {

/// The first one moves this thread there, up to the end of the process. The thread must not have had windows before.
class PrivateStation {
public:
  PrivateStation() {
    static bool const moved = move();
    if (!moved)
      throw std::runtime_error("the system gives no window station");
  }

  /// Where a child process has to be started to be there too.
  static std::string name() { return stationName() + "\\private"; }

private:
  static std::string stationName() { return "kivara-test-" + std::to_string(GetCurrentProcessId()); }

  static bool move() {
    constexpr DWORD kAll = 0x000F037F; // of a window station; all of a desktop is less
    HWINSTA const station = CreateWindowStationA(stationName().c_str(), 0, kAll, nullptr);
    if (station == nullptr || !SetProcessWindowStation(station))
      return false;
    HDESK const desktop = CreateDesktopA("private", nullptr, nullptr, 0, GENERIC_ALL, nullptr);
    return desktop != nullptr && SetThreadDesktop(desktop);
  }
};

} // namespace support

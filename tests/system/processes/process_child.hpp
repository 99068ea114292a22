#pragma once
/// \file
/// What the tests of processes share: the program process_child, and how it reports what it was started with.

#include "aproc.hpp"
#include "support/data/files.hpp"
#include "support/memory/handles.hpp"
#include "support/processes/child_process.hpp"
#include "tools/winapi.hpp"

#include <cstdlib>
#include <optional>
#include <string>

namespace kivtest {

/// The full path of the program.
inline std::string childPath() { return support::binFolder() + "process_child.exe"; }

/// process_child with its words.
inline KivSynchronousProcess child(std::string const & words) {
  return {SV::String(childPath().c_str()), SV::String(words.c_str()), KIV_CMDSHOW_HIDE};
}

/// Waits as callers do, up to a minute.
inline long end(KivSynchronousProcess & process) {
  long result = -1;
  for (int i = 0; i < 60 && result == -1; ++i)
    result = process.Wait();
  return result;
}

/// While it lives, a process_child that is started writes down how.
class Facts {
public:
  Facts() { _putenv(("KIVARA_FACTS=" + folder_ / "facts.txt").c_str()); }
  Facts(Facts const &) = delete;
  Facts & operator=(Facts const &) = delete;
  ~Facts() { _putenv("KIVARA_FACTS="); }

  /// Waits for the child's facts, and forgets them for the next one.
  std::string take() {
    std::string const name = folder_ / "facts.txt";
    std::optional<std::string> text;
    // While the child still holds the file that it renames, the file is there and cannot be opened.
    if (!support::eventually([&] { return (text = support::readFile(name)).has_value(); }, 30))
      return "(no child wrote any)";
    DeleteFileA(name.c_str());
    return *text;
  }

  /// The value of one of them.
  static std::string value(std::string const & facts, std::string const & name) {
    std::size_t const start = facts.find(name + '=');
    if (start == std::string::npos)
      return "(none)";
    std::size_t const first = start + name.size() + 1;
    return facts.substr(first, facts.find('\n', first) - first);
  }
  std::string take(std::string const & name) { return value(take(), name); }

  /// Whether a child has written any that has not been taken.
  bool areThere() const { return support::exists(folder_ / "facts.txt"); }

private:
  support::TempFolder folder_;
};

/// An event that children wait for by its name, set at the end of the test in any case.
class Gate {
public:
  Gate()
      : name_("kivara-test-gate-" + std::to_string(GetCurrentProcessId())),
        event_(CreateEventA(nullptr, TRUE, FALSE, name_.c_str())) {}
  Gate(Gate const &) = delete;
  Gate & operator=(Gate const &) = delete;
  ~Gate() {
    open();
    CloseHandle(event_);
  }

  std::string const & name() const { return name_; }
  void open() { SetEvent(event_); }

private:
  std::string name_;
  HANDLE event_;
};

} // namespace kivtest

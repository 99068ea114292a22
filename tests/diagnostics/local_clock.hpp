#pragma once
/// \file
/// The local time as the libraries see it, set by a test. Under Wine the clock of the machine cannot be set for one process,
/// so their question to the system is answered here instead.

#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace kivtest {

/// The local time of the libraries for the rest of the process.
class LocalClock {
public:
  LocalClock() {
    for (char const * library : {"kivara.dll", "TL0105.dll"})
      support::replaceImports(GetModuleHandleA(library), "KERNEL32.dll",
                              {{"GetLocalTime", reinterpret_cast<void *>(answer)}});
  }

  /// 7:08:09 and 45 ms of that day.
  static void setDay(int year, int month, int day) {
    now = {};
    now.wYear = static_cast<WORD>(year);
    now.wMonth = static_cast<WORD>(month);
    now.wDay = static_cast<WORD>(day);
    now.wHour = 7;
    now.wMinute = 8;
    now.wSecond = 9;
    now.wMilliseconds = 45;
    questions = 0;
  }

  static inline SYSTEMTIME now = {};
  static inline int questions = 0;

private:
  static void WINAPI answer(SYSTEMTIME * time) {
    *time = now;
    ++questions;
  }
};

/// A test on 13 November 2026, in a working folder of its own.
class OnThe13th : public testing::Test {
protected:
  OnThe13th() { LocalClock::setDay(2026, 11, 13); }

private:
  LocalClock clock_;
};

} // namespace kivtest

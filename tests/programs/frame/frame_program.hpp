#pragma once
/// \file
/// What the child programs on the application frame share: a derived application as a product has one, whose behaviour
/// environment variables choose, so that the command line stays the test's own.
///
/// - KIVARA_RECORD: the file that record() appends to; without it nothing is recorded
/// - KIVARA_NAME: the application's name, "Child" without it
/// - KIVARA_GUI=0: a host without a user interface
/// - KIVARA_RESOURCES: the resource DLL that prepareApplication installs, "frame_texts.dll" without it; "none" for none
/// - KIVARA_PREPARE, KIVARA_RUN: what prepareApplication and runApplication return

#include "aapp.hpp"
#include "sv/resource.hpp"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

inline std::string setting(char const * name, char const * otherwise = "") {
  char const * const value = std::getenv((std::string("KIVARA_") + name).c_str());
  return value ? value : otherwise;
}

inline int number(char const * name) { return std::atoi(setting(name).c_str()); }

/// Appends a line to the record; each line is on disk when the call returns, however the process ends.
[[gnu::format(ms_printf, 1, 2)]] inline void record(char const * format, ...) {
  std::string const name = setting("RECORD");
  std::FILE * const file = name.empty() ? nullptr : std::fopen(name.c_str(), "ab");
  if (!file)
    return;
  std::va_list values;
  va_start(values, format);
  std::vfprintf(file, format, values);
  va_end(values);
  std::fputc('\n', file);
  std::fclose(file);
}

/// Derived classes add what happens in runApplication.
class FrameProgram : public KivMDIApplication {
public:
  FrameProgram() : KivMDIApplication(setting("NAME", "Child").c_str(), setting("GUI") != "0", "log_child") {}

  int prepareApplication() override {
    std::string const file = setting("RESOURCES", "frame_texts.dll");
    if (file != "none") {
      resources_ = std::make_unique<SV::ResMgr>(file.c_str());
      SV::Resource::SetResManager(resources_.get());
    }
    record("prepareApplication");
    return number("PREPARE");
  }

  int runApplication() override {
    record("runApplication");
    run();
    return number("RUN");
  }

  bool getMDIClientImage(SV::Image &, int &) override { return false; }

protected:
  virtual void run() {}

private:
  std::unique_ptr<SV::ResMgr> resources_;
};

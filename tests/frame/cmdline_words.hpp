/// Starts KivCmdline with words of a test.
#pragma once

#include "acmdline.hpp"

#include "frame/cmdline_getters.hpp"
#include "frame/heap_arguments.hpp"
#include "support/memory/allocation.hpp"

#include <memory>
#include <string>
#include <vector>

namespace kivtest {

using Words = std::vector<std::string>;

/// Arguments that live as long as the process, as those of a real start do, and end before pages without access.
inline HeapArguments & kept(Words const & words) {
  static support::GuardPages const guard;
  static std::vector<std::unique_ptr<HeapArguments>> all;
  return *all.emplace_back(std::make_unique<HeapArguments>(words));
}

inline KivCmdline const & initWords(Words const & words, bool withGUI = true, char const * logOptionName = "log") {
  auto const & arguments = kept(words);
  KivCmdline::init(arguments.argc(), arguments.argv(), withGUI, logOptionName);
  return KivCmdline::Instance();
}

/// init with a program's name, followed by these words.
inline KivCmdline const & initWith(Words words) {
  words.insert(words.begin(), "tool.exe");
  return initWords(words);
}

inline KivCmdline const & initWithoutGUI(Words words, char const * logOptionName = "log") {
  words.insert(words.begin(), "host.exe");
  return initWords(words, false, logOptionName);
}

inline std::string text(SV::String const & value) {
  return std::string(value.c_str(), static_cast<std::size_t>(value.Len()));
}

/// The words of the flags that are on, each followed by a blank.
inline std::string flagsThatAreOn() {
  std::string on;
  for (auto const & flag : kFlagGetters)
    if (flag.get())
      on += std::string(flag.word) + ' ';
  return on;
}

} // namespace kivtest

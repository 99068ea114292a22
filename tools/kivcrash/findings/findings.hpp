#pragma once
/// \file
/// All that the tool has to say of a crash, whatever form it is printed in.

#include "common/text.hpp"
#include "crash/crashfile.hpp"
#include "modules/modulefiles.hpp"
#include "symbols/debugsymbols.hpp"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kivcrash {

/// A line of a stack.
struct StackLine {
  std::uint64_t address = 0;
  std::string module;       ///< file name; empty where no module was
  std::uint64_t offset = 0; ///< from the module's beginning
  bool isReturn = false;
  bool isGuess = false;
  std::vector<Location> locations; ///< the inlined function first; empty where no symbols are
};

struct Stack {
  std::uint32_t thread = 0;
  bool isFailing = false;
  std::vector<StackLine> lines;
  std::string end; ///< why it ends too early; empty where it is whole
};

struct ModuleFacts {
  Module module;
  std::string file;         ///< that was used for it; empty: none
  std::string symbols;      ///< likewise
  bool isLookedFor = false; ///< only those of printed stacks are, and all where the modules are asked for
};

struct Fault {
  std::string name; ///< "ACCESS_VIOLATION"
  std::uint32_t code = 0;
  std::uint64_t address = 0;
  std::string module; ///< empty where no module was
  std::uint64_t offset = 0;
  std::string access; ///< "writing 0x10"; empty where it is none
};

struct Findings {
  std::vector<std::pair<std::string, std::string>> facts; ///< what the crash is of: names of facts and their values
  std::optional<Fault> fault;
  std::vector<std::string> plugins;
  std::vector<Stack> stacks; ///< that of the failing thread first
  std::vector<ModuleFacts> modules;
  std::string report; ///< plain, in UTF-8; empty where there is none
  Problems problems;
};

struct Wanted {
  bool allThreads = false;
  bool modules = false;
};

/// \param problems  what was found wrong with the file already
Findings find(CrashFile const & file, ModuleFiles & files, Wanted wanted, Problems problems);

} // namespace kivcrash

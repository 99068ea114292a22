#include "findings/findings.hpp"

#include "findings/facts.hpp"
#include "findings/stackwalk.hpp"

#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>

namespace kivcrash {
namespace {

/// The stacks of one crash, with names and lines.
class StackReader {
public:
  StackReader(Dump const & dump, ModuleFiles & files, Problems & problems)
      : dump_(dump), files_(files), problems_(problems), space_(dump, files) {}

  Stack read(Thread const & thread) {
    bool const isFailing = dump_.exception && dump_.exception->threadId == thread.id;
    std::optional<CONTEXT> const & fault = isFailing ? dump_.exception->context : thread.context;
    std::optional<CONTEXT> const & registers = fault ? fault : thread.context;
    Stack stack{thread.id, isFailing, {}, ""};
    if (!registers) {
      stack.end = "its registers are not known";
      return stack;
    }
    Walk const walk = walkStack(space_, *registers);
    for (Frame const & frame : walk.frames)
      stack.lines.push_back(line(frame));
    stack.end = walk.end;
    return stack;
  }

  /// Modules whose files were looked for.
  std::vector<std::uint64_t> const & used() const { return used_; }

private:
  StackLine line(Frame const & frame) {
    StackLine line{frame.address, "", 0, frame.isReturn, frame.isGuess, {}};
    Module const * const module = dump_.moduleAt(frame.address);
    if (!module)
      return line;
    line.module = fileName(module->path);
    line.offset = frame.address - module->base;
    // The call ends where the function returns to, and that may be in the next line or beyond the function.
    if (DebugSymbols * const symbols = symbolsOf(*module))
      line.locations = symbols->at(line.offset - (frame.isReturn ? 1 : 0));
    return line;
  }

  DebugSymbols * symbolsOf(Module const & module) {
    auto const known = symbols_.find(module.base);
    if (known != symbols_.end())
      return known->second.get();
    used_.push_back(module.base);
    FoundFile const & file = files_.file(module);
    FoundFile const & found = files_.symbols(module);
    tellOthers(file);
    tellOthers(found);
    tellMissing(module, file, found);
    std::unique_ptr<DebugSymbols> & symbols = symbols_[module.base];
    if (found.image)
      try {
        symbols = std::make_unique<DebugSymbols>(*found.image);
      } catch (std::runtime_error const & error) {
        problems_.push_back(toUtf8(found.path) + ": " + error.what());
      }
    return symbols.get();
  }

  void tellMissing(Module const & module, FoundFile const & file, FoundFile const & symbols) {
    if (!file.image && file.others.empty())
      problems_.push_back(module.path + ": no such file on this machine; --symbols names folders where it lies");
    auto const link = file.image && !symbols.image ? file.image->debugLink() : std::nullopt;
    if (link && symbols.others.empty())
      problems_.push_back(module.path + ": its debug symbols, " + link->name +
                          ", are not on this machine; --symbols names folders where they lie");
  }

  /// What is in the way matters only where nothing else was found.
  void tellOthers(FoundFile const & file) {
    if (!file.image)
      problems_.insert(problems_.end(), file.others.begin(), file.others.end());
  }

  Dump const & dump_;
  ModuleFiles & files_;
  Problems & problems_;
  AddressSpace space_;
  std::map<std::uint64_t, std::unique_ptr<DebugSymbols>> symbols_;
  std::vector<std::uint64_t> used_;
};

/// The failing thread first; without an exception, the first of all is the one that runs the program.
std::vector<Thread const *> threadsToShow(Dump const & dump, bool all) {
  std::vector<Thread const *> threads;
  Thread const * const failing = dump.exception ? dump.thread(dump.exception->threadId) : nullptr;
  if (failing)
    threads.push_back(failing);
  for (Thread const & thread : dump.threads)
    if (&thread != failing && (all || threads.empty()))
      threads.push_back(&thread);
  return threads;
}

ModuleFacts moduleFacts(Module const & module, ModuleFiles & files, bool isLookedFor) {
  ModuleFacts facts{module, "", "", isLookedFor};
  if (isLookedFor) {
    facts.file = toUtf8(files.file(module).path);
    facts.symbols = toUtf8(files.symbols(module).path);
  }
  return facts;
}

/// A frame whose walk went through a module without its file is as good as the guess.
void tellStack(Stack const & stack, Problems & problems) {
  std::string const name = "the stack of thread " + std::to_string(stack.thread);
  if (stack.lines.empty() || !stack.end.empty())
    problems.push_back(name + " is not whole: " + (stack.end.empty() ? "nothing of it can be read" : stack.end));
  else if (std::ranges::any_of(stack.lines, &StackLine::isGuess))
    problems.push_back(name + " has guesses in it, marked with ?: files of modules on the way are missing");
}

void addDump(Findings & findings, Dump const & dump, ModuleFiles & files, Wanted wanted) {
  StackReader reader(dump, files, findings.problems);
  for (Thread const * const thread : threadsToShow(dump, wanted.allThreads)) {
    findings.stacks.push_back(reader.read(*thread));
    tellStack(findings.stacks.back(), findings.problems);
  }
  for (Module const & module : dump.modules) {
    bool const isUsed = std::ranges::find(reader.used(), module.base) != reader.used().end();
    findings.modules.push_back(moduleFacts(module, files, isUsed || wanted.modules));
  }
  if (!dump.exception)
    findings.problems.emplace_back("the minidump has no exception: it was written without a crash, or is damaged");
}

} // namespace

Findings find(CrashFile const & file, ModuleFiles & files, Wanted wanted, Problems problems) {
  Findings findings;
  findings.problems = std::move(problems);
  findings.facts = factsOf(file);
  findings.fault = faultOf(file);
  findings.plugins = pluginsOf(file);
  if (file.report)
    findings.report = fromSystem(file.report->text);
  if (file.dump)
    addDump(findings, *file.dump, files, wanted);
  else
    findings.problems.emplace_back(
        "there is no minidump, so there is no stack: it is in the archive or beside the report");
  return findings;
}

} // namespace kivcrash

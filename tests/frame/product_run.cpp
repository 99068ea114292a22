#include "frame/product_run.hpp"

#include "support/data/lines.hpp"
#include "tools/winapi.hpp"

#include <algorithm>

namespace {

constexpr char kRecord[] = "record of the child.txt";

} // namespace

std::vector<std::string> linesOf(std::string const & text) { return support::linesOf(text); }

ProductRun::ProductRun(std::string const & program, std::string const & arguments, Settings const & settings)
    : ProductRun(support::ProgramStart{.program = program, .arguments = arguments}, settings) {}

ProductRun::ProductRun(support::ProgramStart start, Settings const & settings) {
  for (auto const & [name, value] : settings)
    start.environment["KIVARA_" + name] = value;
  start.environment["KIVARA_RECORD"] = path(kRecord);
  if (start.workingFolder.empty())
    start.workingFolder = folder_->path();
  child_ = std::make_unique<support::ChildProcess>(start);
}

std::vector<std::string> ProductRun::record() const { return linesOf(file(kRecord).value_or("")); }

bool ProductRun::waitForRecord(std::string const & line) const {
  bool found = false;
  support::eventually([&] {
    bool const last = !child_->running();
    std::vector<std::string> const lines = record();
    found = std::find(lines.begin(), lines.end(), line) != lines.end();
    return found || last;
  });
  return found;
}

std::string ProductRun::fact(std::string const & name) const {
  exitCode();
  for (std::string const & line : linesOf(child_->output()))
    if (line.starts_with(name + '='))
      return line.substr(name.size() + 1);
  return "(none)";
}

HWND ProductRun::box() const {
  HWND box = nullptr;
  support::eventually([&] {
    bool const last = !child_->running();
    auto const boxes = support::findWindows({.processId = child_->processId(), .className = support::kBoxClass});
    box = boxes.empty() ? nullptr : boxes.front();
    return box || last;
  });
  return box;
}

support::BoxTexts ProductRun::answerBox(std::string const & button) const {
  HWND const open = box();
  support::BoxTexts read = support::readBox(open);
  support::pressButton(open, button);
  support::waitUntilGone(open);
  return read;
}

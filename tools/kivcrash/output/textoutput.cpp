#include "output/textoutput.hpp"

#include <algorithm>

namespace kivcrash {
namespace {

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(text.size(), width), ' ');
  return text;
}

std::string placeText(Place const & place) {
  if (place.file.empty() && place.line == 0)
    return "";
  std::string const line = place.line == 0 ? "?" : std::to_string(place.line);
  return "  " + printable(place.file.empty() ? "?" : place.file) + ':' + line;
}

std::string moduleText(std::string const & module, std::uint64_t address, std::uint64_t offset) {
  return module.empty() ? hex(address, 16) : module + '+' + hex(offset);
}

std::string locationText(Location const & location) {
  return (location.function.empty() ? "(no name)" : printable(location.function)) + placeText(location.place);
}

/// An inlined function has a line of its own, and the address is on that of the function that has the code.
std::string stackLineText(StackLine const & line, std::size_t number) {
  std::string const where = moduleText(line.module, line.address, line.offset);
  std::string const sign = line.isGuess ? "? " : "  ";
  std::string text;
  for (std::size_t i = 0; i + 1 < line.locations.size(); ++i)
    text +=
        padded(i == 0 ? std::to_string(number) : "", 4) + sign + "(inlined)  " + locationText(line.locations[i]) + '\n';
  bool const isFirst = line.locations.size() < 2;
  text += padded(isFirst ? std::to_string(number) : "", 4) + sign + where;
  if (!line.locations.empty())
    text += "  " + locationText(line.locations.back());
  return text + '\n';
}

std::string stackText(Stack const & stack) {
  std::string text =
      "\nStack of thread " + std::to_string(stack.thread) + (stack.isFailing ? ", which failed" : "") + ":\n";
  for (std::size_t i = 0; i < stack.lines.size(); ++i)
    text += stackLineText(stack.lines[i], i);
  return stack.end.empty() ? text : text + "    (" + stack.end + ")\n";
}

std::string faultText(Fault const & fault) {
  std::string text = fault.name + " (" + hex(fault.code, 8) + ')';
  if (fault.address != 0 || !fault.module.empty())
    text += " at " + hex(fault.address, 16) +
            (fault.module.empty() ? ", where no module was" : ", " + fault.module + '+' + hex(fault.offset));
  return text + (fault.access.empty() ? "" : ", " + fault.access);
}

std::string modulesText(std::vector<ModuleFacts> const & modules) {
  std::string text = "\nModules:\n";
  for (ModuleFacts const & each : modules) {
    text += hex(each.module.base, 16) + "  ";
    text += padded(each.module.version.empty() ? "-" : each.module.version, 16) + ' ' + each.module.path + '\n';
    text += "    file:    " + (each.file.empty() ? "none that fits" : each.file) + '\n';
    text += "    symbols: " + (each.symbols.empty() ? "none" : each.symbols) + '\n';
  }
  return text;
}

} // namespace

std::string asText(Findings const & findings, bool withModules) {
  constexpr std::size_t kWidth = 20;
  std::string text;
  if (findings.fault)
    text += padded("what happened:", kWidth) + faultText(*findings.fault) + '\n';
  for (auto const & [name, value] : findings.facts)
    text += padded(name + ':', kWidth).append(value).append("\n");
  for (std::string const & plugin : findings.plugins)
    text += padded("plug-in:", kWidth) + plugin + '\n';
  for (Stack const & stack : findings.stacks)
    text += stackText(stack);
  return withModules ? text + modulesText(findings.modules) : text;
}

} // namespace kivcrash

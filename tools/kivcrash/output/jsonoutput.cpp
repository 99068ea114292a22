#include "output/jsonoutput.hpp"

#include <cstdio>

namespace kivcrash {
namespace {

std::string inQuotes(std::string const & text) {
  std::string result = "\"";
  for (char const c : validUtf8(text))
    if (c == '"' || c == '\\') {
      result += '\\';
      result += c;
    } else if (static_cast<unsigned char>(c) < ' ') {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(c)));
      result += escape;
    } else {
      result += c;
    }
  return result + '"';
}

char const * truth(bool value) { return value ? "true" : "false"; }

/// Members of an object, or elements of a list, one after the other.
class Members {
public:
  void add(std::string const & value) {
    text_ += text_.empty() ? "" : ", ";
    text_ += value;
  }
  void add(char const * name, std::string const & value) { add(inQuotes(name) + ": " + value); }
  /// Nothing where it is empty.
  void addText(char const * name, std::string const & value) {
    if (!value.empty())
      add(name, inQuotes(value));
  }
  std::string object() const { return "{" + text_ + "}"; }
  std::string list() const { return "[" + text_ + "]"; }

private:
  std::string text_;
};

template <class Values, class Form> std::string list(Values const & values, Form form) {
  Members members;
  for (auto const & value : values)
    members.add(form(value));
  return members.list();
}

std::string locationJson(Location const & location) {
  Members members;
  members.addText("function", location.function);
  members.addText("file", location.place.file);
  if (location.place.line != 0)
    members.add("line", std::to_string(location.place.line));
  return members.object();
}

std::string lineJson(StackLine const & line) {
  Members members;
  members.add("address", inQuotes(hex(line.address, 16)));
  if (!line.module.empty()) {
    members.add("module", inQuotes(line.module));
    members.add("offset", inQuotes(hex(line.offset)));
  }
  members.add("guess", truth(line.isGuess));
  members.add("locations", list(line.locations, locationJson));
  return members.object();
}

std::string stackJson(Stack const & stack) {
  Members members;
  members.add("thread", std::to_string(stack.thread));
  members.add("failing", truth(stack.isFailing));
  members.add("frames", list(stack.lines, lineJson));
  members.addText("end", stack.end);
  return members.object();
}

std::string moduleJson(ModuleFacts const & each) {
  Members members;
  members.add("path", inQuotes(each.module.path));
  members.add("base", inQuotes(hex(each.module.base, 16)));
  members.add("size", std::to_string(each.module.size));
  members.add("timeStamp", inQuotes(hex(each.module.timeStamp, 8)));
  members.addText("version", each.module.version);
  members.addText("file", each.file);
  members.addText("symbols", each.symbols);
  return members.object();
}

std::string faultJson(Fault const & fault) {
  Members members;
  members.add("name", inQuotes(fault.name));
  members.add("code", inQuotes(hex(fault.code, 8)));
  members.add("address", inQuotes(hex(fault.address, 16)));
  members.addText("module", fault.module);
  if (!fault.module.empty())
    members.add("offset", inQuotes(hex(fault.offset)));
  members.addText("access", fault.access);
  return members.object();
}

} // namespace

std::string asJson(Findings const & findings) {
  Members facts;
  Members members;
  for (auto const & [name, value] : findings.facts)
    facts.add(name.c_str(), inQuotes(value));
  members.add("facts", facts.object());
  if (findings.fault)
    members.add("fault", faultJson(*findings.fault));
  members.add("plugins", list(findings.plugins, inQuotes));
  members.add("stacks", list(findings.stacks, stackJson));
  members.add("modules", list(findings.modules, moduleJson));
  members.addText("report", findings.report);
  members.add("problems", list(findings.problems, inQuotes));
  return members.object() + "\n";
}

} // namespace kivcrash

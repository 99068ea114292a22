#include "options.hpp"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace endurance {
namespace {

/// Names with commas between them.
std::set<std::string> namesIn(std::string const & text) {
  std::set<std::string> names;
  std::istringstream in(text);
  for (std::string name; std::getline(in, name, ',');)
    names.insert(name);
  return names;
}

double secondsIn(std::string const & text) {
  char * end = nullptr;
  double const seconds = std::strtod(text.c_str(), &end);
  if (*end != '\0' || !(seconds >= 1))
    throw std::runtime_error("--seconds needs a number, 1 at least, not '" + text + "'");
  return seconds;
}

} // namespace

Options readOptions(int count, char ** words) {
  Options options;
  for (int i = 1; i < count; i += 2) {
    std::string const name = words[i];
    if (i + 1 == count)
      throw std::runtime_error(name + " needs a value");
    std::string const value = words[i + 1];
    if (name == "--seconds")
      options.seconds = secondsIn(value);
    else if (name == "--only")
      options.only = namesIn(value);
    else if (name == "--without")
      options.without = namesIn(value);
    else if (name == "--samples")
      options.samples = value;
    else if (name == "--leak")
      options.leak = value;
    else
      throw std::runtime_error("there is no option " + name);
  }
  return options;
}

} // namespace endurance

// Pages on a queue of the tests' print server.

#include "../activity.hpp"

#include "aprint.hpp"
#include "support/data/files.hpp"
#include "support/servers/printing.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace endurance {
namespace {

/// Where the print server puts what was printed, as Wine sees it; empty without one.
std::string printedFolder() {
  char const * const folder = std::getenv("KIVARA_PRINTED");
  if (folder == nullptr)
    return "";
  std::string path = std::string("Z:") + folder;
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

class Printing : public Activity {
public:
  ~Printing() override { Kiv_DeletePrinter(); }

  /// A job at a time: the server takes a second or more for each.
  bool round() override {
    if (isWaiting_ && queue_.jobCount() == 0)
      return false;
    if (isWaiting_)
      removePrinted();
    else
      print();
    isWaiting_ = !isWaiting_;
    return !isWaiting_;
  }

private:
  void print() {
    if (++count_ % 8 == 0)
      Kiv_DeletePrinter();
    if (Kiv_GetPrinter(false) == nullptr)
      Kiv_ReplacePrinter(new KivPrinter(queue_.name().c_str()));
    TextPrinter printer("endurance");
    expect(printer.Start(), "the printer has not begun");
    printer.PrintHeader("Endurance");
    printer.PrintLine("All is well.");
    printer.End();
  }

  void removePrinted() const {
    std::string const folder = printedFolder();
    for (std::string const & entry : support::entriesOf(folder))
      if (entry.starts_with(queue_.name() + '-'))
        std::remove((folder + '\\' + entry).c_str());
  }

  support::PrintQueue queue_;
  bool isWaiting_ = false;
  int count_ = 0;
};

} // namespace

ActivityPtr printPages(Place const &) { return printedFolder().empty() ? nullptr : std::make_unique<Printing>(); }

} // namespace endurance

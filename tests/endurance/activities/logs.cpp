// Logs that are written and turned over, named logs, and trace lines. One thread is the only one that uses them.

#include "../activity.hpp"

#include "alog.hpp"
#include "atrace.hpp"
#include "support/data/files.hpp"

#include <cstdio>

namespace endurance {
namespace {

constexpr int kBackups = 3;

class Logs : public Activity {
public:
  explicit Logs(Place const & place) : folder_(place.folder) {}

  bool round() override {
    std::scoped_lock const lock(filesInUse());
    std::string const file = path("server.log");
    std::string const date = "2024.01." + std::to_string(10 + ++count_ % 20);
    DeleteBackup(date);
    support::writeFile(file, date + ", 07:08:09: of that day\r\n");
    KivBasicFileLogger log(true, true, kBackups);
    expect(log.open(file.c_str(), true), "a log was not opened");
    expect(support::exists(path("server_" + date + ".log")), "a log was not turned over");
    for (int line = 0; line < 20; ++line)
      expect(log.addText("line %d", line), "a log has taken no line");
    expect(log.deleteFromDisc(), "a log was not deleted");
    Kiv_AddToLog(path("named.log").c_str(), "a line");
    Kiv_AddToCSVLog(path("named.csv").c_str(), ";a line");
    trace();
    removeBackups();
    return true;
  }

private:
  std::string path(std::string const & file) const { return folder_ + '\\' + file; }

  void DeleteBackup(std::string const & date) const { std::remove(path("server_" + date + ".log").c_str()); }

  /// So that each round ends with the files that it began with.
  void removeBackups() const {
    int kept = 0;
    for (std::string const & entry : support::entriesOf(folder_))
      if (entry.starts_with("server_")) {
        ++kept;
        std::remove(path(entry).c_str());
      }
    expect(kept >= 1 && kept <= kBackups, "another number of old logs was kept");
  }

  void trace() const {
    std::string const name = path("trace.txt");
    std::FILE * const file = std::fopen(name.c_str(), "wb");
    expect(file != nullptr, "there is no file for trace lines");
    Kiv_TraceSetHandle(file);
    Kiv_EnableTracing(true);
    Kiv_Trace("round %d", count_);
    Kiv_EnableTracing(false);
    Kiv_TraceSetHandle(nullptr);
    std::fclose(file);
    expect(support::readFile(name) == "round " + std::to_string(count_) + '\n', "a trace line is missing");
    std::remove(name.c_str());
  }

  std::string folder_;
  int count_ = 0;
};

} // namespace

ActivityPtr writeLogs(Place const & place) { return std::make_unique<Logs>(place); }

} // namespace endurance

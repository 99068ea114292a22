// Other programs, started with their output redirected, and waited for.

#include "../activity.hpp"

#include "aproc.hpp"
#include "support/data/files.hpp"

#include <cstdio>

namespace endurance {
namespace {

class Processes : public Activity {
public:
  explicit Processes(Place const & place)
      : output_(place.folder + "\\output.txt"), error_(place.folder + "\\error.txt") {}

  bool round() override {
    std::string const line =
        '"' + support::binFolder() + "process_child.exe\" out:hello err:alas exit:7 1>" + output_ + " 2>>" + error_;
    KivSynchronousProcess process(line.c_str(), "", KIV_CMDSHOW_HIDE);
    process.SetUseRedirection(true);
    start(process);
    long code = -1;
    while (code == -1)
      code = process.Wait();
    expect(code == 7, "a program has ended with another code");
    expect(support::readFile(output_) == "hello" && support::readFile(error_) == "alas", "no output has come");
    std::remove(output_.c_str());
    std::remove(error_.c_str());
    KivSynchronousProcess const refused("no_such_program.exe", "", KIV_CMDSHOW_HIDE);
    expect(!KivSynchronousProcess(refused).Execute(false), "no program was started");
    return true;
  }

private:
  static void start(KivSynchronousProcess & process) {
    std::scoped_lock const lock(filesInUse());
    expect(process.Execute(false), "a program was not started");
  }

  std::string output_;
  std::string error_;
};

} // namespace

ActivityPtr startProcesses(Place const & place) { return std::make_unique<Processes>(place); }

} // namespace endurance

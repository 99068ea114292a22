// Runs until the system's theme changes and records every change of the system's settings on its way.

#include "frame_program.hpp"

namespace {

class ChangesProgram : public FrameProgram {
  void SysChange(SV::SysChangeType type) override {
    FrameProgram::SysChange(type);
    record("change %d", type);
    if (type == SV::SYSCHANGE_THEME)
      Quit();
  }

  void run() override {
    record("waiting");
    Execute();
  }
};

ChangesProgram program;

} // namespace

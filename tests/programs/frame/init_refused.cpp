// Takes the name of one of the toolkit's window classes before the toolkit does, so that it cannot come up.

#include "frame_program.hpp"

#include "tools/winapi.hpp"

namespace {

class RefusedProgram : public FrameProgram {
public:
  RefusedProgram() {
    WNDCLASSA description{};
    description.lpfnWndProc = DefWindowProcA;
    description.hInstance = GetModuleHandleA(nullptr);
    description.lpszClassName = "SV0105.Listener";
    record(RegisterClassA(&description) ? "taken" : "not taken");
  }
};

RefusedProgram program;

} // namespace

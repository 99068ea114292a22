// A product with a main window titled "Product", which runs until the window is closed. It records whether the window is
// visible. KIVARA_CODE: a severe exception with that code once the window is there.

#include "frame_program.hpp"

#include "sv/window.hpp"

namespace {

class WindowProgram : public FrameProgram {
public:
  ~WindowProgram() override { record("destroyed"); }

private:
  void run() override {
    SV::Window window(nullptr, SV::WB_TITLE);
    window.SetText("Product");
    window.ChangeOutputSizePixel({300, 200});
    SetAppWindow(&window);
    window.Show();
    record("visible %d", window.IsVisible());
    if (int const code = number("CODE"))
      Exception(code, 0);
    Execute();
  }
};

WindowProgram program;

} // namespace

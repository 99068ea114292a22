#include "kivara.hpp"

#include "sv/sv.hpp"

class Pane : public SV::Window {
public:
  explicit Pane(SV::Window * parent);
  ~Pane() override;
  void Paint(SV::OutputDevice & device, SV::Rectangle const & area) override;

private:
  bool active_ = false;
  bool hot_ = false;
  bool pressed_ = false;
};

//[[1]]

void addToMenu(SV::String const & name);

void themes() {
  //[[2]]
}

void visualStyles(SV::Window & window, SV::Rectangle const & bar) {
  //[[3]]
}

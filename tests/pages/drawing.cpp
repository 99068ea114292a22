#include "kivara.hpp"

#include "sv/sv.hpp"
#include "tools/winapi.hpp"

class Pane : public SV::Window {
public:
  //[[1]]
};

void withTheSystem(SV::Window & window) {
  //[[2]]
}

void pictures(SV::OutputDevice & device) {
  //[[3]]
}

void visualStyles(SV::Window & window) {
  //[[4]]
}

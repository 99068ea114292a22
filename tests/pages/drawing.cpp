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

class Buffered : public SV::Window {
public:
  //[[4]]
};

class Modeler : public KivMDIApplication {
public:
  Modeler() : KivMDIApplication("Modeler", true, "") {}
  int prepareApplication() override { return 0; }
  int runApplication() override;
  bool getMDIClientImage(SV::Image & image, int & mode) override;
};

//[[5]]

void visualStyles(SV::Window & window) {
  //[[6]]
}

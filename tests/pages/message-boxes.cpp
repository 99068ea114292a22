#include "kivara.hpp"

class Frame : public SV::Window {
  void readAgain();
  void read() {
    //[[1]]
  }
};

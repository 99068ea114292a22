#include "kivara.hpp"

void offer(SV::String const & instance, long version);
void askForAnotherProof();
void start();
struct Licence {
  SV::String machine;
};

void servers() {
  //[[1]]
}

void theMachine(Licence const & licence) {
  //[[2]]
}

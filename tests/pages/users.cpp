#include "kivara.hpp"

void connect(SV::String const & user, SV::String const & password);
void signOn(SV::String const & user, SV::String const & domain);
void refuse();

void accounts(char * typedPassword) {
  //[[1]]
}

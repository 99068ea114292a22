// A module that has a self check of its own and calls one that it is given.

#include "aselfchk.hpp"

extern "C" __declspec(dllexport) void callCheck(KivSelfCheck const & check) {
  KivSelfCheck const own(check);
  own();
  check();
}

#include "diagnostics/empty_call.hpp"

void emptyCall() {}

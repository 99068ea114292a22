#include "kivara.hpp"

//[[1]]

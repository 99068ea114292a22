#include "kivara.hpp"

#include "sv/sv.hpp"

namespace {

//[[1]]

//[[2]]

//[[3]]

} // namespace

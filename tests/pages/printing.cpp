#include "kivara.hpp"

namespace {

//[[1]]

} // namespace

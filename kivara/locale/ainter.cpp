#include "locale/ainter_state.hpp"

namespace kivara {

bool loadingResourceFile = false;

} // namespace kivara

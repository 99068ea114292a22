#include "tools/object.hpp"

namespace SV {

LinkHdl::~LinkHdl() = default;

} // namespace SV

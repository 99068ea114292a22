#include "sv/imagepool.hpp"

#include "application/toolkit.hpp"

namespace SV {

void ImagePool::SetPoolFile(String const & fileName) { detail::toolkit().poolFile = fileName; }

String const & ImagePool::GetPoolFile() { return detail::toolkit().poolFile; }

} // namespace SV

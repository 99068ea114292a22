#include "sv/imagepool.hpp"

#include "application/toolkit.hpp"

namespace SV {

using detail::toolkit;

void ImagePool::SetPoolFile(String const & fileName) { toolkit().pictures.setFile(fileName); }

String const & ImagePool::GetPoolFile() { return toolkit().pictures.file(); }

Image ImagePool::GetImage(String const & name) { return toolkit().pictures.get(name); }

} // namespace SV

#include "sv/image.hpp"

namespace SV {

Image::Image() = default;

Image::Image(Bitmap const & bitmap) : bitmap_(bitmap) {}

Image::Image(ResId const & id) : bitmap_(id) {}

} // namespace SV

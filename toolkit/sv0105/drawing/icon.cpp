#include "sv/icon.hpp"

#include "handles/handle.hpp"
#include "resources/loading.hpp"

namespace SV {
namespace {

char const * systemName(IconStyle style) {
  switch (style) {
  case ICON_STYLE_INFO: return IDI_INFORMATION;
  case ICON_STYLE_QUERY: return IDI_QUESTION;
  case ICON_STYLE_ERROR: return IDI_ERROR;
  case ICON_STYLE_WARNING: return IDI_WARNING;
  default: return nullptr;
  }
}

std::shared_ptr<HICON__> owned(HICON icon) {
  return icon ? std::shared_ptr<HICON__>(icon, DestroyIcon) : std::shared_ptr<HICON__>();
}

} // namespace

Icon::Icon() = default;

Icon::Icon(ResId const & id) {
  detail::loadWithRetry(id, [&](ResMgr const & manager) {
    if (manager.GetModule())
      icon_ = owned(static_cast<HICON>(
          LoadImageA(manager.GetModule(), MAKEINTRESOURCEA(id.GetNumber()), IMAGE_ICON, 0, 0, LR_DEFAULTSIZE)));
    return icon_ != nullptr;
  });
}

Icon::Icon(IconStyle style) {
  char const * const name = systemName(style);
  // The system's own icons are shared by all and never deleted.
  if (HICON const icon = name ? LoadIconA(nullptr, name) : nullptr)
    icon_ = std::shared_ptr<HICON__>(icon, [](HICON) {});
}

Icon::Icon(HICON icon) : icon_(owned(icon)) {}

Size Icon::GetSizePixel() const {
  ICONINFO info = {};
  if (!icon_ || !GetIconInfo(icon_.get(), &info))
    return {};
  handles::BitmapObject const mask(info.hbmMask);
  handles::BitmapObject const colors(info.hbmColor);
  BITMAP picture = {};
  GetObjectA(colors ? colors.get() : mask.get(), sizeof picture, &picture);
  // Without colours, both halves of the mask lie one below the other.
  return {picture.bmWidth, colors ? picture.bmHeight : picture.bmHeight / 2};
}

} // namespace SV

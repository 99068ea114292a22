// Small images: in the look of the system, or our own.

#include "atheme_manager.hpp"
#include "base/pictureids.hpp"
#include "sv/imagepool.hpp"
#include "sv/virtualdevice.hpp"
#include "sv/visualstyles.hpp"
#include "ui/themes/themehandle.hpp"

#include <utility>

using SV::Image;

namespace {

// Parts and states of the visual styles "Button" and "TreeView"
constexpr int kCheckBox = 3;
constexpr int kUnchecked = 1;
constexpr int kChecked = 5;
constexpr int kMixed = 9;
constexpr int kGlyph = 2;
constexpr int kClosed = 1;
constexpr int kOpen = 2;

constexpr SV::Size kImageSize = {16, 16};

/// Images of one part of a visual style, over one colour.
class StyledImages {
public:
  StyledImages(void * theme, int part, SV::ColorName background, SV::ImageMask mask)
      : theme_(theme), part_(part), background_(background), mask_(mask), device_(32) {
    device_.ChangeBackgroundBrush(SV::Brush(background));
  }

  Image * make(int state) {
    device_.SetOutputSizePixel(kImageSize);
    SV::CVisualStylesXP::DrawThemeBackground(theme_, device_.GethDC(), part_, state, SV::Rectangle(1, 1, 14, 14));
    return new Image(device_.GetBitmap({0, 0}, kImageSize), mask_, background_);
  }

private:
  void * theme_;
  int part_;
  SV::ColorName background_;
  SV::ImageMask mask_;
  SV::VirtualDevice device_;
};

/// These images are in the look of the system even where the drawings of the themes are not.
kivara::ThemeHandle openWithoutWindow(char const * classes) {
  return kivara::ThemeHandle(KivThemeManager::IsThemed() ? SV::CVisualStylesXP::OpenThemeData(nullptr, classes)
                                                         : nullptr);
}

Image * fromPool(char const * name) { return new Image(SV::ImagePool::GetImage(name)); }

Image * fromResource(unsigned long id) { return new Image(SV::ResId(id)); }

void forget(Image *& image) { delete std::exchange(image, nullptr); }

} // namespace

Image const & KivThemeManager::GetCheckBoxIconImg(bool checked) {
  if (checkBoxOnImage == nullptr) {
    if (kivara::ThemeHandle const theme = openWithoutWindow("Button")) {
      StyledImages images(theme.get(), kCheckBox, SV::COL_MAGENTA, SV::IMAGE_MASK_COLOR);
      checkBoxOffImage = images.make(kUnchecked);
      checkBoxOnImage = images.make(kChecked);
    } else {
      checkBoxOffImage = fromPool("selbox/chkbox0.png");
      checkBoxOnImage = fromPool("selbox/chkbox1.png");
    }
  }
  return checked ? *checkBoxOnImage : *checkBoxOffImage;
}

Image const & KivThemeManager::GetMixedCheckBoxIconImg() {
  if (mixedCheckBoxImage == nullptr) {
    if (kivara::ThemeHandle const theme = openWithoutWindow("Button"))
      mixedCheckBoxImage = StyledImages(theme.get(), kCheckBox, SV::COL_MAGENTA, SV::IMAGE_MASK_COLOR).make(kMixed);
    else
      mixedCheckBoxImage = fromPool("selbox/chkbox2.png");
  }
  return *mixedCheckBoxImage;
}

Image const & KivThemeManager::GetTreeGlyphImg(bool open) {
  if (treeGlyphOpenImage == nullptr) {
    if (kivara::ThemeHandle const theme = openWithoutWindow("TreeView")) {
      StyledImages images(theme.get(), kGlyph, SV::COL_WHITE, SV::IMAGE_MASK_NONE);
      treeGlyphClosedImage = images.make(kClosed);
      treeGlyphOpenImage = images.make(kOpen);
    } else {
      treeGlyphClosedImage = fromResource(kivara::pictures::kTreeGlyphClosed);
      treeGlyphOpenImage = fromResource(kivara::pictures::kTreeGlyphOpen);
    }
  }
  return open ? *treeGlyphOpenImage : *treeGlyphClosedImage;
}

void KivThemeManager::Clear() {
  forget(checkBoxOffImage);
  forget(checkBoxOnImage);
  forget(mixedCheckBoxImage);
  forget(treeGlyphClosedImage);
  forget(treeGlyphOpenImage);
}

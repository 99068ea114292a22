#include "frame/appfont.hpp"

#include "acmdline.hpp"
#include "aplatfrm.hpp"
#include "sv/application.hpp"
#include "sv/font.hpp"

using SV::String;

namespace kivara {
namespace {

String fontFace() {
  String const asked = KivCmdline::Instance().getFontFace();
  if (asked.Len() != 0)
    return asked;
  return Kiv_IsAtLeastWindowsVista() ? "Segoe UI" : "MS Sans Serif";
}

} // namespace

void installApplicationFont() {
  int const height = fontPixelHeight(KivCmdline::Instance().getFontHeight(), Kiv_GetSystemDPIScaleY());
  SV::Font font(fontFace(), SV::Size{0, height});
  font.ChangeColor(SV::COL_WINDOWTEXT);
  font.ChangeFillColor(SV::COL_WINDOW);
  font.ChangeTransparent(true);
  SV::Application::ChangeAppFont(font);
}

} // namespace kivara

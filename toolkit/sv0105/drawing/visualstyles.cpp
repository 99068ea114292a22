#include "sv/visualstyles.hpp"

#include "drawing/limits.hpp"
#include "sv/application.hpp"
#include "tools/winapi.hpp"

#include <uxtheme.h>
#include <vector>

namespace SV {

namespace {

std::vector<wchar_t> wideOf(String const & text) {
  std::vector<wchar_t> wide(static_cast<std::size_t>(text.Len()) + 1);
  MultiByteToWideChar(CP_ACP, 0, text.c_str(), text.Len(), wide.data(), text.Len());
  return wide;
}

} // namespace

CVisualStylesXP & Application::GetVisualStylesXP() {
  static CVisualStylesXP styles;
  return styles;
}

bool CVisualStylesXP::IsAppThemed() { return ::IsAppThemed() != FALSE; }

void * CVisualStylesXP::OpenThemeData(HWND window, String const & classes) {
  return ::OpenThemeData(window, wideOf(classes).data());
}

bool CVisualStylesXP::CloseThemeData(void * theme) { return theme && SUCCEEDED(::CloseThemeData(theme)); }

bool CVisualStylesXP::DrawThemeBackground(void * theme, HDC device, int part, int state, Rectangle const & area) {
  if (!theme || area.IsEmpty())
    return false;
  RECT const edges = detail::systemArea(area);
  return SUCCEEDED(::DrawThemeBackground(theme, device, part, state, &edges, nullptr));
}

} // namespace SV

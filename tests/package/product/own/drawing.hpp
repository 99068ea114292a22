#pragma once
// What a source of the product does with names that the platform's header has macros for. It is compiled in two orders of headers.

#include <tools/string.hpp>

/// Draws a text of the resources, and the same by the system itself. Whether both could.
static bool drawsTitle() {
  HDC const context = CreateCompatibleDC(nullptr);
  SV::String const title = SV::Resource::LoadString(SV::ResId(0x2000001, KivInternational::getNextResMgr()));
  {
    SV::OutputDevice device(context);
    device.DrawText({0, 0}, title);
  }
  RECT area = {0, 0, 100, 100};
  bool const drawn = DrawTextA(context, title.c_str(), title.Len(), &area, DT_LEFT) > 0;
  DeleteDC(context);
  return drawn;
}

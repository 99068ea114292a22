#include "controls/controlspec.hpp"

namespace SV::detail {
namespace {

constexpr WORD kFirstId = 100; // the system's own are below
constexpr WORD kLastId = 0x7FFF;

WORD nextId() {
  static WORD id = kLastId;
  id = id < kLastId ? static_cast<WORD>(id + 1) : kFirstId;
  return id;
}

} // namespace

WindowSpec controlSpec(char const * className, Window * parent, WinBits style, DWORD system, WORD id) {
  DWORD all = WS_CHILD | WS_CLIPSIBLINGS | system;
  if (style & WB_BORDER)
    all |= WS_BORDER;
  if (style & WB_GROUP)
    all |= WS_GROUP;
  WindowSpec spec{className, all, 0, parent, true};
  spec.id = id != 0 ? id : nextId();
  return spec;
}

} // namespace SV::detail

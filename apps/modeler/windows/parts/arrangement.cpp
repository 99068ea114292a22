#include "windows/parts/arrangement.hpp"

#include <algorithm>

namespace modeler {

Arrangement arrange(SV::Size const & frame, PartSizes const & sizes) {
  long const top = std::min(sizes.toolBar, frame.height);
  long const status = std::min(sizes.statusBar, frame.height - top);
  long const height = frame.height - top - status;
  long const panes = sizes.hasOutline || sizes.hasNotes ? std::min(sizes.panes, frame.width / 2) : 0;
  // Outlines are longer than notes.
  long const outline = !sizes.hasOutline ? 0 : sizes.hasNotes ? height * 3 / 5 : height;
  long const notes = sizes.hasNotes ? height - outline : 0;
  return {{{0, 0}, {frame.width, top}},
          {{0, frame.height - status}, {frame.width, status}},
          {{0, top}, {sizes.hasOutline ? panes : 0, outline}},
          {{0, top + outline}, {sizes.hasNotes ? panes : 0, notes}},
          {{panes, top}, {frame.width - panes, height}}};
}

KeyboardPlace nextPlace(KeyboardPlace now, bool hasOutline, bool hasNotes) {
  if (now == KeyboardPlace::Documents && hasOutline)
    return KeyboardPlace::Outline;
  return now != KeyboardPlace::Notes && hasNotes ? KeyboardPlace::Notes : KeyboardPlace::Documents;
}

} // namespace modeler

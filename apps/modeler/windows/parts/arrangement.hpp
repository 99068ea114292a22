#pragma once
/// \file
/// Where the parts of the main window stand.

#include "sv/geometry.hpp"

namespace modeler {

/// The parts that are shown, by what they need of the main window in pixels; 0 for one that is hidden.
struct PartSizes {
  long toolBar = 0;   ///< height
  long statusBar = 0; ///< height
  long panes = 0;     ///< width of both
  bool hasOutline = false;
  bool hasNotes = false;
};

struct Arrangement {
  SV::Rectangle toolBar;
  SV::Rectangle statusBar;
  SV::Rectangle outline;
  SV::Rectangle notes;
  SV::Rectangle documents;
};

/// The tool bar at the top, the status bar at the bottom, the panes one above the other at the left, the documents in what is
/// left. A part that is hidden, or has no room, is empty.
Arrangement arrange(SV::Size const & frame, PartSizes const & sizes);

/// Who can have the keyboard.
enum class KeyboardPlace { Documents, Outline, Notes };

/// Who has it next: from the documents to the outline, to the notes, and back, without those that are hidden.
KeyboardPlace nextPlace(KeyboardPlace now, bool hasOutline, bool hasNotes);

} // namespace modeler

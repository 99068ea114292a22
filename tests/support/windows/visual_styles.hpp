#pragma once
/// \file
/// Visual styles of the system, switched off for this process alone.
///
///     class WithoutStyles : support::VisualStylesOff, public ToolkitTest {};  // before the first window

namespace support {

/// Has to come before anything that loads the system's library for them, such as a window. Styles stay off for the rest of
/// the process; no other one, and nothing that stays in the registry, is changed.
class VisualStylesOff {
public:
  explicit VisualStylesOff(bool off = true); ///< false: does nothing
};

} // namespace support

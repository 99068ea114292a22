#pragma once
/// \file
/// By keyboard what the mouse does by dragging: an activity's text goes from a model to the start window.

#include "commands/models/documents.hpp"
#include "windows/documents/textdrag.hpp"

#include <utility>

namespace modeler {

class DragCommands {
public:
  /// \param frame, documents  outlive it
  /// \param target            shows the window that takes the text, and gives it
  DragCommands(SV::MDIFrame & frame, Documents & documents, std::function<TextTarget &()> target)
      : frame_(frame), documents_(documents), target_(std::move(target)) {}

  /// Copying, with Ctrl+C, and pasting, with Ctrl+V.
  Commands GetCommands();

private:
  void copy();
  void paste();

  SV::MDIFrame & frame_;
  Documents & documents_;
  std::function<TextTarget &()> target_;
};

} // namespace modeler

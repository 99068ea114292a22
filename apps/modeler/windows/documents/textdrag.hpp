#pragma once
/// \file
/// A text that is dragged from one window of the program to another.

#include "kivara.hpp"
#include "sv/window.hpp"

namespace modeler {

/// A window on which texts can be dropped.
class TextTarget {
public:
  virtual ~TextTarget() = default;
  virtual void TakeText(SV::String const & text) = 0;
};

/// What a window that texts are dragged from does with the mouse. It passes on what it learns of the mouse.
class TextDrag {
public:
  /// \param source  outlives this object
  explicit TextDrag(SV::Window & source) : source_(source) {}
  TextDrag(TextDrag const &) = delete;
  TextDrag & operator=(TextDrag const &) = delete;
  ~TextDrag() { Cancel(); }

  /// The left button went down on a text; the empty one: on none.
  void Press(SV::Point const & position, SV::String const & text);
  /// The drag begins as soon as the mouse is so far away that this can be no click.
  void Move(SV::MouseEvent const & event);
  /// The left button went up: whatever lies there gets the text, if it takes texts.
  void Release(SV::Point const & position);
  /// Escape, or the mouse has been taken away. False: nothing was dragged.
  bool Cancel();

private:
  bool isFarEnough(SV::Point const & position) const;
  TextTarget * targetAt(SV::Point const & position) const;

  SV::Window & source_;
  SV::String text_; ///< under the mouse where the button went down
  SV::Point pressed_;
  bool isDragging_ = false;
};

} // namespace modeler

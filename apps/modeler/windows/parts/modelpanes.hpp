#pragma once
/// \file
/// What the panes show of the model in front: its nodes, and the notes on it.

#include "model/processmodel.hpp"
#include "windows/parts/pane.hpp"

namespace modeler {

/// The model in front, or null.
using FrontModel = std::function<ProcessModel const *()>;

/// The nodes below the name of the model, each with a check mark if its file says how long it takes; the mark of the name is that
/// of all. A click on the name, or the keys to the left and to the right, fold them up.
class OutlinePane : public Pane {
public:
  OutlinePane(SV::Window & frame, FrontModel front, Handlers const & handlers);

  bool KeyInput(SV::KeyEvent const & event) override;

protected:
  ISequence<Line> lines() const override;
  void PressLine(std::size_t line) override;

private:
  void setOpen(bool isOpen);

  FrontModel front_;
  bool isOpen_ = true;
};

/// The date of the model, and its paths with their sums.
class NotesPane : public Pane {
public:
  NotesPane(SV::Window & frame, FrontModel front, Handlers const & handlers);

protected:
  ISequence<Line> lines() const override;

private:
  FrontModel front_;
};

} // namespace modeler

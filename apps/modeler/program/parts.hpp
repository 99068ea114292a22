#pragma once
/// \file
/// What stands around the documents in the main window: tool bar, panes, status bar.

#include "background/settings.hpp"
#include "commands/command.hpp"
#include "commands/models/documents.hpp"
#include "windows/parts/arrangement.hpp"
#include "windows/parts/modelpanes.hpp"
#include "windows/parts/statusbar.hpp"
#include "windows/parts/toolbar.hpp"

#include "sv/mdi.hpp"

namespace modeler {

/// It arranges them, shows and hides them, and keeps that from run to run.
class Parts {
public:
  /// \param changed  called when a part is shown or hidden other than by a command
  Parts(SV::MDIFrame & frame, Documents const & documents, Settings const & settings, std::function<void()> changed);
  ~Parts();

  /// To show and hide each part.
  Commands GetCommands();

  /// The tool bar gets these buttons. Before the window is shown.
  void MakeToolBar(ISequence<ToolButton> buttons);

  /// To be called when the main window has another size, and when the font is another one.
  void Arrange();

  /// To be called when another model is in front, the language has changed, or what a button shows.
  void Refresh();

  /// Whether it is on: checked in the menu and in the tool bar.
  bool IsShown(SV::Window const & part) const;

private:
  struct Part {
    SV::Window * window;
    char const * setting;
  };

  Command commandFor(unsigned short id, Text name, Part const & part);
  void add(SV::Window & window, char const * setting);
  void show(Part const & part, bool isShown);
  void giveKeyboardBack() const;
  KeyboardPlace keyboardPlace() const;
  void focusNext() const;

  SV::MDIFrame & frame_;
  Settings const & settings_;
  std::function<void()> changed_;
  OutlinePane outline_;
  NotesPane notes_;
  StatusBar statusBar_;
  std::unique_ptr<ToolBar> toolBar_;
  ISequence<Part> parts_;
};

} // namespace modeler

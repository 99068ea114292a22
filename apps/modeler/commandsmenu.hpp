#pragma once
/// \file
/// The menu of the commands that script plug-ins offer.

#include "kivara.hpp"
#include "sv/menu.hpp"

namespace modeler {

/// Stands before the last menu of the bar, or nowhere where there are no commands.
class CommandsMenu {
public:
  /// Items of the menu and its place in the bar.
  static constexpr unsigned short kMenu = 6;
  static constexpr unsigned short kFirst = 1001;

  /// \param bar  outlives the menu
  CommandsMenu(SV::MenuBar & bar, ISequence<SV::String> const & commands);
  CommandsMenu(CommandsMenu const &) = delete;
  CommandsMenu & operator=(CommandsMenu const &) = delete;
  ~CommandsMenu();

  /// The command of an item; empty when the item is none of these.
  SV::String CommandOf(unsigned short item) const;

  /// Sets the text of the menu again, in the current language.
  void Retext();

private:
  SV::MenuBar & bar_;
  ISequence<SV::String> const commands_;
  SV::PopupMenu menu_;
};

} // namespace modeler

#pragma once
/// \file
/// The commands that script plug-ins offer.

#include "background/plugins.hpp"
#include "commands/menus.hpp"
#include "commands/models/documents.hpp"

namespace modeler {

class PluginCommands {
public:
  /// Adds their menu, where there are any. All arguments outlive it.
  PluginCommands(SV::MDIFrame & frame, Menus & menus, Plugins const & plugins, Documents const & documents,
                 Journal & journal);

private:
  void execute(SV::String const & command);

  SV::MDIFrame & frame_;
  Plugins const & plugins_;
  Documents const & documents_;
  Journal & journal_;
};

} // namespace modeler

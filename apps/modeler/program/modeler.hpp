#pragma once
/// \file
/// The modelling program on the library.

#include "background/eventlog.hpp"
#include "background/journal.hpp"
#include "background/plugins.hpp"
#include "background/settings.hpp"
#include "kivara.hpp"

namespace modeler {

class Modeler : public KivMDIApplication {
public:
  Modeler();
  ~Modeler() override;

  /// Loads the texts and the plug-ins; 1 when there are no texts.
  int prepareApplication() override;

  /// Opens the main window, with the process model that "-model" names, and serves it until the user closes it. Under window suppression there is nothing to serve:
  /// it then ends once all is set up. With "-xml" it writes the model to the file of that name instead; 1 when that fails.
  int runApplication() override;

  /// The picture behind the windows, which the build has drawn.
  bool getMDIClientImage(SV::Image & image, int & mode) override;

  /// The picture follows the size of the screen.
  void SysChange(SV::SysChangeType type) override;

private:
  EventLog events_;
  Journal journal_;
  Plugins plugins_;
};

} // namespace modeler

#include "modeler.hpp"

#include "atrace.hpp"
#include "mainwindow.hpp"
#include "startupphase.hpp"

namespace modeler {

Modeler::Modeler() : KivMDIApplication("Modeler", true, "log_dialogs") {}

Modeler::~Modeler() = default;

int Modeler::prepareApplication() {
  StartupPhaseEvent("[kiv] Loading the texts").trigger();
  // JOIN ainter: createResourceManager("kivara", true), which finds the language by itself
  texts_ = std::make_unique<SV::ResMgr>("language\\2057\\kivara72.dll");
  Kiv_Trace("texts of %s: %s", texts_->GetFileName().c_str(), texts_->IsLoaded() ? "loaded" : "missing");
  if (!texts_->IsLoaded())
    return 1;
  SV::Resource::SetResManager(texts_.get());
  return 0;
}

int Modeler::runApplication() {
  StartupPhaseEvent("[kiv] Opening the main window").trigger();
  MainWindow window(events_);
  window.Show();
  appInitialized = true;
  InitializedEvent().trigger();
  KivDebugOut("[kiv] Main window shown\n");
  if (IsShowWindowSuppression())
    Quit();
  return Execute();
}

bool Modeler::getMDIClientImage(SV::Image &, int &) { return false; }

namespace {

Modeler theModeler;

} // namespace
} // namespace modeler

#include "modeler.hpp"

#include "mainwindow.hpp"

namespace modeler {

Modeler::Modeler() : KivMDIApplication("Modeler", true, "log_dialogs") {}

Modeler::~Modeler() = default;

int Modeler::prepareApplication() {
  // JOIN ainter: createResourceManager("kivara", true), which finds the language by itself
  texts_ = std::make_unique<SV::ResMgr>("language\\2057\\kivara72.dll");
  if (!texts_->IsLoaded())
    return 1;
  SV::Resource::SetResManager(texts_.get());
  return 0;
}

int Modeler::runApplication() {
  MainWindow window;
  window.Show();
  appInitialized = true;
  if (IsShowWindowSuppression())
    Quit();
  return Execute();
}

bool Modeler::getMDIClientImage(SV::Image &, int &) { return false; }

namespace {

Modeler theModeler;

} // namespace
} // namespace modeler

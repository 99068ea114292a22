#include "program/modeler.hpp"

#include "acmdline.hpp"
#include "atrace.hpp"
#include "background/startupphase.hpp"
#include "model/writing/modelxml.hpp"
#include "program/mainwindow.hpp"
#include "sv/imagepool.hpp"
#include "texts/modelreport.hpp"

#include <cstdio>

using SV::String;

namespace modeler {

namespace {

/// Writes a model as XML instead of showing it.
/// \return the exit code
int exportModel(String const & model, String const & file) {
  ProcessModel process;
  ModelReport report;
  if (!readProcessModel(model, process, report)) {
    std::fprintf(stderr, "%s\n", reportText(report).c_str());
    return 1;
  }
  return writeXmlFile(file, process) ? 0 : 1;
}

} // namespace

Modeler::Modeler() : KivMDIApplication("Modeler", true, "log_dialogs") {}

Modeler::~Modeler() = default;

int Modeler::prepareApplication() {
  StartupPhaseEvent("[kiv] Loading the texts").trigger();
  journal_.Open();
  bool const isReady = createResourceManager("kivara", true) && createResourceManager("modeler", true);
  plugins_.Load(journal_);
  Kiv_Trace("texts in language %u: %s", KivInternational::GetCurrentLanguageID(), isReady ? "loaded" : "missing");
  return isReady ? 0 : 1;
}

int Modeler::runApplication() {
  if (String const file = KivCmdline::Instance().getValue("xml"); file.Len() > 0)
    return exportModel(KivCmdline::Instance().getValue("model"), file);
  StartupPhaseEvent("[kiv] Opening the main window").trigger();
  MakeMDIClientImg(false);
  Settings const settings;
  applyLook(settings);
  MainWindow window(events_, journal_, plugins_, settings);
  if (KivCmdline::Instance().isFlag("watch"))
    window.GetDiagnosticsCommands().StartWatch();
  window.Show();
  createHelpObject("modeler");
  window.GetHelpCommands().Install();
  if (String const model = KivCmdline::Instance().getValue("model"); model.Len() > 0)
    window.GetDocuments().Open(model);
  if (String const target = KivCmdline::Instance().getValue("save"); target.Len() > 0)
    window.GetDocuments().Save(target);
  if (String const way = KivCmdline::Instance().getValue("topaper"); way.Len() > 0)
    window.GetPrintCommands().Print(way);
  appInitialized = true;
  InitializedEvent().trigger();
  KivDebugOut("[kiv] Main window shown\n");
  if (IsShowWindowSuppression())
    Quit();
  return Execute();
}

/// The pictures of the program are in an archive of their own; that of the library has to be the current one at all other times.
bool Modeler::getMDIClientImage(SV::Image & image, int & mode) {
  String const ofLibrary = SV::ImagePool::GetPoolFile();
  SV::ImagePool::SetPoolFile(Kiv_GetProgramPathFilename("modeler.zip"));
  image = SV::ImagePool::GetImage("background.png");
  SV::ImagePool::SetPoolFile(ofLibrary);
  mode = KIV_MDI_CLIENT_COVER;
  return !image.IsEmpty();
}

void Modeler::SysChange(SV::SysChangeType type) {
  KivMDIApplication::SysChange(type);
  if (type == SV::SYSCHANGE_DISPLAY && MakeMDIClientImg(false))
    InvalidateMDIClient();
}

namespace {

Modeler theModeler;

} // namespace
} // namespace modeler

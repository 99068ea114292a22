#include "commands/program/traycommands.hpp"

#include "model/analysis/paths.hpp"
#include "model/excerpt.hpp"
#include "model/modeltime.hpp"
#include "texts/traytexts.hpp"

using SV::String;

namespace modeler {
namespace {

constexpr char kProduct[] = "KIVARA Modeler";
constexpr unsigned kBalloonSeconds = 10;
constexpr unsigned long kInformation = 1;

} // namespace

TrayCommands::TrayCommands(SV::MDIFrame & frame, Documents const & documents, Journal & journal)
    : frame_(frame), documents_(documents), journal_(journal), icon_({[this] { restore(); }, [this] { exit(); }}),
      run_([this] { reportEnd(); }) {
  afterBalloon_.ChangeTimeoutHdl([this](SV::Timer * timer) {
    timer->Stop();
    removeUnlessNeeded();
  });
}

Commands TrayCommands::GetCommands() {
  return {{MENU_FILE, FILE_TRIAL_RUN, named(kTrialRun), [this] { run(); }},
          {MENU_WINDOW, WINDOW_MINIMISE, named(kMinimise), [this] { minimise(); }}};
}

String TrayCommands::tip() const { return run_.IsRunning() ? filled(kRunning, runningModel_) : String(kProduct); }

void TrayCommands::minimise() {
  if (isMinimised_)
    return;
  if (!icon_.Show(tip())) {
    removeUnlessNeeded(); // or the next shell would get the icon
    KivWarningBox(&frame_, SV::WB_OK, text(kNoTray)).Execute();
    return;
  }
  KivSystemTray::MinimizeToTray(frame_.GethWnd());
  isMinimised_ = true;
  journal_.Add("tray: minimised");
}

void TrayCommands::restore() {
  if (isMinimised_) {
    KivSystemTray::MaximizeFromTray(frame_.GethWnd());
    journal_.Add("tray: restored");
  } else
    frame_.ToTop();
  isMinimised_ = false;
  removeUnlessNeeded();
}

void TrayCommands::exit() {
  journal_.Add("tray: exit");
  frame_.Close();
}

void TrayCommands::run() {
  ProcessWindow const * const window = documents_.GetFront();
  if (window == nullptr) {
    KivInfoBox(&frame_, text(Text::NothingToSave)).Execute();
    return;
  }
  ProcessModel const & model = window->GetModel();
  Paths const found = pathsOf(model, 1);
  if (found.paths.empty()) {
    KivInfoBox(&frame_, text(kNoPath)).Execute();
    return;
  }
  runningModel_ = excerptOfWord(model.name); // the text of an icon is limited
  run_.Start(sumOf(model, found.paths.front()));
  journal_.Add("trial run: " + pathText(model, found.paths.front()));
  icon_.Blink(false);
  if (icon_.Show(tip()))
    icon_.Blink(true);
}

/// Where there is no notification area, the journal alone has it.
void TrayCommands::reportEnd() {
  icon_.Blink(false);
  journal_.Add("trial run ended: " + runningModel_);
  if (!icon_.Show(tip()))
    return;
  icon_.ShowBalloon(filled(kRunEnded, runningModel_).c_str(), kProduct, kInformation, kBalloonSeconds);
  afterBalloon_.Start(kBalloonSeconds * 1000);
}

void TrayCommands::removeUnlessNeeded() {
  if (!isMinimised_ && !run_.IsRunning())
    icon_.Hide();
}

} // namespace modeler

#include "mainwindow.hpp"

#include "excerpt.hpp"
#include "modelnotes.hpp"
#include "modelreport.hpp"
#include "modelwriter.hpp"
#include "plugintexts.hpp"
#include "scaling.hpp"
#include "tools/winapi.hpp"

#include <commdlg.h>

#include <algorithm>

using SV::String;

namespace modeler {
namespace {

constexpr SV::Point kStart = {40, 40}; // at 96 dots per inch, as is the size
constexpr SV::Size kSize = {1000, 700};

constexpr char kSample[] = "models\\order.txt";

String productName() { return "KIVARA Modeler " + Kiv_GetVersionString(); }

/// The size for the window, as far as the screen has room beside the task bar.
SV::Size startSize() {
  SV::Size const wanted = scaled(kSize);
  RECT free = {};
  if (!SystemParametersInfoA(SPI_GETWORKAREA, 0, &free, 0))
    return wanted;
  return {std::min(wanted.width, free.right - scaledAcross(kStart.x)),
          std::min(wanted.height, free.bottom - scaledDown(kStart.y))};
}

using FileDialog = BOOL(WINAPI *)(OPENFILENAMEA *);

/// The file that the user chooses; empty when none.
String chosenFile(HWND owner, FileDialog ask, DWORD flags) {
  String filter = text(Text::ModelFiles) + " (*.txt)";
  char name[MAX_PATH] = "";
  std::string const pattern = std::string(filter.c_str()) + '\0' + "*.txt" + '\0';
  OPENFILENAMEA dialog = {};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = pattern.c_str();
  dialog.lpstrFile = name;
  dialog.nMaxFile = sizeof name;
  dialog.lpstrDefExt = "txt";
  dialog.Flags = flags | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  return ask(&dialog) != FALSE ? String(name) : String();
}

} // namespace

MainWindow::MainWindow(EventLog & events, Journal & journal, Plugins const & plugins)
    : MDIFrame(productName()), eventLog_(events), journal_(journal), plugins_(plugins),
      menus_([this](unsigned short id) { select(id); }), commands_(menus_.GetBar(), plugins.Commands()) {
  SetPosSizePixel({scaledAcross(kStart.x), scaledDown(kStart.y)}, startSize());
  SetMenuBar(&menus_.GetBar());
  Kiv_PushParentWindow(this);
  showFacts();
}

MainWindow::~MainWindow() {
  Kiv_PopParentWindow(this);
  SetMenuBar(nullptr);
}

void MainWindow::select(unsigned short id) {
  switch (id) {
  case FILE_OPEN_MODEL: chooseModel(); break;
  case FILE_OPEN_SAMPLE: OpenModel(Kiv_GetProgramPathFilename(kSample)); break;
  case FILE_SAVE_AS: chooseTarget(); break;
  case FILE_EXIT: Close(); break;
  case RAISE_USER: KivUserEvent(KivUserEvent::AfterRename, 17).trigger(); break;
  case RAISE_USER_GROUP: KivUserGroupEvent(KivUserGroupEvent::AfterAddUser, 4, 17).trigger(); break;
  case WINDOW_START: showFacts(); break;
  case WINDOW_EVENTS: showEvents(); break;
  case WINDOW_CASCADE: arrange(WM_MDICASCADE); break;
  case WINDOW_TILE: arrange(WM_MDITILE); break;
  case HELP_ABOUT: showAbout(); break;
  default:
    if (String const command = commands_.CommandOf(id); command.Len() > 0)
      execute(command);
    else if (id >= LANGUAGE_FIRST)
      changeLanguage(static_cast<std::size_t>(id - LANGUAGE_FIRST));
  }
}

void MainWindow::showFacts() {
  if (!facts_ || !facts_->GethWnd())
    facts_ = std::make_unique<FactsWindow>(*this, plugins_);
  facts_->Show();
}

void MainWindow::showEvents() {
  if (!events_ || !events_->GethWnd()) {
    events_.reset(); // the log reports to one window at a time
    events_ = std::make_unique<EventsWindow>(*this, eventLog_);
  }
  events_->Show();
  KivBeforeGrabFocusEvent::GrabFocus(events_.get());
}

void MainWindow::chooseModel() {
  if (SV::Application::IsModalDialogSuppression())
    return;
  String const fileName = chosenFile(GethWnd(), GetOpenFileNameA, OFN_FILEMUSTEXIST);
  if (fileName.Len() > 0)
    OpenModel(fileName);
}

void MainWindow::chooseTarget() {
  if (SV::Application::IsModalDialogSuppression())
    return;
  // The program asks itself before it overwrites a file: that holds for the command line too.
  String const fileName = chosenFile(GethWnd(), GetSaveFileNameA, OFN_PATHMUSTEXIST);
  if (fileName.Len() > 0)
    SaveModel(fileName);
}

void MainWindow::OpenModel(String const & fileName) {
  ProcessModel model;
  ModelReport report;
  if (!readProcessModel(fileName, model, report)) {
    String const fault = reportText(report);
    journal_.Add("not opened: " + fileName + ": " + fault);
    KivErrorBox(this, KivErrorBox::WB_OK | KivErrorBox::WB_DEF_OK,
                filled(Text::ModelFault, excerptOfFileName(fileName), fault))
        .Execute(ShowAlways);
    return;
  }
  journal_.Add("opened: " + fileName + ", " + String(static_cast<int>(model.nodes.size())) + " nodes");
  lastModel_ = fileName;
  for (String const & note : notesOf(model))
    journal_.Add(note);
  std::erase_if(models_, [](auto const & window) { return window->GethWnd() == nullptr; });
  models_.push_back(std::make_unique<ProcessWindow>(*this, model));
  models_.back()->Show();
}

void MainWindow::SaveModel(String const & fileName) {
  auto const * const window = dynamic_cast<ProcessWindow *>(GetActiveChild());
  if (window == nullptr) {
    KivInfoBox(this, text(Text::NothingToSave)).Execute();
    return;
  }
  bool const isThere = GetFileAttributesA(fileName.c_str()) != INVALID_FILE_ATTRIBUTES;
  if (isThere &&
      KivQueryBox(this, SV::WB_YES_NO | SV::WB_DEF_NO, filled(Text::Overwrite, fileName)).Execute() != SV::RET_YES)
    return;
  bool const isWritten = writeProcessModel(fileName, window->GetModel());
  journal_.Add((isWritten ? "saved: " : "not saved: ") + fileName);
  if (!isWritten)
    KivErrorBox(this, KivErrorBox::WB_OK | KivErrorBox::WB_DEF_OK, filled(Text::NotWritten, fileName))
        .Execute(ShowAlways);
}

void MainWindow::execute(String const & command) {
  String answer;
  bool const isExecuted = plugins_.Execute(command, lastModel_, answer);
  journal_.Add("command: " + command + ": " + (isExecuted ? answer : String("not executed")));
  if (!isExecuted) {
    KivWarningBox(this, SV::WB_OK, filled(kCommandFailed, command)).Execute();
    return;
  }
  KivInfoBox box(this, answer);
  box.SetText(command);
  box.Execute();
}

void MainWindow::changeLanguage(std::size_t place) {
  ISequence<unsigned short> const & languages = KivInternational::GetAvailableLanguages();
  if (place >= languages.size())
    return;
  KivInternational::SetCurrentLanguageID(languages[place]);
  journal_.Add("language: " + String(languages[place]));
  menus_.Retext();
  commands_.Retext();
  if (facts_) {
    facts_->SetText(text(Text::TitleStart));
    facts_->Invalidate();
  }
  if (events_)
    events_->SetText(text(Text::TitleEvents));
  for (auto const & window : models_)
    window->Retext();
}

void MainWindow::arrange(unsigned message) { SendMessageA(GetClient().GethWnd(), message, 0, 0); }

void MainWindow::showAbout() {
  KivInfoBox box(this, productName() + "\n\n" + filled(Text::Version, Kiv_GetPatchBuildVersionString()));
  box.SetText(text(Text::TitleAbout));
  box.Execute();
}

} // namespace modeler

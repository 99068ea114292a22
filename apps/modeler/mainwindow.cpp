#include "mainwindow.hpp"

#include "excerpt.hpp"
#include "modelnotes.hpp"
#include "modelreport.hpp"
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

/// The file that the user chooses; empty when none.
String chosenFile(HWND owner) {
  String filter = text(Text::ModelFiles) + " (*.txt)";
  char name[MAX_PATH] = "";
  std::string const pattern = std::string(filter.c_str()) + '\0' + "*.txt" + '\0';
  OPENFILENAMEA dialog = {};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = pattern.c_str();
  dialog.lpstrFile = name;
  dialog.nMaxFile = sizeof name;
  dialog.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  return GetOpenFileNameA(&dialog) != FALSE ? String(name) : String();
}

} // namespace

MainWindow::MainWindow(EventLog & events, Journal & journal)
    : MDIFrame(productName()), eventLog_(events), journal_(journal), menus_([this](unsigned short id) { select(id); }) {
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
  case FILE_EXIT: Close(); break;
  case RAISE_USER: KivUserEvent(KivUserEvent::AfterRename, 17).trigger(); break;
  case RAISE_USER_GROUP: KivUserGroupEvent(KivUserGroupEvent::AfterAddUser, 4, 17).trigger(); break;
  case WINDOW_START: showFacts(); break;
  case WINDOW_EVENTS: showEvents(); break;
  case WINDOW_CASCADE: arrange(WM_MDICASCADE); break;
  case WINDOW_TILE: arrange(WM_MDITILE); break;
  case HELP_ABOUT: showAbout(); break;
  default:
    if (id >= LANGUAGE_FIRST)
      changeLanguage(static_cast<std::size_t>(id - LANGUAGE_FIRST));
  }
}

void MainWindow::showFacts() {
  if (!facts_ || !facts_->GethWnd())
    facts_ = std::make_unique<FactsWindow>(*this);
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
  String const fileName = chosenFile(GethWnd());
  if (fileName.Len() > 0)
    OpenModel(fileName);
}

void MainWindow::OpenModel(String const & fileName) {
  ProcessModel model;
  ModelReport report;
  if (!readProcessModel(fileName, model, report)) {
    String const fault = reportText(report);
    journal_.Add("not opened: " + fileName + ": " + fault);
    tell(filled(Text::ModelFault, excerptOfFileName(fileName), fault), productName(), MB_OK | MB_ICONWARNING);
    return;
  }
  journal_.Add("opened: " + fileName + ", " + String(static_cast<int>(model.nodes.size())) + " nodes");
  for (String const & note : notesOf(model))
    journal_.Add(note);
  std::erase_if(models_, [](auto const & window) { return window->GethWnd() == nullptr; });
  models_.push_back(std::make_unique<ProcessWindow>(*this, model));
  models_.back()->Show();
}

void MainWindow::changeLanguage(std::size_t place) {
  ISequence<unsigned short> const & languages = KivInternational::GetAvailableLanguages();
  if (place >= languages.size())
    return;
  KivInternational::SetCurrentLanguageID(languages[place]);
  journal_.Add("language: " + String(languages[place]));
  menus_.Retext();
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
  tell(productName() + "\n\n" + filled(Text::Version, Kiv_GetPatchBuildVersionString()), text(Text::TitleAbout),
       MB_OK | MB_ICONINFORMATION);
}

void MainWindow::tell(String const & what, String const & title, unsigned style) {
  if (SV::Application::IsModalDialogSuppression())
    SV::Application::ModalDialogSuppressionLog(what.c_str());
  else
    MessageBoxA(GethWnd(), what.c_str(), title.c_str(), style);
}

} // namespace modeler

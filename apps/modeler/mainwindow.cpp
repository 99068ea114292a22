#include "mainwindow.hpp"

#include "tools/winapi.hpp"

using SV::String;

namespace modeler {
namespace {

enum Item : unsigned short {
  MENU_FILE = 1,
  MENU_WINDOW = 2,
  MENU_HELP = 3,
  MENU_RAISE = 4,
  FILE_EXIT = 101,
  WINDOW_START = 201,
  WINDOW_CASCADE = 202,
  WINDOW_TILE = 203,
  WINDOW_EVENTS = 204,
  HELP_ABOUT = 301,
  RAISE_USER = 401,
  RAISE_USER_GROUP = 402
};

String productName() { return "KIVARA Modeler " + Kiv_GetVersionString(); }

} // namespace

MainWindow::MainWindow(EventLog & events) : MDIFrame(productName()), eventLog_(events) {
  SetPosSizePixel({40, 40}, {1000, 700});
  fillMenus();
  SetMenuBar(&bar_);
  Kiv_PushParentWindow(this);
  showFacts();
}

MainWindow::~MainWindow() {
  Kiv_PopParentWindow(this);
  SetMenuBar(nullptr);
}

void MainWindow::fillMenus() {
  file_.InsertItem(FILE_EXIT, "E~xit");
  raise_.InsertItem(RAISE_USER, "~User");
  raise_.InsertItem(RAISE_USER_GROUP, "User ~group");
  window_.InsertItem(WINDOW_START, "~Start");
  window_.InsertItem(WINDOW_EVENTS, "~Events");
  window_.InsertSeparator();
  window_.InsertItem(WINDOW_CASCADE, "~Cascade");
  window_.InsertItem(WINDOW_TILE, "~Tile");
  help_.InsertItem(HELP_ABOUT, "~About");

  bar_.InsertItem(MENU_FILE, "~File");
  bar_.InsertItem(MENU_RAISE, "~Raise event");
  bar_.InsertItem(MENU_WINDOW, "~Window");
  bar_.InsertItem(MENU_HELP, "~Help");
  bar_.SetPopupMenu(MENU_FILE, &file_);
  bar_.SetPopupMenu(MENU_RAISE, &raise_);
  bar_.SetPopupMenu(MENU_WINDOW, &window_);
  bar_.SetPopupMenu(MENU_HELP, &help_);
  bar_.ChangeSelectHdl([this](unsigned short id) { select(id); });
}

void MainWindow::select(unsigned short id) {
  switch (id) {
  case FILE_EXIT: Close(); break;
  case RAISE_USER: KivUserEvent(KivUserEvent::AfterRename, 17).trigger(); break;
  case RAISE_USER_GROUP: KivUserGroupEvent(KivUserGroupEvent::AfterAddUser, 4, 17).trigger(); break;
  case WINDOW_START: showFacts(); break;
  case WINDOW_EVENTS: showEvents(); break;
  case WINDOW_CASCADE: arrange(WM_MDICASCADE); break;
  case WINDOW_TILE: arrange(WM_MDITILE); break;
  case HELP_ABOUT: showAbout(); break;
  default: break;
  }
}

void MainWindow::showFacts() {
  if (!facts_ || !facts_->GetHWND())
    facts_ = std::make_unique<FactsWindow>(*this);
  facts_->Show();
}

void MainWindow::showEvents() {
  if (!events_ || !events_->GetHWND()) {
    events_.reset(); // the log tells one window at a time
    events_ = std::make_unique<EventsWindow>(*this, eventLog_);
  }
  events_->Show();
  KivBeforeGrabFocusEvent::GrabFocus(events_.get());
}

void MainWindow::arrange(unsigned message) { SendMessageA(GetClient().GetHWND(), message, 0, 0); }

void MainWindow::showAbout() {
  String const text = productName() + "\n\nVersion " + Kiv_GetPatchBuildVersionString();
  if (SV::Application::IsModalDialogSuppression())
    SV::Application::ModalDialogSuppressionLog(text.c_str());
  else
    MessageBoxA(GetHWND(), text.c_str(), "About", MB_OK | MB_ICONINFORMATION);
}

} // namespace modeler

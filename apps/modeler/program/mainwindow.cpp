#include "program/mainwindow.hpp"

#include "commands/languagecommands.hpp"
#include "tools/winapi.hpp"
#include "windows/scaling.hpp"

#include <algorithm>

using SV::String;

namespace modeler {
namespace {

constexpr SV::Point kStart = {40, 40}; // at 96 dots per inch, as is the size
constexpr SV::Size kSize = {1000, 700};

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

} // namespace

MainWindow::MainWindow(EventLog & events, Journal & journal, Plugins const & plugins)
    : MDIFrame(productName()), eventLog_(events), journal_(journal), plugins_(plugins), documents_(*this, journal),
      dragCommands_(*this, documents_, [this]() -> TextTarget & { return showFacts(); }),
      pluginCommands_(*this, menus_, plugins, documents_, journal) {
  SetPosSizePixel({scaledAcross(kStart.x), scaledDown(kStart.y)}, startSize());
  menus_.Add(documents_.GetCommands());
  menus_.Add({separator(MENU_FILE), {MENU_FILE, FILE_EXIT, named(Text::Exit), [this] { Close(); }}});
  menus_.Add(dragCommands_.GetCommands());
  menus_.Add(raiseCommands());
  menus_.Add(windowCommands());
  menus_.Add(languageCommands(journal, [this] { retext(); }));
  menus_.Add({{MENU_HELP, HELP_ABOUT, named(Text::About), [this] { showAbout(); }}});
  SetMenuBar(&menus_.GetBar());
  Kiv_PushParentWindow(this);
  showFacts();
}

MainWindow::~MainWindow() {
  Kiv_PopParentWindow(this);
  SetMenuBar(nullptr);
}

Commands MainWindow::raiseCommands() const {
  auto const user = [] { KivUserEvent(KivUserEvent::AfterRename, 17).trigger(); };
  auto const group = [] { KivUserGroupEvent(KivUserGroupEvent::AfterAddUser, 4, 17).trigger(); };
  return {{MENU_RAISE, RAISE_USER, named(Text::RaiseUser), user},
          {MENU_RAISE, RAISE_USER_GROUP, named(Text::RaiseUserGroup), group}};
}

Commands MainWindow::windowCommands() {
  auto const arrange = [this](unsigned message) {
    return [this, message] { SendMessageA(GetClient().GethWnd(), message, 0, 0); };
  };
  return {{MENU_WINDOW, WINDOW_START, named(Text::Start), [this] { showFacts(); }},
          {MENU_WINDOW, WINDOW_EVENTS, named(Text::Events), [this] { showEvents(); }},
          separator(MENU_WINDOW),
          {MENU_WINDOW, WINDOW_CASCADE, named(Text::Cascade), arrange(WM_MDICASCADE)},
          {MENU_WINDOW, WINDOW_TILE, named(Text::Tile), arrange(WM_MDITILE)}};
}

FactsWindow & MainWindow::showFacts() {
  if (!facts_ || !facts_->GethWnd())
    facts_ = std::make_unique<FactsWindow>(*this, plugins_, journal_);
  facts_->Show();
  return *facts_;
}

void MainWindow::showEvents() {
  if (!events_ || !events_->GethWnd()) {
    events_.reset(); // the log reports to one window at a time
    events_ = std::make_unique<EventsWindow>(*this, eventLog_);
  }
  events_->Show();
  KivBeforeGrabFocusEvent::GrabFocus(events_.get());
}

void MainWindow::showAbout() {
  KivInfoBox box(this, productName() + "\n\n" + filled(Text::Version, Kiv_GetPatchBuildVersionString()));
  box.SetText(text(Text::TitleAbout));
  box.Execute();
}

/// The menus follow the language by themselves.
void MainWindow::retext() {
  if (facts_) {
    facts_->SetText(text(Text::TitleStart));
    facts_->Invalidate();
  }
  if (events_)
    events_->SetText(text(Text::TitleEvents));
  documents_.Retext();
}

} // namespace modeler

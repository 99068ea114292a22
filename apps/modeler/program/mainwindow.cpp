#include "program/mainwindow.hpp"

#include "commands/program/crashcommand.hpp"
#include "commands/program/languagecommands.hpp"
#include "commands/program/lookcommands.hpp"
#include "commands/program/windowcommands.hpp"
#include "texts/diagnosticstexts.hpp"
#include "texts/viewtexts.hpp"
#include "tools/winapi.hpp"
#include "windows/scaling.hpp"

#include <algorithm>

using SV::String;

namespace modeler {
namespace {

constexpr SV::Point kStart = {40, 40}; // at 96 dots per inch, as is the size
constexpr SV::Size kSize = {1200, 740};

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

MainWindow::MainWindow(EventLog & events, Journal & journal, Plugins const & plugins, Settings const & settings)
    : MDIFrame(productName()), eventLog_(events), journal_(journal), plugins_(plugins), documents_(*this, journal),
      dragCommands_(*this, documents_, [this]() -> TextTarget & { return showFacts(); }),
      parts_(std::make_unique<Parts>(*this, documents_, settings, [this] { menus_.Refresh(); })),
      pluginCommands_(*this, menus_, plugins, documents_, journal), trayCommands_(*this, documents_, journal),
      printCommands_(*this, documents_, journal), exportCommands_(*this, documents_, journal),
      findCommands_(*this, documents_, journal), analysisCommands_(*this, documents_, journal),
      diagnosticsCommands_(*this, journal), helpCommands_(*this, menus_) {
  SetPosSizePixel({scaledAcross(kStart.x), scaledDown(kStart.y)}, startSize());
  menus_.Add(documents_.GetCommands());
  menus_.Add(printCommands_.GetCommands());
  menus_.Add(exportCommands_.GetCommands());
  menus_.Add(dragCommands_.GetCommands());
  menus_.Add(findCommands_.GetCommands());
  menus_.Add(raiseCommands());
  menus_.AddMenu(MENU_VIEW, kMenuView);
  parts_->MakeToolBar(toolButtons());
  menus_.Add(parts_->GetCommands());
  menus_.Add(lookCommands(settings));
  menus_.Add(analysisCommands_.GetCommands());
  menus_.Add(windowCommands());
  menus_.Add(trayCommands_.GetCommands());
  menus_.Add({separator(MENU_FILE), {MENU_FILE, FILE_EXIT, named(Text::Exit), [this] { Close(); }}});
  menus_.AddVariable(MENU_WINDOW, [this] { return windowListCommands(*this); });
  menus_.Add(languageCommands(journal, [this] { retext(); }));
  menus_.AddMenu(MENU_DIAGNOSTICS, kMenuDiagnostics);
  menus_.Add(diagnosticsCommands_.GetCommands());
  menus_.Add(helpCommands_.GetCommands());
  menus_.Add({{MENU_HELP, HELP_ABOUT, named(Text::About), [this] { showAbout(); }}});
  menus_.Add({separator(MENU_HELP), crashCommand(*this, journal)});
  SetMenuBar(&menus_.GetBar());
  auto const refreshParts = [this] { parts_->Refresh(); };
  menus_.ChangeRefreshHdl(refreshParts);
  documents_.ChangeFrontHdl([this] { menus_.Refresh(); });
  parts_->Arrange();
  Kiv_PushParentWindow(this);
  showFacts();
}

MainWindow::~MainWindow() {
  Kiv_PopParentWindow(this);
  menus_.ChangeRefreshHdl(nullptr);
  documents_.ChangeFrontHdl(nullptr);
  SetMenuBar(nullptr);
}

void MainWindow::Resize(SV::Size const &) {
  if (parts_)
    parts_->Arrange();
}

long long MainWindow::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == WM_INITMENU && parts_)
    menus_.Refresh(); // other windows may be open, or another one in front
  long long const result = MDIFrame::HandleMessage(message, wParam, lParam);
  if (message == WM_SETFONT)
    Resize(GetOutputSizePixel()); // the bars grow with the font
  return result;
}

/// The system would give all of the window to the documents.
long long MainWindow::DefaultProcedure(unsigned message, unsigned long long wParam, long long lParam) {
  return message == WM_SIZE ? 0 : MDIFrame::DefaultProcedure(message, wParam, lParam);
}

/// What is used often, and what is worth a mark. They are the commands of the menus.
ISequence<ToolButton> MainWindow::toolButtons() {
  struct Place {
    unsigned short id;
    bool beginsGroup;
  };
  ISequence<ToolButton> buttons;
  for (Place const place : {Place{FILE_OPEN_MODEL, false},
                            {FILE_OPEN_SAMPLE, false},
                            {FILE_SAVE_AS, false},
                            {VIEW_OUTLINE, true},
                            {VIEW_NOTES, false},
                            {VIEW_CLASSIC, true},
                            {VIEW_MODERN, false}}) {
    auto const name = [this, place] { return plain(menus_.GetName(place.id)); };
    auto const press = [this, place] { menus_.Choose(place.id); };
    auto const isChecked = [this, place] { return menus_.IsChecked(place.id); };
    buttons.push_back({name, press, isChecked, place.beginsGroup});
  }
  return buttons;
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
  if (facts_)
    facts_->Retext();
  if (events_)
    events_->SetText(text(Text::TitleEvents));
  parts_->Arrange(); // the tool bar may need another row
  documents_.Retext();
  analysisCommands_.Retext();
  helpCommands_.Retext();
}

} // namespace modeler

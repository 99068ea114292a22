#include "commands/program/diagnosticscommands.hpp"

#include "amsgwatch.hpp"
#include "background/userfacts.hpp"
#include "dialogs/requestdialog.hpp"
#include "dialogs/userdialog.hpp"
#include "texts/diagnosticstexts.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace modeler {
namespace {

constexpr char kRecord[] = "_kiv_hooks.txt";
constexpr char kWatchedName[] = "main window";

/// 0 for a file that is not there, and for a folder.
unsigned long long sizeOf(String const & file) {
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  if (!GetFileAttributesExA(file.c_str(), GetFileExInfoStandard, &data) ||
      (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
    return 0;
  return static_cast<unsigned long long>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

} // namespace

Commands DiagnosticsCommands::GetCommands() {
  Command watch = {MENU_DIAGNOSTICS, DIAGNOSTICS_WATCH, named(kWatch), [this] { toggleWatch(); }};
  watch.isChecked = [this] { return isWatched(); };
  return {watch,
          separator(MENU_DIAGNOSTICS),
          {MENU_DIAGNOSTICS, DIAGNOSTICS_REQUEST, named(kRequest), [this] { sendRequest(); }},
          {MENU_DIAGNOSTICS, DIAGNOSTICS_AT_WORK, named(kAtWork), [this] { showUser(); }}};
}

/// The library opens its file once, in the folder that is the working folder then. It does not report a file that cannot be
/// written; but each start adds a line.
bool DiagnosticsCommands::StartWatch() {
  if (record_.Len() == 0)
    record_ = SV::DirEntry(String(kRecord)).GetFull();
  unsigned long long const before = sizeOf(record_);
  KivWindowsMessageWatcher::addHookWindow(frame_.GethWnd(), kWatchedName);
  bool const isRecorded = sizeOf(record_) > before;
  if (!isRecorded)
    KivWindowsMessageWatcher::removeHookWindow(frame_.GethWnd());
  journal_.Add((isRecorded ? "messages are recorded: " : "messages are not recorded: ") + record_);
  return isRecorded;
}

bool DiagnosticsCommands::isWatched() const { return KivWindowsHookManager::Instance().contains(frame_.GethWnd()); }

void DiagnosticsCommands::toggleWatch() {
  if (isWatched()) {
    KivWindowsMessageWatcher::removeHookWindow(frame_.GethWnd());
    journal_.Add("messages are no longer recorded");
    return;
  }
  if (StartWatch())
    KivInfoBox(&frame_, filled(kWatchStarted, record_)).Execute();
  else
    KivWarningBox(&frame_, SV::WB_OK, filled(kWatchFailed, record_)).Execute();
}

void DiagnosticsCommands::sendRequest() {
  RequestDialog dialog(&frame_, url_, [this](String const & url, String const & outcome) {
    journal_.Add("request: " + url + ": " + outcome);
  });
  dialog.Execute();
  url_ = dialog.GetUrl();
}

void DiagnosticsCommands::showUser() { UserDialog(&frame_, userFacts()).Execute(); }

} // namespace modeler

#include "aappinfo.hpp"
#include "acmdline.hpp"
#include "acrash.hpp"
#include "aplatfrm.hpp"
#include "atrace.hpp"
#include "base/boundedtext.hpp"
#include "base/textids.hpp"
#include "sv/application.hpp"
#include "sv/resource.hpp"
#include "sv/systembox.hpp"
#include "sv/waitpause.hpp"
#include "sv/window.hpp"
#include "tools/string.hpp"
#include "tools/winapi.hpp"

#include <cstdlib>

using kivara::BoundedText;
using kivara::orEmpty;
using SV::Application;
using SV::String;

namespace {

constexpr char kBuiltInInternalErrorText[] = "An internal error has occurred.\n\nError code: %s";
constexpr char kBuiltInDeadNetworkText[] = "The connection to the database has been lost.";

constexpr UINT kBoxStyle = MB_TOPMOST | MB_TASKMODAL | MB_ICONERROR;

bool deadNet = false;
bool deadNetworkShown = false;
bool exitShown = false;

/// A text from the resources of the current language, or the built-in one. Without a resource manager nothing is
/// loaded: that would raise a severe exception.
String resourceText(kivara::texts::Id id, char const * builtIn) {
  String const text = SV::Resource::GetResManager() != nullptr ? SV::Resource::LoadString(id) : String();
  return text.Len() != 0 ? text : String(builtIn);
}

/// The module's name, the line and the version: "aparser-246 [7.20.00.5050]".
String errorCode(char const * file, unsigned line) {
  String const name(file);
  constexpr std::int32_t ending = 4; // ".cpp"
  String code = name.substr(0, name.Len() - ending);
  code.toLower();
  return code + "-" + String(line) + " [" + Kiv_GetPatchBuildVersionString() + "]";
}

String withCode(String const & text, String const & code) {
  char const * const place = SV::h_strstr(text.c_str(), "%s");
  if (place == nullptr)
    return text;
  auto const start = static_cast<std::int32_t>(place - text.c_str());
  return text.substr(0, start) + code + text.substr(start + 2);
}

/// Shows the text in a box for errors, or has a line logged. True if it was cancelled, which is possible only in a box with
/// Cancel.
/// \param logged  null: nothing is logged
bool isCancelledInBox(String const & text, bool withCancel, char const * logged) {
  SV::Window const * const window = Application::GetAppWindow();
  String const title = window != nullptr ? window->GetText() : String("Unexpected program failure");
  UINT const style = withCancel ? kBoxStyle | MB_OKCANCEL : kBoxStyle;
  int const button = logged != nullptr ? SV::ShowBoxOrLog({text.c_str(), logged}, title.c_str(), style)
                                       : SV::ShowBoxOrNothing(text.c_str(), title.c_str(), style);
  return withCancel && button == IDCANCEL;
}

} // namespace

void Kiv_SetDeadNet(bool dead) { deadNet = dead; }
bool Kiv_IsDeadNet() { return deadNet; }

void displayErrorMessage(char const * file, unsigned line) {
  if (SV::GetpApp() == nullptr)
    return;
  if (deadNet || !Kiv_Is_DBConnected()) {
    displayDeadNetworkMessage();
    return;
  }
  String const code = errorCode(file, line);
  String text = withCode(resourceText(kivara::texts::kInternalError, kBuiltInInternalErrorText), code);
  SV::WaitPause const pause;
  KivDebugOut(BoundedText<1024>("[dEM] %s (%u): %s\n", orEmpty(file), line, code.c_str()).c_str());
  bool const withCancel = KivCmdline::releaseAssertionsEnabled();
  if (withCancel)
    text += "\n\n Press Cancel to debug!";
  bool const cancelled = isCancelledInBox(text, withCancel, nullptr);
  Fct_CreateMiniDump(file, line); // before the debugger stops the program
  if (cancelled)
    DebugBreak();
  // Fetched only now: a message that the box handled may have closed it. What the box covered is drawn at once.
  if (SV::Window * const window = Application::GetAppWindow())
    window->Update();
}

void displayDeadNetworkMessage() {
  if (deadNetworkShown)
    return;
  deadNetworkShown = true; // before anything else, so that a failure in here does not recurse
  String text = resourceText(kivara::texts::kDeadNetwork, kBuiltInDeadNetworkText);
  String const logged = "displayDeadNetworkMessage()\n" + text;
  bool const withCancel = KivCmdline::releaseAssertionsEnabled();
  if (withCancel)
    text += "\n\n Press Cancel to debug!";
  if (isCancelledInBox(text, withCancel, logged.c_str()))
    DebugBreak();
}

void displayExitMessage() {
  if (exitShown)
    return;
  exitShown = true;
  String const text("--- E X I T ---");
  if (!KivCmdline::releaseAssertionsEnabled() && !Application::IsModalDialogSuppression())
    return; // its box is for testers alone, its line is for everybody
  // Not the words of the other two boxes: testers look for these.
  if (isCancelledInBox(text + "\n\nPress Cancel to debug.", true, text.c_str()))
    DebugBreak();
}

int KIV_Assert_Fail(char const * file, int line, char const * expression, char const * userMessage) {
  BoundedText<8192> text("Assertion failed!\nFile %s line %d:\n\nExpression: '%s'\n\nUser message:\n  '%s'\n",
                         orEmpty(file), line, orEmpty(expression), orEmpty(userMessage));
  int const button = SV::ShowBoxOrNothing(text.c_str(), "Assertion failed", kBoxStyle);
  DWORD const error = GetLastError();
  text.set("[assertion] %s (%u): %s\n", orEmpty(file), static_cast<unsigned>(line), orEmpty(expression));
  KivDebugOut(text.c_str());
  if (button == 0) {
    text.set("            MessageBox errorcode: %u\n", static_cast<unsigned>(error));
    KivDebugOut(text.c_str());
  }
  if (std::getenv("KIV_DUMP_ASSERTION") != nullptr)
    Fct_CreateMiniDump(file, static_cast<unsigned long>(line));
  return button == IDCANCEL ? 1 : 0;
}

#include "aappinfo.hpp"
#include "acmdline.hpp"
#include "aplatfrm.hpp"
#include "atrace.hpp"
#include "base/boundedtext.hpp"
#include "base/textids.hpp"
#include "sv/application.hpp"
#include "sv/resource.hpp"
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

/// A text of the language's resources, or the built-in one. Without a resource manager nothing is loaded: that would
/// raise a severe exception.
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

/// Switches the wait pointer off as long as a box is open.
class WaitPause {
public:
  WaitPause() : count_(Application::IsWait()) {
    if (count_ != 0)
      Application::Wait(0);
  }
  ~WaitPause() { Application::Wait(count_); }
  WaitPause(WaitPause const &) = delete;
  WaitPause & operator=(WaitPause const &) = delete;

private:
  unsigned short count_;
};

/// Shows the text in a box of the errors' style. True when it was cancelled, which only a box with Cancel can be.
bool isCancelledInBox(String const & text, bool withCancel) {
  SV::Window const * const window = Application::GetAppWindow();
  String const title = window != nullptr ? window->GetText() : String("Unexpected program failure");
  UINT const style = withCancel ? kBoxStyle | MB_OKCANCEL : kBoxStyle;
  return MessageBoxA(nullptr, text.c_str(), title.c_str(), style) == IDCANCEL && withCancel;
}

void logSuppressed(String const & text) {
  if (Application::GetModalDialogSuppressionLogfileName().Len() != 0)
    Application::ModalDialogSuppressionLog(text.c_str());
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
  WaitPause const pause;
  KivDebugOut(BoundedText<1024>("[dEM] %s (%u): %s\n", orEmpty(file), line, code.c_str()).c_str());
  bool const withCancel = KivCmdline::releaseAssertionsEnabled();
  if (withCancel)
    text += "\n\n Press Cancel to debug!";
  bool cancelled = false;
  if (!Application::IsModalDialogSuppression())
    cancelled = isCancelledInBox(text, withCancel);
  // JOIN acrash: Fct_CreateMiniDump(file, line), before the debugger stops the program
  if (cancelled)
    DebugBreak();
  // Asked for only now: the messages of the box may have closed it. What the box covered is drawn at once.
  if (SV::Window * const window = Application::GetAppWindow())
    window->Update();
}

void displayDeadNetworkMessage() {
  if (deadNetworkShown)
    return;
  deadNetworkShown = true; // first of all, so that a failure in here does not come back
  String text = resourceText(kivara::texts::kDeadNetwork, kBuiltInDeadNetworkText);
  if (Application::IsModalDialogSuppression()) {
    logSuppressed("displayDeadNetworkMessage()\n" + text);
    return;
  }
  bool const withCancel = KivCmdline::releaseAssertionsEnabled();
  if (withCancel)
    text += "\n\n Press Cancel to debug!";
  if (isCancelledInBox(text, withCancel))
    DebugBreak();
}

void displayExitMessage() {
  if (exitShown)
    return;
  exitShown = true;
  String text("--- E X I T ---");
  if (Application::IsModalDialogSuppression()) {
    logSuppressed(text);
  } else if (KivCmdline::releaseAssertionsEnabled()) {
    text += "\n\nPress Cancel to debug."; // other words than in the other two boxes: testers look for them
    if (isCancelledInBox(text, true))
      DebugBreak();
  }
}

int KIV_Assert_Fail(char const * file, int line, char const * expression, char const * userMessage) {
  BoundedText<8192> text("Assertion failed!\nFile %s line %d:\n\nExpression: '%s'\n\nUser message:\n  '%s'\n",
                         orEmpty(file), line, orEmpty(expression), orEmpty(userMessage));
  int result = 0;
  DWORD error = 0;
  if (!Application::IsModalDialogSuppression()) {
    result = MessageBoxA(nullptr, text.c_str(), "Assertion failed", kBoxStyle);
    error = GetLastError();
  }
  text.set("[assertion] %s (%u): %s\n", orEmpty(file), static_cast<unsigned>(line), orEmpty(expression));
  KivDebugOut(text.c_str());
  if (result == 0) {
    text.set("            MessageBox errorcode: %u\n", static_cast<unsigned>(error));
    KivDebugOut(text.c_str());
  }
  if (std::getenv("KIV_DUMP_ASSERTION") != nullptr) {
    // JOIN acrash: Fct_CreateMiniDump(file, line)
  }
  return result == IDCANCEL ? 1 : 0;
}

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
bool isGivingFocusBack = false;

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

/// Switches the wait pointer off while a box is open.
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

/// Gives the focus back to the window of this thread that had it before a box. All windows of the thread are still
/// disabled when the box closes, so the system finds none to give it to. If another program has come to the front
/// meanwhile, it stays there.
class FocusKeeper {
public:
  FocusKeeper() : window_(GetFocus()) {}
  ~FocusKeeper() {
    // A program that reports an error whenever it gets the focus would never come back from here.
    if (isGivingFocusBack || GetFocus() == window_ || !IsWindowVisible(window_))
      return;
    isGivingFocusBack = true;
    SetFocus(window_);
    isGivingFocusBack = false;
  }
  FocusKeeper(FocusKeeper const &) = delete;
  FocusKeeper & operator=(FocusKeeper const &) = delete;

private:
  HWND window_; ///< null where no window of this thread had it
};

struct BoxResult {
  int button; ///< 0: there was no box
  DWORD error;
};

BoxResult showBox(char const * text, char const * title, UINT style) {
  FocusKeeper const focus;
  int const button = MessageBoxA(nullptr, text, title, style);
  return {button, GetLastError()};
}

/// Shows the text in a box for errors. True if it was cancelled, which is possible only in a box with Cancel.
bool isCancelledInBox(String const & text, bool withCancel) {
  SV::Window const * const window = Application::GetAppWindow();
  String const title = window != nullptr ? window->GetText() : String("Unexpected program failure");
  UINT const style = withCancel ? kBoxStyle | MB_OKCANCEL : kBoxStyle;
  return showBox(text.c_str(), title.c_str(), style).button == IDCANCEL && withCancel;
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
  // Fetched only now: a message that the box handled may have closed it. What the box covered is drawn at once.
  if (SV::Window * const window = Application::GetAppWindow())
    window->Update();
}

void displayDeadNetworkMessage() {
  if (deadNetworkShown)
    return;
  deadNetworkShown = true; // before anything else, so that a failure in here does not recurse
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
    text += "\n\nPress Cancel to debug."; // not the words of the other two boxes: testers look for these
    if (isCancelledInBox(text, true))
      DebugBreak();
  }
}

int KIV_Assert_Fail(char const * file, int line, char const * expression, char const * userMessage) {
  BoundedText<8192> text("Assertion failed!\nFile %s line %d:\n\nExpression: '%s'\n\nUser message:\n  '%s'\n",
                         orEmpty(file), line, orEmpty(expression), orEmpty(userMessage));
  BoxResult box = {};
  if (!Application::IsModalDialogSuppression())
    box = showBox(text.c_str(), "Assertion failed", kBoxStyle);
  text.set("[assertion] %s (%u): %s\n", orEmpty(file), static_cast<unsigned>(line), orEmpty(expression));
  KivDebugOut(text.c_str());
  if (box.button == 0) {
    text.set("            MessageBox errorcode: %u\n", static_cast<unsigned>(box.error));
    KivDebugOut(text.c_str());
  }
  if (std::getenv("KIV_DUMP_ASSERTION") != nullptr) {
    // JOIN acrash: Fct_CreateMiniDump(file, line)
  }
  return box.button == IDCANCEL ? 1 : 0;
}

// A product that reports what its words say, one after the other, and prints what it sees of it, a line each. Words with
// '-' are options of the frame. KIVTEST_EARLY=1: an internal error before the application object exists, and one after it
// has gone; KIVTEST_EARLY=deadnet: with a dead network. KIVTEST_BEFORE_INIT=name: that question to the command line before
// it has been read. KIVTEST_NO_GUI=1: a host without a user interface.

#include "kivara.hpp"

#include "support/imports/import_hook.hpp"
#include "sv/resource.hpp"
#include "sv/window.hpp"
#include "tools/winapi.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <io.h>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

template <class... Values> void print(char const * format, Values... values) {
  std::printf(format, values...);
  std::fflush(stdout);
}

std::string setting(char const * name) {
  char const * const value = std::getenv(name);
  return value != nullptr ? value : "";
}

bool isEvaluated() {
  print("evaluated\n");
  return false;
}

int (*boxInstead)() = nullptr;

/// Called by the library instead of the system's box.
int WINAPI spyOnBox(HWND owner, char const * text, char const * title, UINT style) {
  print("box owner=%d style=0x%x, wait %d\n", owner != nullptr, style, SV::Application::IsWait());
  return boxInstead != nullptr ? boxInstead() : MessageBoxA(owner, text, title, style);
}

void watchBoxes() {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "user32.dll",
                          {{"MessageBoxA", reinterpret_cast<void *>(spyOnBox)}});
}

int noBox() {
  SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return 0;
}

int cancelledBox() { return IDCANCEL; }

/// Called by the library instead of the runtime's fclose.
int closeAndPrint(FILE * file) {
  char path[MAX_PATH] = "";
  GetFinalPathNameByHandleA(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))), path, sizeof(path), 0);
  char const * const separator = std::strrchr(path, '\\');
  print("closed %s\n", separator != nullptr ? separator + 1 : path);
  return std::fclose(file);
}

void watchClosedFiles() {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "msvcrt.dll",
                          {{"fclose", reinterpret_cast<void *>(closeAndPrint)}});
}

std::unique_ptr<SV::Window> window;

int boxThatClosesTheWindow() {
  window.reset();
  return IDOK;
}

int boxThatHidesTheWindow() {
  window->Hide();
  return IDOK;
}

int boxWhoseMessagesStartToWait() {
  SV::Application::Wait(5);
  return IDOK;
}

class ProductWindow : public SV::Window {
public:
  explicit ProductWindow(char const * title = "The product") : Window(nullptr, SV::WB_TITLE) {
    SetText(title);
    SetPosSizePixel({0, 0}, {200, 100});
    Show();
    SV::Application::SetAppWindow(this);
  }
  void Update() override {
    print("update, wait %d\n", SV::Application::IsWait());
    Window::Update();
  }
};

/// Handles messages until it is true, for a limited time.
void handleMessagesUntil(std::function<bool()> const & isDone) {
  for (int i = 0; i < 1000 && !isDone(); ++i) {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
    Sleep(10);
  }
}

/// The window with the focus, and its own procedure.
HWND focused = nullptr;
WNDPROC ownProcedure = nullptr;
int keys = 0;
bool reportsFocus = false;

LRESULT CALLBACK watchKeysAndFocus(HWND self, UINT message, WPARAM wParam, LPARAM lParam) {
  LRESULT const result = CallWindowProcA(ownProcedure, self, message, wParam, lParam);
  keys += message == WM_CHAR ? 1 : 0;
  if (message == WM_SETFOCUS && reportsFocus)
    displayErrorMessage("afocus.cpp", 1);
  return result;
}

/// A window in front that has the focus, or whose field has it.
void openInFront(bool withField) {
  window = std::make_unique<ProductWindow>();
  HWND const frame = window->GethWnd();
  focused = withField
                ? CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 0, 0, 200, 30, frame, nullptr, nullptr, nullptr)
                : frame;
  ownProcedure = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(focused, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(watchKeysAndFocus)));
  SetForegroundWindow(frame);
  SetFocus(focused);
  handleMessagesUntil([&] { return GetForegroundWindow() == frame && GetFocus() == focused; });
}

void waitForKey() {
  handleMessagesUntil([] { return keys > 0; });
  print("got a key: %d\n", keys > 0);
  keys = 0;
}

/// Writes the characters of the console's first 60 lines to a file, in UTF-8.
void writeScreen(std::string const & name) {
  HANDLE const console = CreateFileA("CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     nullptr, OPEN_EXISTING, 0, nullptr);
  CONSOLE_SCREEN_BUFFER_INFO info = {};
  GetConsoleScreenBufferInfo(console, &info);
  std::string bytes;
  for (SHORT row = 0; row < 120 && row < info.dwSize.Y; ++row) {
    std::wstring line(static_cast<std::size_t>(info.dwSize.X), L' ');
    DWORD read = 0;
    ReadConsoleOutputCharacterW(console, line.data(), static_cast<DWORD>(line.size()), {0, row}, &read);
    line.resize(line.find_last_not_of(L' ') + 1);
    std::string utf8(line.size() * 3, '\0');
    utf8.resize(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()),
                                                     utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr)));
    bytes += utf8 + "\n";
  }
  CloseHandle(console);
  if (FILE * const file = std::fopen(name.c_str(), "wb")) {
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
  }
}

void askCommandLine(std::string const & question) {
  KivCmdline const & cmdline = KivCmdline::Instance();
  if (question == "getCount")
    print("answer %d\n", cmdline.getCount());
  else if (question == "getParam")
    print("answer '%s'\n", cmdline.getParam(0).c_str());
  else if (question == "isFlag")
    print("answer %d\n", cmdline.isFlag("assert"));
  else if (question == "getValue")
    print("answer '%s'\n", cmdline.getValue("h").c_str());
}

class Reporter : public KivMDIApplication {
public:
  Reporter() : KivMDIApplication("Reporter", setting("KIVTEST_NO_GUI").empty(), "log_reporter") {
    watchBoxes();
    askCommandLine(setting("KIVTEST_BEFORE_INIT"));
  }

  ~Reporter() override { Kiv_Trace("destroyed"); }

  int prepareApplication() override { return 0; }

  int runApplication() override {
    isRunning_ = true;
    std::vector<std::string> words;
    for (int i = 1; i < KivCmdline::Instance().getCount(); ++i)
      words.emplace_back(KivCmdline::Instance().getParam(i).c_str());
    for (std::string const & word : words)
      take(word);
    window.reset();
    return 0;
  }

  bool getMDIClientImage(SV::Image &, int &) override { return false; }

  void Exception(long code, unsigned long arg) override {
    if (isRunning_)
      print("exception 0x%lx of 0x%lx\n", code, code == SV::EXC_RESOURCE_NOT_LOADED ? arg : 0);
    if (reportsInException_)
      displayErrorMessage("aexception.cpp", 1);
  }

private:
  /// A word is a name, or a name, a colon and a text.
  void take(std::string const & word) {
    std::size_t const colon = word.find(':');
    std::string const text = colon != std::string::npos ? word.substr(colon + 1) : "";
    auto const action = actions_.find(word.substr(0, colon));
    if (action != actions_.end())
      action->second(text);
  }

  void useManager(std::string const & file) {
    texts_ = std::make_unique<SV::ResMgr>(file.c_str());
    SV::Resource::SetResManager(texts_.get());
  }

  void reportError(char const * file) const {
    displayErrorMessage(file, errorLine_);
    print("after error, wait %d\n", Application::IsWait());
  }

  void failAssertion(std::string const & expression) const {
    print("assertion %d\n", KIV_Assert_Fail("amodule.cpp", assertionLine_, expression.c_str(), "what it means"));
  }

  /// So many characters; each one depends on its position.
  static void writeCharacters(std::string const & count) {
    std::string text(std::strtoul(count.c_str(), nullptr, 10), ' ');
    for (std::size_t i = 0; i < text.size(); ++i)
      text[i] = static_cast<char>('a' + i % 26);
    KivDebugOut(text.c_str());
  }

  void takeOnAThread(std::string const & word) {
    std::thread([&] { take(word); }).join();
  }

  static void openLog(std::string const & file) {
    KivBasicFileLogger log(true, true, 3);
    bool const opened = log.open(file.c_str(), true);
    print("open %d, line %d\n", opened, log.addText("a line"));
  }

  static void writeOwnLogLine(std::string const &) {
    struct Log : KivBasicFileLogger {
      using KivBasicFileLogger::_debugPrint;
      using KivBasicFileLogger::KivBasicFileLogger;
    };
    Log(true, true, 3)._debugPrint("to a log without a name");
    print("own line\n");
  }

  static void missMenu(std::string const &) {
    KivAcceleratorTable table;
    table.setAcceleratorsOfMenu(nullptr);
    int c = 0;
    while (table.IsInUse(static_cast<char>(c)))
      ++c;
    print("first free %d\n", c);
  }

  static void assertInCode(std::string const &) {
    KIV_ASSERT_AT(isEvaluated(), "the text", "what it means", "aplace.cpp", 7);
    print("after the assertion\n");
  }

  std::map<std::string, std::function<void(std::string const &)>> const actions_ = {
      {"window", [](auto &) { window = std::make_unique<ProductWindow>(); }},
      {"untitled", [](auto &) { window = std::make_unique<ProductWindow>(""); }},
      {"front", [](auto &) { openInFront(false); }},
      {"field", [](auto &) { openInFront(true); }},
      {"focus", [](auto &) { print("has the focus: %d\n", GetFocus() == focused); }},
      {"key", [](auto &) { waitForKey(); }},
      {"reportfocus", [](auto &) { reportsFocus = true; }},
      {"texts", [this](auto & language) { useManager("language\\" + language + "\\kivara72.dll"); }},
      {"manager", [this](auto & file) { useManager(file); }},
      {"line", [this](auto & number) { errorLine_ = std::strtoul(number.c_str(), nullptr, 10); }},
      {"assertionline", [this](auto & number) { assertionLine_ = std::atoi(number.c_str()); }},
      {"thread", [this](auto & word) { takeOnAThread(word); }},
      {"reportexceptions", [this](auto &) { reportsInException_ = true; }},
      {"wait", [](auto &) { Wait(3); }},
      {"log", [](auto & file) { SetModalDialogSuppressionLogfileName(file.c_str()); }},
      {"nobox", [](auto &) { boxInstead = noBox; }},
      {"cancelledbox", [](auto &) { boxInstead = cancelledBox; }},
      {"closingbox", [](auto &) { boxInstead = boxThatClosesTheWindow; }},
      {"hidingbox", [](auto &) { boxInstead = boxThatHidesTheWindow; }},
      {"waitingbox", [](auto &) { boxInstead = boxWhoseMessagesStartToWait; }},
      {"suppress", [](auto &) { SetModalDialogSuppression(true); }},
      {"show", [](auto &) { SetModalDialogSuppression(false); }},
      {"deadnet", [](auto &) { Kiv_SetDeadNet(true); }},
      {"connected", [this](auto & word) { connected_ = static_cast<short>(std::atoi(word.c_str())); }},
      {"link", [this](auto &) { Kiv_SetDBConnected_Link(&connected_); }},
      {"error", [this](auto & file) { reportError(file.empty() ? "aEvent.cpp" : file.c_str()); }},
      {"nullerror", [this](auto &) { reportError(nullptr); }},
      {"network", [](auto &) { displayDeadNetworkMessage(), print("after network\n"); }},
      {"exit", [](auto &) { displayExitMessage(), print("after exit\n"); }},
      {"fail", [this](auto & expression) { failAssertion(expression); }},
      {"nullfail", [](auto &) { KIV_Assert_Fail(nullptr, 0, nullptr, nullptr); }},
      {"assert", assertInCode},
      {"nomenu", missMenu},
      {"openlog", openLog},
      {"ownlogline", writeOwnLogLine},
      {"addtolog", [](auto & text) { Kiv_AddToLog("named.log", text.c_str()); }},
      {"watchclosedfiles", [](auto &) { watchClosedFiles(); }},
      {"addtocsvlog", [](auto & text) { Kiv_AddToCSVLog("named.csv", text.c_str()); }},
      {"heapcheck", [](auto & file) { Kiv_DoHeapCheck(file.c_str(), 42, "ignored"); }},
      {"nullheapcheck", [](auto &) { Kiv_DoHeapCheck(nullptr, -1, nullptr); }},
      {"out", [](auto & text) { KivDebugOut(text.c_str()); }},
      {"long", [](auto & end) { KivDebugOut((std::string(5000, 'x') + end).c_str()); }},
      {"characters", writeCharacters},
      {"stderr", [](auto & file) { std::freopen(file.c_str(), "wb", stderr); }},
      {"screen", [](auto & file) { writeScreen(file); }},
      {"trace", [](auto & text) { Kiv_Trace("%s", text.c_str()); }},
      {"again", [](auto &) {
         static char * words[] = {__argv[0], nullptr};
         KivCmdline::init(1, words, true, "log_reporter");
         print("after init, assert %d\n", KivCmdline::releaseAssertionsEnabled());
       }},
  };

  std::unique_ptr<SV::ResMgr> texts_;
  unsigned errorLine_ = 246;
  int assertionLine_ = 42;
  short connected_ = 0;
  bool isRunning_ = false;
  bool reportsInException_ = false;
};

/// Lives longer than the application object, at both ends.
class Around {
public:
  Around() {
    if (setting("KIVTEST_EARLY") == "deadnet") {
      watchBoxes();
      boxInstead = noBox;
      Kiv_SetDeadNet(true);
    }
    report("early");
  }
  ~Around() { report("late"); }
  Around(Around const &) = delete;
  Around & operator=(Around const &) = delete;

private:
  static void report(char const * time) {
    if (setting("KIVTEST_EARLY").empty())
      return;
    displayErrorMessage("aaround.cpp", 1);
    print("after the %s error\n", time);
  }
} around;

Reporter reporter;

} // namespace

#include "support/processes/console.hpp"

#include "tools/winapi.hpp"

#include <stdexcept>

namespace support {
namespace {

BOOL WINAPI keepRunning(DWORD) { return TRUE; }

void * openConsole(char const * name) {
  HANDLE const handle = CreateFileA(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  if (handle == INVALID_HANDLE_VALUE)
    throw std::runtime_error(std::string("cannot open ") + name + ": error " + std::to_string(GetLastError()));
  return handle;
}

std::string withoutBlanks(std::string const & line) { return line.substr(0, line.find_last_not_of(" \0") + 1); }

INPUT_RECORD keyOf(char character, bool down) {
  INPUT_RECORD record{};
  record.EventType = KEY_EVENT;
  record.Event.KeyEvent.bKeyDown = down;
  record.Event.KeyEvent.wRepeatCount = 1;
  record.Event.KeyEvent.wVirtualKeyCode = static_cast<WORD>(VkKeyScanA(character) & 0xFF);
  record.Event.KeyEvent.uChar.AsciiChar = character;
  return record;
}

} // namespace

ConsoleView::ConsoleView(unsigned long processId) {
  FreeConsole();
  if (!AttachConsole(processId))
    throw std::runtime_error("no console to join: error " + std::to_string(GetLastError()));
  SetConsoleCtrlHandler(keepRunning, TRUE);
  output_ = openConsole("CONOUT$");
  input_ = openConsole("CONIN$");
}

ConsoleView::~ConsoleView() {
  CloseHandle(input_);
  CloseHandle(output_);
  FreeConsole();
}

std::string ConsoleView::title() const {
  char text[512] = "";
  GetConsoleTitleA(text, sizeof(text));
  return text;
}

std::vector<std::string> ConsoleView::lines() const {
  CONSOLE_SCREEN_BUFFER_INFO screen{};
  GetConsoleScreenBufferInfo(output_, &screen);
  std::vector<std::string> lines;
  std::size_t used = 0;
  for (SHORT row = 0; row < screen.dwSize.Y && row <= screen.dwCursorPosition.Y; ++row) {
    std::string line(static_cast<std::size_t>(screen.dwSize.X), ' ');
    DWORD read = 0;
    ReadConsoleOutputCharacterA(output_, line.data(), static_cast<DWORD>(line.size()), {0, row}, &read);
    lines.push_back(withoutBlanks(line));
    if (!lines.back().empty())
      used = lines.size();
  }
  lines.resize(used);
  return lines;
}

void ConsoleView::type(std::string_view text) const {
  for (char const character : text)
    for (bool const down : {true, false}) {
      INPUT_RECORD const record = keyOf(character, down);
      DWORD written = 0;
      WriteConsoleInputA(input_, &record, 1, &written);
    }
}

} // namespace support

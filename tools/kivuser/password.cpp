#include "password.hpp"

#include "handles/handle.hpp"
#include "shared/codepage.hpp"

#include <iterator>
#include <optional>
#include <stdexcept>

namespace kivuser {
namespace {

[[noreturn]] void refuse(char const * reason) { throw std::runtime_error(reason); }

/// A console that shows nothing of what is typed, while this object lives. Ctrl+C ends the program without the destructor: the
/// handler brings the echo back, or the shell would be left without one.
class SilentConsole {
public:
  /// \param mode  the console's own
  SilentConsole(HANDLE input, DWORD mode) {
    input_ = input;
    mode_ = mode;
    SetConsoleCtrlHandler(restore, TRUE);
    SetConsoleMode(input, (mode | ENABLE_LINE_INPUT | ENABLE_PROCESSED_INPUT) & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
  }
  SilentConsole(SilentConsole const &) = delete;
  SilentConsole & operator=(SilentConsole const &) = delete;
  ~SilentConsole() {
    restore(0);
    SetConsoleCtrlHandler(restore, FALSE);
  }

private:
  static BOOL WINAPI restore(DWORD) {
    SetConsoleMode(input_, mode_);
    return FALSE; // the program ends as it does without this
  }

  static inline HANDLE input_ = nullptr;
  static inline DWORD mode_ = 0;
};

/// On the console itself: the standard output may go elsewhere.
void show(wchar_t const * text) {
  handles::File const screen(CreateFileA("CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                         nullptr, OPEN_EXISTING, 0, nullptr));
  DWORD written = 0;
  if (screen)
    WriteConsoleW(screen.get(), text, lstrlenW(text), &written, nullptr);
}

/// What is typed up to the Enter key; nothing when the input ends, as by Ctrl+Z.
std::optional<std::wstring> typedLine(HANDLE input) {
  constexpr wchar_t kEndOfFile = 26;
  std::wstring line;
  wchar_t piece[256];
  while (line.empty() || line.back() != L'\n') {
    DWORD count = 0;
    if (!ReadConsoleW(input, piece, std::size(piece), &count, nullptr) || count == 0 || piece[0] == kEndOfFile)
      return std::nullopt;
    line.append(piece, count);
  }
  while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r'))
    line.pop_back();
  return line;
}

std::wstring typedPassword(HANDLE input, wchar_t const * prompt) {
  show(prompt);
  std::optional<std::wstring> const password = typedLine(input);
  show(L"\n"); // the Enter key showed nothing either
  if (!password)
    refuse("no password was typed");
  return *password;
}

std::string passwordOfConsole(HANDLE input, DWORD mode) {
  SilentConsole const silence(input, mode);
  std::wstring const password = typedPassword(input, L"Password: ");
  if (typedPassword(input, L"Once more: ") != password)
    refuse("the two passwords differ");
  std::optional<std::string> const text = kivtools::fromWide(password, GetACP());
  if (!text)
    refuse("the password has a character that the system's code page lacks");
  return *text;
}

/// A byte of the standard input; nothing at its end.
std::optional<char> readByte(HANDLE input) {
  char byte = 0;
  DWORD count = 0;
  return ReadFile(input, &byte, 1, &count, nullptr) && count == 1 ? std::optional(byte) : std::nullopt;
}

std::string passwordOfStream(HANDLE input) {
  std::string line;
  std::optional<char> byte = readByte(input);
  if (!byte)
    refuse("there is no password on the standard input");
  for (; byte && *byte != '\n'; byte = readByte(input))
    line += *byte;
  if (line.ends_with('\r'))
    line.pop_back();
  return line;
}

} // namespace

std::string readPassword() {
  HANDLE const input = GetStdHandle(STD_INPUT_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(input, &mode) ? passwordOfConsole(input, mode) : passwordOfStream(input);
}

} // namespace kivuser

// process_child WORD...: does what each word says, one after the other, and ends with 0.
//
//   out:TEXT, err:TEXT  writes the text to that stream
//   wait:NAME           waits for the event of that name
//   exit:CODE           ends with that code
//
// Where the variable KIVARA_FACTS names a file, it first writes there how it was started.

#include "tools/winapi.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void writeFacts(char const * name) {
  std::FILE * const file = std::fopen((std::string(name) + ".part").c_str(), "wb");
  if (file == nullptr)
    return;
  STARTUPINFOA startup = {};
  GetStartupInfoA(&startup);
  char program[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, program, sizeof program);
  std::fprintf(file, "program=%s\n", program);
  std::fprintf(file, "line=%s\n", GetCommandLineA());
  std::fprintf(file, "show=%d\n", (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 ? startup.wShowWindow : -1);
  std::fclose(file);
  std::rename((std::string(name) + ".part").c_str(), name); // who sees the file sees all of it
}

void write(DWORD stream, std::string const & text) {
  DWORD written = 0;
  WriteFile(GetStdHandle(stream), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void waitFor(std::string const & event) {
  HANDLE const handle = OpenEventA(SYNCHRONIZE, FALSE, event.c_str());
  WaitForSingleObject(handle, INFINITE);
  CloseHandle(handle);
}

void act(std::string const & word) {
  std::size_t const colon = word.find(':');
  std::string const deed = word.substr(0, colon);
  std::string const text = colon != std::string::npos ? word.substr(colon + 1) : "";
  if (deed == "out")
    write(STD_OUTPUT_HANDLE, text);
  else if (deed == "err")
    write(STD_ERROR_HANDLE, text);
  else if (deed == "wait")
    waitFor(text);
  else if (deed == "exit")
    ExitProcess(static_cast<UINT>(std::strtoul(text.c_str(), nullptr, 0)));
}

} // namespace

int main(int count, char ** words) {
  if (char const * const facts = std::getenv("KIVARA_FACTS"))
    writeFacts(facts);
  for (int i = 1; i < count; ++i)
    act(words[i]);
  return 0;
}

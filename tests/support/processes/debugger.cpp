#include "support/processes/debugger.hpp"

#include "tools/winapi.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace support {

Debugger::Debugger(ProgramStart const & start, DebugRule rule)
    : rule_(std::move(rule)), thread_([this, start] { run(start); }) {
  while (!started_)
    pause(0.001);
  if (startError_.empty())
    return;
  thread_.join();
  throw std::runtime_error(startError_);
}

Debugger::~Debugger() {
  kill();
  thread_.join();
}

// Only the thread that started a program receives its debug events.
void Debugger::run(ProgramStart const & start) {
  try {
    ProgramStart debugged = start;
    debugged.creationFlags |= DEBUG_ONLY_THIS_PROCESS;
    process_ = std::make_unique<ChildProcess>(debugged);
  } catch (std::exception const & error) {
    startError_ = error.what();
  }
  started_ = true;
  if (process_)
    loop();
  ended_ = true;
}

void Debugger::loop() {
  DEBUG_EVENT event{};
  for (;;) {
    // A killed program's last event may have gone by, so the wait has a limit.
    if (!WaitForDebugEvent(&event, 1000)) {
      if (!process_->running())
        return;
      continue;
    }
    DWORD const next = answer(event);
    ContinueDebugEvent(event.dwProcessId, event.dwThreadId, next);
    if (event.dwDebugEventCode == EXIT_PROCESS_DEBUG_EVENT)
      return;
  }
}

unsigned long Debugger::answer(DEBUG_EVENT const & event) {
  switch (event.dwDebugEventCode) {
  case CREATE_PROCESS_DEBUG_EVENT: CloseHandle(event.u.CreateProcessInfo.hFile); break;
  case LOAD_DLL_DEBUG_EVENT: CloseHandle(event.u.LoadDll.hFile); break;
  case OUTPUT_DEBUG_STRING_EVENT: addText(event); break;
  case EXCEPTION_DEBUG_EVENT: return answerException(event);
  default: break;
  }
  return DBG_CONTINUE;
}

unsigned long Debugger::answerException(DEBUG_EVENT const & event) {
  EXCEPTION_RECORD const & record = event.u.Exception.ExceptionRecord;
  bool const breakpoint = record.ExceptionCode == STATUS_BREAKPOINT;
  if (breakpoint && !std::exchange(sawFirstBreakpoint_, true))
    return DBG_CONTINUE;
  DebuggedException const raised{record.ExceptionCode, record.ExceptionAddress, event.u.Exception.dwFirstChance != 0,
                                 event.dwThreadId};
  {
    std::lock_guard const lock(mutex_);
    exceptions_.push_back(raised);
  }
  switch (rule_ ? rule_(raised) : DebugAnswer::Usual) {
  case DebugAnswer::Handled: return DBG_CONTINUE;
  case DebugAnswer::NotHandled: return DBG_EXCEPTION_NOT_HANDLED;
  case DebugAnswer::End: TerminateProcess(process_->handle(), 1); return DBG_CONTINUE;
  case DebugAnswer::Usual: break;
  }
  return breakpoint ? DBG_CONTINUE : DBG_EXCEPTION_NOT_HANDLED;
}

void Debugger::addText(DEBUG_EVENT const & event) {
  OUTPUT_DEBUG_STRING_INFO const & info = event.u.DebugString;
  std::string text(info.nDebugStringLength, '\0');
  SIZE_T read = 0;
  ReadProcessMemory(process_->handle(), info.lpDebugStringData, text.data(), text.size(), &read);
  text.resize(read);
  text.erase(std::min(text.find('\0'), text.size()));
  std::lock_guard const lock(mutex_);
  texts_.push_back(text);
}

std::vector<std::string> Debugger::texts() const {
  std::lock_guard const lock(mutex_);
  return texts_;
}

std::string Debugger::text() const {
  std::string all;
  for (std::string const & one : texts())
    all += one;
  return all;
}

bool Debugger::waitForText(std::string_view wanted, double seconds) const {
  bool found = false;
  eventually(
      [&] {
        bool const last = ended_;
        found = text().find(wanted) != std::string::npos;
        return found || last;
      },
      seconds);
  return found;
}

std::vector<DebuggedException> Debugger::exceptions() const {
  std::lock_guard const lock(mutex_);
  return exceptions_;
}

unsigned long Debugger::waitForEnd(double seconds) const {
  unsigned long const code = process_->waitForEnd(seconds);
  eventually([this] { return ended_.load(); });
  return code;
}

void Debugger::kill() {
  if (process_->running())
    TerminateProcess(process_->handle(), 1);
}

} // namespace support

// Severe exceptions, raised in runApplication:
// - KIVARA_CODE and KIVARA_ARG: Application::Exception with these numbers; KIVARA_FILE: with the address of this text
// - KIVARA_THROW=1: a C++ exception leaves a handler instead
// - KIVARA_LOAD: opens a resource DLL of that name instead, which raises one when it is not sound
// - KIVARA_LOADING=1: under the flag with which a language's resource file is tried
// - KIVARA_INNER=1: a second exception is raised while the box of the first is about to be shown; =ask: only asked for
//   its answer
// Every box of the frame is recorded with its style, and so are the wait state and what comes after.

#include "frame_program.hpp"

#include "locale/ainter_state.hpp"
#include "support/imports/import_spy.hpp"
#include "tools/winapi.hpp"

#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace {

constexpr unsigned short kWait = 3;

/// A copy of the text where an address fits 32 bits.
unsigned long lowAddress(std::string const & text) {
  for (std::uintptr_t at = 0x20000000; at < 0x70000000; at += 0x10000)
    if (void * const block =
            VirtualAlloc(reinterpret_cast<void *>(at), 0x10000, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE)) {
      std::memcpy(block, text.c_str(), text.size() + 1);
      return static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(block));
    }
  return 0;
}

class SevereProgram : public FrameProgram {
public:
  SevereProgram() {
    support::spyOnImport("SV0105.dll", "MessageBoxA", [this](support::SpiedCall const & call) {
      record("box style %lx, wait %u", static_cast<unsigned long>(call.arguments[3]), SV::Application::IsWait());
      inner();
    });
    support::spyOnImport("SV0105.dll", "exit", [](support::SpiedCall const & call) {
      record("exit %d, wait %u", static_cast<int>(call.arguments[0]), SV::Application::IsWait());
    });
  }
  ~SevereProgram() override { record("destroyed"); }

  void UserEvent(unsigned long, void *) override { throw std::runtime_error("thrown"); }

private:
  void run() override {
    kivara::loadingResourceFile = number("LOADING") != 0;
    SV::Application::Wait(kWait);
    if (number("THROW") != 0) {
      PostUserEvent(0, nullptr);
      Reschedule();
    } else if (!setting("LOAD").empty()) {
      SV::ResMgr const file(setting("LOAD").c_str());
      record("loaded %d as %s", file.IsLoaded(), file.GetFileName().c_str());
    } else {
      std::string const file = setting("FILE");
      unsigned long const arg = file.empty() ? std::strtoul(setting("ARG").c_str(), nullptr, 10) : lowAddress(file);
      Exception(number("CODE"), arg);
    }
    record("goes on, wait %u", SV::Application::IsWait());
    if (number("LOADING") != 0)
      again();
  }

  /// The flag of reentry is clear again: another exception is answered as the first was.
  void again() { record("second answer %d", _handleException(SV::EXC_RESOURCE_FILE_NOT_LOADED, 0)); }

  void inner() {
    std::string const how = setting("INNER");
    if (how == "ask")
      record("inner answer %d", _handleException(SV::EXC_SYSTEM_OBJECT_NOT_CREATED, 7));
    else if (how == "1")
      Exception(SV::EXC_SYSTEM_OBJECT_NOT_CREATED, 7);
  }
};

SevereProgram program;

} // namespace

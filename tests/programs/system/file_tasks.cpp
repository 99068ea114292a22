// A product without a user interface that does what its words say, one after the other, and prints a line for each.

#include "acleanup.hpp"
#include "acmdline.hpp"
#include "afileman.hpp"
#include "programs/frame/frame_program.hpp"
#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <rpc.h>

#include <cstdio>
#include <functional>
#include <map>
#include <vector>

using FileManager = KivSystemFileManager;
using SV::String;

namespace {

template <class... Values> void print(char const * format, Values... values) {
  std::printf(format, values...);
  std::fflush(stdout);
}

RPC_STATUS WINAPI noUuid(UUID *) { return RPC_S_UUID_NO_ADDRESS; }
RPC_STATUS WINAPI noText(UUID const *, RPC_CSTR *) { return RPC_S_OUT_OF_MEMORY; }

void replaceInLibrary(char const * function, void * replacement) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "rpcrt4.dll", {{function, replacement}});
}

class ExitEvent : public KivEvent {
public:
  ExitEvent() : KivEvent(KIV_EVENT_AppExit) {}
};

class FileTasks : public FrameProgram {
  void run() override {
    std::vector<std::string> words;
    for (int i = 1; i < KivCmdline::Instance().getCount(); ++i)
      words.emplace_back(KivCmdline::Instance().getParam(i).c_str());
    for (std::string const & word : words)
      take(word);
  }

  /// A word is a name, or a name, a colon and a text.
  void take(std::string const & word) {
    std::size_t const colon = word.find(':');
    std::string const text = colon != std::string::npos ? word.substr(colon + 1) : "";
    actions_.at(word.substr(0, colon))(text);
  }

  /// "prefix.extension", or "prefix" for a null extension.
  void makeName(std::string const & text) {
    std::size_t const dot = text.find('.');
    std::string const prefix = text.substr(0, dot);
    name_ = dot == std::string::npos ? FileManager::fileCreateTempName(prefix.c_str(), nullptr)
                                     : FileManager::fileCreateTempName(prefix.c_str(), text.substr(dot + 1).c_str());
    print("name=%s\n", name_.c_str());
  }

  void createFile() const {
    if (std::FILE * const file = std::fopen(name_.c_str(), "wb"))
      std::fclose(file);
  }

  bool isThere() const { return GetFileAttributesA(name_.c_str()) != INVALID_FILE_ATTRIBUTES; }

  static void readWithoutReader() {
    String text("before");
    long const result = FileManager::readStringFromFile(text, "any.txt", true);
    print("read=%ld %s\n", result, text.c_str());
  }

  String name_;
  std::map<std::string, std::function<void(std::string const &)>> const actions_ = {
      {"folder", [](auto &) { print("folder='%s'\n", FileManager::getTempDirectory().c_str()); }},
      {"name", [this](auto & text) { makeName(text); }},
      {"create", [this](auto &) { createFile(); }},
      {"there", [this](auto &) { print("there=%d\n", isThere()); }},
      {"keep", [this](auto &) { KivCleanUp::Instance().RemoveFileCleanUpAction(name_); }},
      {"event", [](auto &) { ExitEvent().trigger(); }},
      {"nouuid", [](auto &) { replaceInLibrary("UuidCreate", reinterpret_cast<void *>(noUuid)); }},
      {"notext", [](auto &) { replaceInLibrary("UuidToStringA", reinterpret_cast<void *>(noText)); }},
      {"read", [](auto &) { readWithoutReader(); }},
      {"kill", [](auto & code) { TerminateProcess(GetCurrentProcess(), static_cast<UINT>(std::atoi(code.c_str()))); }},
      {"exit", [](auto & code) { std::exit(std::atoi(code.c_str())); }},
  };
};

FileTasks program;

} // namespace

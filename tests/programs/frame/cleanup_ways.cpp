// Files and singletons are registered for clean-up; then the process ends in the way that KIVARA_WAY names:
// - "return": runApplication returns KIVARA_RUN
// - "refuse": prepareApplication returns KIVARA_PREPARE, with everything registered
// - "severe": a severe exception
// - "control": the control event KIVARA_CONTROL reaches the system's own routine for it, on a thread of its own
// - "exit": exit(KIVARA_RUN) without an event
// It records why the application ends, and of each singleton the deletion with the files that are left by then.

#include "frame_program.hpp"

#include "acleanup.hpp"
#include "aevents.hpp"
#include "tools/containers.hpp"
#include "tools/winapi.hpp"

namespace {

char const * const kFiles[] = {"a.tmp", "b.tmp", "c.tmp", "kept.tmp", "Case.tmp"};

void writeFiles() {
  for (char const * const name : kFiles)
    if (std::FILE * const file = std::fopen(name, "wb"))
      std::fclose(file);
}

/// The first letters of those that are there.
std::string filesLeft() {
  std::string letters;
  for (char const * const name : kFiles)
    if (GetFileAttributesA(name) != INVALID_FILE_ATTRIBUTES)
      letters += name[0];
  return letters;
}

class Singleton {
public:
  explicit Singleton(char const * name) : name_(name) {}
  ~Singleton() { record("%s deleted, files %s", name_, filesLeft().c_str()); }

private:
  char const * name_;
};

using ShownTexts = IKeySortedSet<SV::String, SV::String, std::less<SV::String>>;

void registerAll() {
  writeFiles();
  KivCleanUp & registry = KivCleanUp::Instance();
  registry.AddFileCleanUpAction("kept.tmp");
  registry.AddFileCleanUpAction("b.tmp");
  registry.AddAction(new KivSingletonDeleteAction<Singleton>(new Singleton("first")));
  registry.AddFileCleanUpAction("a.tmp");
  registry.AddAction(new KivSingletonDeleteAction<ShownTexts>(new ShownTexts{{"key", "text"}}));
  registry.AddFileCleanUpAction("Case.tmp");
  registry.AddAction(new KivSingletonDeleteAction<Singleton>(new Singleton("second")));
  registry.AddFileCleanUpAction("c.tmp");
  registry.AddFileCleanUpAction("c.tmp");
  registry.AddAction(new KivSingletonDeleteAction<Singleton>(new Singleton("third")));
  registry.RemoveFileCleanUpAction("kept.tmp");
  registry.RemoveFileCleanUpAction("case.tmp");
  registry.RemoveFileCleanUpAction("c.tmp");
}

class Witness : public KivEventListener {
public:
  Witness() { setEventHandler(KIV_EVENT_AppExit, &Witness::note, KIV_PRIORITY_EARLY); }

private:
  void note(KivEvent * event) {
    record("AppExit %s, files %s", static_cast<KivExitAppEvent *>(event)->GetReason().c_str(), filesLeft().c_str());
  }
};

/// The routine that the system starts its thread with.
void raiseControlEvent(int event) {
  auto const routine = reinterpret_cast<LPTHREAD_START_ROUTINE>(
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "CtrlRoutine")));
  HANDLE const thread =
      CreateThread(nullptr, 0, routine, reinterpret_cast<void *>(static_cast<std::uintptr_t>(event)), 0, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

class CleanUpProgram : public FrameProgram {
public:
  ~CleanUpProgram() override { record("destroyed, files %s", filesLeft().c_str()); }

  int prepareApplication() override {
    registerAll();
    return FrameProgram::prepareApplication();
  }

private:
  void run() override {
    std::string const way = setting("WAY");
    if (way == "severe")
      Exception(SV::EXC_SYSTEM_OBJECT_NOT_CREATED, 0);
    else if (way == "control")
      raiseControlEvent(number("CONTROL"));
    else if (way == "exit")
      std::exit(number("RUN"));
    record("returns");
  }

  Witness witness_;
};

CleanUpProgram program;

} // namespace

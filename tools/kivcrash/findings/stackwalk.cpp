#include "findings/stackwalk.hpp"

#include "common/text.hpp"

#include <dbghelp.h>

namespace kivcrash {
namespace {

constexpr std::size_t kMostFrames = 1'000;
constexpr std::uint64_t kGuessUpTo = std::uint64_t{64} << 10; // bytes of stack that a guess looks through
constexpr int kMostGuesses = 200;
/// Damaged tables may lead in a circle.
constexpr int kMostReadsOfFrame = 10'000;

/// What the callbacks of the system get in place of a process.
struct Target {
  AddressSpace const & space;
  int reads = 0;
  RUNTIME_FUNCTION function{};
};

BOOL CALLBACK readTarget(HANDLE process, DWORD64 address, PVOID to, DWORD size, LPDWORD done) {
  auto & target = *static_cast<Target *>(process);
  DWORD const count =
      ++target.reads <= kMostReadsOfFrame ? static_cast<DWORD>(target.space.read(address, to, size)) : 0;
  if (done != nullptr)
    *done = count;
  return count == size;
}

PVOID CALLBACK functionOfTarget(HANDLE process, DWORD64 address) {
  auto & target = *static_cast<Target *>(process);
  RUNTIME_FUNCTION const * const found = target.space.functionAt(address);
  if (found == nullptr)
    return nullptr;
  target.function = *found;
  return &target.function;
}

DWORD64 CALLBACK baseOfTarget(HANDLE process, DWORD64 address) {
  Module const * const module = static_cast<Target *>(process)->space.moduleAt(address);
  return module != nullptr ? module->base : 0;
}

STACKFRAME64 firstFrame(CONTEXT const & registers) {
  STACKFRAME64 frame{};
  frame.AddrPC = {registers.Rip, 0, AddrModeFlat};
  frame.AddrStack = {registers.Rsp, 0, AddrModeFlat};
  frame.AddrFrame = {registers.Rbp, 0, AddrModeFlat};
  return frame;
}

class Walker {
public:
  Walker(AddressSpace const & space, CONTEXT const & registers)
      : space_(&space), registers_(registers), guessFrom_(registers.Rsp) {}

  Walk walk() {
    skipCallToNowhere();
    for (bool isStopped = walkFrames(); isStopped && walk_.frames.size() < kMostFrames;) {
      std::optional<Walker> next = guess();
      if (!next)
        break;
      *this = *std::move(next);
      isStopped = isStopped_;
    }
    if (walk_.frames.size() >= kMostFrames)
      walk_.end = "more than " + std::to_string(kMostFrames) + " frames";
    return std::move(walk_);
  }

private:
  /// A call through a wrong pointer: the caller is what it would return to.
  void skipCallToNowhere() {
    if (space_->moduleAt(registers_.Rip) != nullptr)
      return;
    walk_.frames.push_back({registers_.Rip, false, false});
    isReturn_ = true;
    registers_.Rip = space_->readPointer(registers_.Rsp).value_or(0);
    registers_.Rsp += sizeof(std::uint64_t);
  }

  /// False where the walk is at its end; true where a module is in the way whose file is missing.
  bool walkFrames() {
    Target target{*space_};
    CONTEXT context = registers_;
    STACKFRAME64 frame = firstFrame(registers_);
    std::uint64_t stack = 0;
    walk_.end.clear();
    while (walk_.frames.size() < kMostFrames) {
      target.reads = 0;
      if (!StackWalk64(IMAGE_FILE_MACHINE_AMD64, &target, nullptr, &frame, &context, readTarget, functionOfTarget,
                       baseOfTarget, nullptr)) {
        walk_.end = isAtBeginning(frame.AddrReturn.Offset) ? "" : "the stack cannot be read further";
        return false;
      }
      if (frame.AddrPC.Offset == 0) {
        walk_.end = hasModule_ ? "" : "the stack cannot be read";
        return false;
      }
      if (frame.AddrStack.Offset < stack)
        return stopped("the stack is damaged: it leads back", false);
      stack = frame.AddrStack.Offset;
      Module const * const module = space_->moduleAt(frame.AddrPC.Offset);
      if (module == nullptr)
        return stopped("the stack leads to " + hex(frame.AddrPC.Offset) + ", where no module was",
                       !walk_.frames.empty());
      add(frame.AddrPC.Offset);
      guessFrom_ = stack;
      if (space_->imageAt(frame.AddrPC.Offset) == nullptr)
        return stopped("no file of this machine fits " + std::string(fileName(module->path)), true);
    }
    return false;
  }

  bool isAtBeginning(std::uint64_t next) const { return next == 0 && hasModule_; }

  void add(std::uint64_t address) {
    walk_.frames.push_back({address, isReturn_, isGuess_});
    hasModule_ = true;
    isReturn_ = true;
    isGuess_ = false;
  }

  bool stopped(std::string reason, bool isGuessUseful) {
    walk_.end = std::move(reason);
    return isGuessUseful;
  }

  /// How it goes on from the next place on the stack that looks like a return address. The registers but the stack's are not known
  /// there. What earlier calls left behind looks the same, but seldom leads to another function.
  std::optional<Walker> guess() const {
    std::optional<Walker> first;
    int tried = 0;
    for (std::uint64_t at = guessFrom_; at < guessFrom_ + kGuessUpTo && tried < kMostGuesses; at += sizeof at) {
      std::optional<std::uint64_t> const value = space_->readPointer(at);
      if (!value)
        break;
      if (!space_->isAfterCall(*value))
        continue;
      ++tried;
      Walker next = from(*value, at + sizeof at);
      if (next.walk_.frames.size() > walk_.frames.size() + 1)
        return next;
      if (!first)
        first = std::move(next);
    }
    return first;
  }

  Walker from(std::uint64_t code, std::uint64_t stack) const {
    Walker next = *this;
    next.registers_.Rip = code;
    next.registers_.Rsp = stack;
    next.guessFrom_ = stack;
    next.isGuess_ = true;
    next.isStopped_ = next.walkFrames();
    return next;
  }

  AddressSpace const * space_;
  CONTEXT registers_;
  Walk walk_;
  bool hasModule_ = false; ///< whether the walk has been through one
  bool isReturn_ = false;
  bool isGuess_ = false;
  bool isStopped_ = false; ///< where a guess helps
  std::uint64_t guessFrom_;
};

} // namespace

Walk walkStack(AddressSpace const & space, CONTEXT const & registers) { return Walker(space, registers).walk(); }

} // namespace kivcrash

#pragma once
/// \file
/// Minidumps of 64-bit programs, as MiniDumpWriteDump writes them.

#include "common/text.hpp"
#include "tools/winapi.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kivcrash {

/// A program or DLL that was loaded.
struct Module {
  std::uint64_t base = 0;
  std::uint32_t size = 0;
  std::uint32_t checkSum = 0;
  std::uint32_t timeStamp = 0; ///< the moment that the linker wrote into its header
  std::string path;            ///< on the machine that failed
  std::string version;         ///< four numbers; empty where the file has no properties
};

struct MemoryRange {
  std::uint64_t address = 0;
  std::string_view bytes;
};

struct Thread {
  std::uint32_t id = 0;
  MemoryRange stack;
  std::optional<CONTEXT> context; ///< its registers
};

struct Exception {
  std::uint32_t threadId = 0;
  std::uint32_t code = 0;
  std::uint64_t address = 0;
  std::vector<std::uint64_t> parameters;
  std::optional<CONTEXT> context; ///< the registers at the fault
};

struct System {
  unsigned major = 0;
  unsigned minor = 0;
  unsigned build = 0;
  unsigned processors = 0;
  std::string servicePack;
};

/// All views are into the bytes that it was read from.
struct Dump {
  std::uint32_t time = 0; ///< seconds since 1970, UTC
  std::optional<System> system;
  std::vector<Module> modules;               ///< the program first
  std::vector<std::size_t> modulesByAddress; ///< their places in the list; without those at impossible addresses
  std::vector<Thread> threads;
  std::vector<MemoryRange> memory; ///< by address; none overlap
  std::optional<Exception> exception;

  /// Null where none has the address in it.
  Module const * moduleAt(std::uint64_t address) const;
  /// Null where there is none of that number.
  Thread const * thread(std::uint32_t id) const;
  /// Copies as many bytes as the dump has from the address on, and returns how many those are.
  std::size_t readMemory(std::uint64_t address, void * to, std::size_t size) const;
};

/// Whether the bytes begin as those of a minidump.
bool isDump(std::string_view bytes);

/// What can be read of it; nothing where not even its list of contents can.
/// \param problems  gets all that is damaged, missing or contradicts itself
std::optional<Dump> readDump(std::string_view bytes, Problems & problems);

} // namespace kivcrash

#pragma once
/// \file
/// The parts of a minidump, each read by itself.

#include "common/bytes.hpp"
#include "crash/dump.hpp"

#include <dbghelp.h>

#include <map>

namespace kivcrash {

using Streams = std::map<std::uint32_t, Bytes>;

/// Each operation returns what can be read, and reports the rest to the problems that the reader was made with.
class DumpReader {
public:
  DumpReader(Bytes const & file, Streams const & streams, Problems & problems)
      : file_(file), streams_(streams), problems_(problems) {}

  std::optional<System> system() const;
  std::vector<Module> modules() const;
  std::vector<Thread> threads() const;
  std::vector<MemoryRange> memory() const;
  std::optional<Exception> exception() const;

private:
  /// The entries of a part that begins with their number.
  template <class Entry> std::vector<Entry> entries(std::uint32_t stream, char const * what) const;
  std::optional<std::string> string(std::uint32_t rva) const;
  std::optional<CONTEXT> context(MINIDUMP_LOCATION_DESCRIPTOR const & place) const;
  std::string_view bytesOf(MINIDUMP_LOCATION_DESCRIPTOR const & place, char const * what) const;
  std::vector<MemoryRange> largeMemory() const;
  void damaged(std::string const & what) const;

  Bytes file_;
  Streams const & streams_;
  Problems & problems_;
};

} // namespace kivcrash

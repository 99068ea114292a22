#include "crash/dump.hpp"

#include "common/bytes.hpp"
#include "crash/dumpstreams.hpp"

#include <algorithm>
#include <cstring>

namespace kivcrash {
namespace {

constexpr std::uint32_t kSignature = 0x504D444D; // "MDMP"
constexpr std::uint32_t kVersion = 0xA793;       // in the low half; the rest is the writer's own
constexpr std::uint32_t kMostStreams = 1'000;

/// The contents by kind. Of two of one kind, the first counts.
std::optional<Streams> readStreams(Bytes const & file, MINIDUMP_HEADER const & header, Problems & problems) {
  if (header.NumberOfStreams == 0 || header.NumberOfStreams > kMostStreams ||
      !file.part(header.StreamDirectoryRva, std::uint64_t{header.NumberOfStreams} * sizeof(MINIDUMP_DIRECTORY))) {
    problems.emplace_back("the minidump is damaged or cut off: its list of contents is not there");
    return std::nullopt;
  }
  Streams streams;
  for (std::uint32_t i = 0; i < header.NumberOfStreams; ++i) {
    auto const entry = *file.read<MINIDUMP_DIRECTORY>(header.StreamDirectoryRva + i * sizeof(MINIDUMP_DIRECTORY));
    if (entry.StreamType == UnusedStream)
      continue;
    std::optional<Bytes> const content = file.part(entry.Location.Rva, entry.Location.DataSize);
    if (!content)
      problems.push_back("the minidump is damaged or cut off: part " + std::to_string(entry.StreamType) +
                         " goes beyond its end");
    else
      streams.emplace(entry.StreamType, *content);
  }
  return streams;
}

/// A thread's stack may also lie among the memory; readers of memory look there alone. Each byte is kept once: however many
/// pieces a damaged dump has, one search finds an address.
void joinStacks(Dump & dump) {
  for (Thread const & thread : dump.threads)
    if (!thread.stack.bytes.empty())
      dump.memory.push_back(thread.stack);
  std::ranges::sort(dump.memory, {}, &MemoryRange::address);
  std::vector<MemoryRange> pieces;
  std::uint64_t end = 0;
  for (MemoryRange const & range : dump.memory) {
    std::uint64_t const known = end > range.address ? end - range.address : 0;
    if (known >= range.bytes.size())
      continue;
    pieces.push_back({range.address + known, range.bytes.substr(known)});
    end = range.address + range.bytes.size();
  }
  dump.memory = std::move(pieces);
}

void sortModules(Dump & dump, Problems & problems) {
  std::vector<std::size_t> & order = dump.modulesByAddress;
  for (std::size_t i = 0; i < dump.modules.size(); ++i)
    if (dump.modules[i].size != 0)
      order.push_back(i);
  std::ranges::sort(order, {}, [&](std::size_t i) { return dump.modules[i].base; });
  for (std::size_t i = 1; i < order.size(); ++i) {
    Module const & one = dump.modules[order[i - 1]];
    Module const & other = dump.modules[order[i]];
    if (other.base - one.base < one.size) {
      problems.push_back("the minidump is damaged: the modules " + one.path + " and " + other.path + " overlap");
      return;
    }
  }
}

void checkThreads(Dump const & dump, Problems & problems) {
  for (Thread const & thread : dump.threads) {
    if (!thread.context)
      continue;
    std::uint64_t const top = thread.context->Rsp;
    // A thread that was stopped within the system may be on another stack; the one of the fault is checked by its walk.
    if (thread.stack.bytes.empty() && top != 0)
      problems.push_back("the minidump has no stack of thread " + std::to_string(thread.id));
  }
  if (dump.exception && dump.thread(dump.exception->threadId) == nullptr)
    problems.push_back("the minidump is damaged: its exception is of thread " +
                       std::to_string(dump.exception->threadId) + ", which it does not have");
}

} // namespace

Module const * Dump::moduleAt(std::uint64_t address) const {
  auto const after =
      std::ranges::upper_bound(modulesByAddress, address, {}, [this](std::size_t i) { return modules[i].base; });
  if (after == modulesByAddress.begin())
    return nullptr;
  Module const & module = modules[*std::prev(after)];
  return address - module.base < module.size ? &module : nullptr;
}

Thread const * Dump::thread(std::uint32_t id) const {
  auto const found = std::ranges::find(threads, id, &Thread::id);
  return found == threads.end() ? nullptr : &*found;
}

std::size_t Dump::readMemory(std::uint64_t address, void * to, std::size_t size) const {
  std::size_t done = 0;
  while (done < size) {
    std::uint64_t const at = address + done;
    auto const after = std::ranges::upper_bound(memory, at, {}, &MemoryRange::address);
    if (after == memory.begin() || at - std::prev(after)->address >= std::prev(after)->bytes.size())
      break;
    std::string_view const found = std::prev(after)->bytes.substr(at - std::prev(after)->address, size - done);
    std::memcpy(static_cast<char *>(to) + done, found.data(), found.size());
    done += found.size();
  }
  return done;
}

bool isDump(std::string_view bytes) { return Bytes(bytes).read<std::uint32_t>(0) == kSignature; }

std::optional<Dump> readDump(std::string_view bytes, Problems & problems) {
  Bytes const file(bytes);
  auto const header = file.read<MINIDUMP_HEADER>(0);
  if (!header || header->Signature != kSignature || (header->Version & 0xFFFF) != kVersion) {
    problems.emplace_back(header ? "this is no minidump" : "the minidump is cut off");
    return std::nullopt;
  }
  std::optional<Streams> const streams = readStreams(file, *header, problems);
  if (!streams)
    return std::nullopt;
  DumpReader const reader(file, *streams, problems);
  Dump dump;
  dump.time = header->TimeDateStamp;
  dump.system = reader.system();
  dump.modules = reader.modules();
  dump.threads = reader.threads();
  dump.memory = reader.memory();
  dump.exception = reader.exception();
  joinStacks(dump);
  sortModules(dump, problems);
  checkThreads(dump, problems);
  return dump;
}

} // namespace kivcrash

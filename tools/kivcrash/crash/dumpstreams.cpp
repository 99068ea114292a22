#include "crash/dumpstreams.hpp"

namespace kivcrash {
namespace {

// The structures are those of the file as they stand.
static_assert(sizeof(MINIDUMP_MODULE) == 108 && sizeof(MINIDUMP_THREAD) == 48 &&
              sizeof(MINIDUMP_EXCEPTION_STREAM) == 168);
static_assert(sizeof(MINIDUMP_MEMORY_DESCRIPTOR) == 16 && sizeof(MINIDUMP_DIRECTORY) == 12 &&
              sizeof(MINIDUMP_HEADER) == 32);

constexpr std::uint16_t kAmd64 = PROCESSOR_ARCHITECTURE_AMD64;
constexpr std::uint32_t kMostEntries = 100'000;
constexpr std::uint32_t kLongestString = 65'536; // bytes
constexpr std::uint64_t kEndOfAddresses = std::uint64_t{1} << 63;

std::string versionOf(VS_FIXEDFILEINFO const & info) {
  if (info.dwSignature != VS_FFI_SIGNATURE)
    return "";
  auto const number = [](DWORD value) { return std::to_string(value); };
  return number(HIWORD(info.dwFileVersionMS)) + '.' + number(LOWORD(info.dwFileVersionMS)) + '.' +
         number(HIWORD(info.dwFileVersionLS)) + '.' + number(LOWORD(info.dwFileVersionLS));
}

bool fits(std::uint64_t address, std::uint64_t size) {
  return address < kEndOfAddresses && size <= kEndOfAddresses - address;
}

} // namespace

void DumpReader::damaged(std::string const & what) const {
  problems_.push_back("the minidump is damaged or cut off: " + what);
}

template <class Entry> std::vector<Entry> DumpReader::entries(std::uint32_t stream, char const * what) const {
  auto const found = streams_.find(stream);
  if (found == streams_.end()) {
    problems_.push_back(std::string("the minidump has no list of ") + what);
    return {};
  }
  Bytes const & content = found->second;
  auto const count = content.read<std::uint32_t>(0);
  // Some writers align the entries to eight bytes.
  std::uint64_t const needed = count ? std::uint64_t{*count} * sizeof(Entry) : 0;
  std::uint64_t const start = content.size() == needed + 8 ? 8 : 4;
  if (!count || *count > kMostEntries || !content.part(start, needed)) {
    damaged(std::string("its list of ") + what + " is not whole");
    return {};
  }
  std::vector<Entry> list;
  for (std::uint32_t i = 0; i < *count; ++i)
    list.push_back(*content.read<Entry>(start + i * sizeof(Entry)));
  return list;
}

std::optional<std::string> DumpReader::string(std::uint32_t rva) const {
  auto const length = file_.read<std::uint32_t>(rva);
  if (!length || *length > kLongestString || *length % 2 != 0)
    return std::nullopt;
  std::optional<Bytes> const bytes = file_.part(std::uint64_t{rva} + 4, *length);
  if (!bytes)
    return std::nullopt;
  std::wstring wide(*length / 2, L'\0');
  std::memcpy(wide.data(), bytes->text().data(), *length);
  return toUtf8(std::wstring_view(wide));
}

std::string_view DumpReader::bytesOf(MINIDUMP_LOCATION_DESCRIPTOR const & place, char const * what) const {
  std::optional<Bytes> const bytes = file_.part(place.Rva, place.DataSize);
  if (bytes)
    return bytes->text();
  damaged(std::string(what) + " goes beyond its end");
  return file_.partUpToEnd(place.Rva, place.DataSize).text();
}

std::optional<CONTEXT> DumpReader::context(MINIDUMP_LOCATION_DESCRIPTOR const & place) const {
  std::optional<Bytes> const bytes = file_.part(place.Rva, place.DataSize);
  auto found = bytes ? bytes->read<CONTEXT>(0) : std::nullopt;
  constexpr DWORD kNeeded = CONTEXT_CONTROL + (CONTEXT_INTEGER - CONTEXT_AMD64);
  if (!found || (found->ContextFlags & kNeeded) != kNeeded) {
    damaged("registers are not there");
    return std::nullopt;
  }
  return found;
}

std::optional<System> DumpReader::system() const {
  auto const found = streams_.find(SystemInfoStream);
  auto const info = found != streams_.end() ? found->second.read<MINIDUMP_SYSTEM_INFO>(0) : std::nullopt;
  if (!info) {
    problems_.emplace_back("the minidump does not say on which system it was written");
    return std::nullopt;
  }
  if (info->ProcessorArchitecture != kAmd64)
    damaged("it is not of a 64-bit program (processor " + std::to_string(info->ProcessorArchitecture) + ")");
  System system{info->MajorVersion, info->MinorVersion, info->BuildNumber, info->NumberOfProcessors, ""};
  if (info->CSDVersionRva != 0) {
    std::optional<std::string> const pack = string(info->CSDVersionRva);
    if (!pack || hasControlCharacter(*pack))
      damaged("the name of the service pack cannot be read");
    else
      system.servicePack = *pack;
  }
  return system;
}

std::vector<Module> DumpReader::modules() const {
  std::vector<Module> modules;
  for (MINIDUMP_MODULE const & entry : entries<MINIDUMP_MODULE>(ModuleListStream, "modules")) {
    std::string const number = std::to_string(modules.size() + 1);
    std::optional<std::string> path = string(entry.ModuleNameRva);
    if (!path || path->empty() || hasControlCharacter(*path)) {
      damaged("the name of module " + number + " cannot be read");
      path = "module " + number;
    }
    Module module{entry.BaseOfImage,           entry.SizeOfImage, entry.CheckSum, entry.TimeDateStamp, *path,
                  versionOf(entry.VersionInfo)};
    if (module.base % 0x10000 != 0 || module.size == 0 || !fits(module.base, module.size)) {
      damaged(*path + " lies at an impossible address");
      module.size = 0;
    }
    modules.push_back(module);
  }
  return modules;
}

std::vector<Thread> DumpReader::threads() const {
  std::vector<Thread> threads;
  for (MINIDUMP_THREAD const & entry : entries<MINIDUMP_THREAD>(ThreadListStream, "threads")) {
    Thread thread{
        entry.ThreadId, {entry.Stack.StartOfMemoryRange, bytesOf(entry.Stack.Memory, "a stack")}, std::nullopt};
    if (!fits(thread.stack.address, thread.stack.bytes.size())) {
      damaged("the stack of thread " + std::to_string(entry.ThreadId) + " lies at an impossible address");
      thread.stack = {};
    }
    thread.context = context(entry.ThreadContext);
    threads.push_back(thread);
  }
  return threads;
}

std::vector<MemoryRange> DumpReader::memory() const {
  if (streams_.contains(Memory64ListStream))
    return largeMemory();
  std::vector<MemoryRange> ranges;
  if (!streams_.contains(MemoryListStream))
    return ranges; // the stacks are enough
  for (auto const & entry : entries<MINIDUMP_MEMORY_DESCRIPTOR>(MemoryListStream, "memory")) {
    MemoryRange const range{entry.StartOfMemoryRange, bytesOf(entry.Memory, "a piece of memory")};
    if (!fits(range.address, range.bytes.size()))
      damaged("a piece of memory lies at an impossible address");
    else
      ranges.push_back(range);
  }
  return ranges;
}

/// Of a dump with all memory: the pieces follow each other in the file.
std::vector<MemoryRange> DumpReader::largeMemory() const {
  Bytes const & content = streams_.at(Memory64ListStream);
  auto const count = content.read<std::uint64_t>(0);
  auto place = content.read<std::uint64_t>(8);
  std::vector<MemoryRange> ranges;
  for (std::uint64_t i = 0; count && place && i < *count; ++i) {
    auto const entry = content.read<MINIDUMP_MEMORY_DESCRIPTOR64>(16 + i * sizeof(MINIDUMP_MEMORY_DESCRIPTOR64));
    std::optional<Bytes> const bytes = entry ? file_.part(*place, entry->DataSize) : std::nullopt;
    if (!bytes || !fits(entry->StartOfMemoryRange, entry->DataSize)) {
      damaged("not all of its memory is there");
      return ranges;
    }
    ranges.push_back({entry->StartOfMemoryRange, bytes->text()});
    *place += entry->DataSize;
  }
  if (!count || !place)
    damaged("not all of its memory is there");
  return ranges;
}

std::optional<Exception> DumpReader::exception() const {
  auto const found = streams_.find(ExceptionStream);
  if (found == streams_.end())
    return std::nullopt;
  auto const entry = found->second.read<MINIDUMP_EXCEPTION_STREAM>(0);
  if (!entry) {
    damaged("the exception is not whole");
    return std::nullopt;
  }
  MINIDUMP_EXCEPTION const & record = entry->ExceptionRecord;
  Exception exception{
      entry->ThreadId, record.ExceptionCode, record.ExceptionAddress, {}, context(entry->ThreadContext)};
  if (record.NumberParameters > EXCEPTION_MAXIMUM_PARAMETERS)
    damaged("the exception has " + std::to_string(record.NumberParameters) + " parameters");
  for (std::uint32_t i = 0; i < record.NumberParameters && i < EXCEPTION_MAXIMUM_PARAMETERS; ++i)
    exception.parameters.push_back(record.ExceptionInformation[i]);
  return exception;
}

} // namespace kivcrash

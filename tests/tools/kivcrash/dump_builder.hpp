#pragma once
/// \file
/// Minidumps made by the tests, byte by byte.

#include "tools/winapi.hpp"

#include <dbghelp.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kivtest {

/// The bytes of a value.
template <class T> std::string bytesOf(T const & value) {
  return {reinterpret_cast<char const *>(&value), sizeof value};
}

inline std::string wideBytes(std::wstring_view text) {
  return {reinterpret_cast<char const *>(text.data()), text.size() * sizeof(wchar_t)};
}

/// \code
///   DumpBuilder dump;
///   dump.addModule(0x140000000, 0x10000, L"C:\\orders.exe");
///   dump.addThread(7, 0x20000, std::string(64, 'x'), {...});
///   auto const read = kivcrash::readDump(dump.bytes(), problems);
/// \endcode
class DumpBuilder {
public:
  MINIDUMP_HEADER header{};
  MINIDUMP_SYSTEM_INFO system{};
  std::vector<MINIDUMP_MODULE> modules;
  std::vector<MINIDUMP_THREAD> threads;
  std::vector<MINIDUMP_MEMORY_DESCRIPTOR> memory;
  MINIDUMP_EXCEPTION_STREAM exception{};
  bool hasException = true;
  bool hasSystem = true;
  bool hasThreads = true;
  bool hasModules = true;

  DumpBuilder() {
    header.Signature = 0x504D444D; // "MDMP"
    header.Version = MINIDUMP_VERSION;
    header.TimeDateStamp = 1'763'800'215; // 2025-11-22 08:30:15
    system.ProcessorArchitecture = PROCESSOR_ARCHITECTURE_AMD64;
    system.MajorVersion = 10;
    system.BuildNumber = 19'045;
    system.NumberOfProcessors = 8;
  }

  /// Puts bytes after the header and returns their place.
  std::uint32_t place(std::string_view bytes) {
    auto const at = static_cast<std::uint32_t>(sizeof header + content_.size());
    content_ += bytes;
    content_.resize((content_.size() + 7) / 8 * 8);
    return at;
  }

  std::uint32_t placeString(std::wstring_view text) {
    return place(bytesOf(static_cast<std::uint32_t>(text.size() * sizeof(wchar_t))) + wideBytes(text) +
                 std::string(sizeof(wchar_t), '\0'));
  }

  MINIDUMP_LOCATION_DESCRIPTOR placed(std::string_view bytes) {
    return {static_cast<ULONG32>(bytes.size()), place(bytes)};
  }

  MINIDUMP_MODULE & addModule(std::uint64_t base, std::uint32_t size, std::wstring_view path) {
    MINIDUMP_MODULE module{};
    module.BaseOfImage = base;
    module.SizeOfImage = size;
    module.ModuleNameRva = placeString(path);
    modules.push_back(module);
    return modules.back();
  }

  static CONTEXT registers(std::uint64_t code, std::uint64_t stack) {
    CONTEXT context{};
    context.ContextFlags = CONTEXT_FULL;
    context.Rip = code;
    context.Rsp = stack;
    return context;
  }

  MINIDUMP_THREAD & addThread(std::uint32_t id, std::uint64_t stack, std::string_view bytes, CONTEXT const & context) {
    MINIDUMP_THREAD thread{};
    thread.ThreadId = id;
    thread.Stack.StartOfMemoryRange = stack;
    thread.Stack.Memory = placed(bytes);
    thread.ThreadContext = placed(bytesOf(context));
    threads.push_back(thread);
    return threads.back();
  }

  void setException(std::uint32_t thread, std::uint32_t code, CONTEXT const & context,
                    std::vector<std::uint64_t> const & parameters = {}) {
    exception.ThreadId = thread;
    exception.ExceptionRecord.ExceptionCode = code;
    exception.ExceptionRecord.ExceptionAddress = context.Rip;
    exception.ExceptionRecord.NumberParameters = static_cast<ULONG32>(parameters.size());
    for (std::size_t i = 0; i < parameters.size(); ++i)
      exception.ExceptionRecord.ExceptionInformation[i] = parameters[i];
    exception.ThreadContext = placed(bytesOf(context));
  }

  void addMemory(std::uint64_t address, std::string_view bytes) { memory.push_back({address, placed(bytes)}); }

  /// A further part.
  void addStream(std::uint32_t kind, std::string_view bytes) { streams_.push_back({kind, placed(bytes)}); }

  std::string bytes() {
    if (hasSystem)
      addStream(SystemInfoStream, bytesOf(system));
    if (hasThreads)
      addList(ThreadListStream, threads);
    if (hasModules)
      addList(ModuleListStream, modules);
    if (!memory.empty())
      addList(MemoryListStream, memory);
    if (hasException)
      addStream(ExceptionStream, bytesOf(exception));
    std::string directory;
    for (MINIDUMP_DIRECTORY const & each : streams_)
      directory += bytesOf(each);
    header.NumberOfStreams = static_cast<ULONG32>(streams_.size());
    header.StreamDirectoryRva = place(directory);
    return bytesOf(header) + content_;
  }

private:
  template <class Entry> void addList(std::uint32_t kind, std::vector<Entry> const & entries) {
    std::string list = bytesOf(static_cast<std::uint32_t>(entries.size()));
    for (Entry const & entry : entries)
      list += bytesOf(entry);
    addStream(kind, list);
  }

  std::string content_;
  std::vector<MINIDUMP_DIRECTORY> streams_;
};

/// One of a program with two modules, two threads and an access violation in the second.
inline DumpBuilder soundDump() {
  DumpBuilder dump;
  MINIDUMP_MODULE & program = dump.addModule(0x140000000, 0x10000, L"C:\\orders\\orders.exe");
  program.TimeDateStamp = 0x12345678;
  program.CheckSum = 0x9ABC;
  program.VersionInfo.dwSignature = VS_FFI_SIGNATURE;
  program.VersionInfo.dwFileVersionMS = 0x00070002;
  program.VersionInfo.dwFileVersionLS = 0x000013BA;
  dump.addModule(0x7FF800000000, 0x20000, L"C:\\Windows\\B\u00E4r.dll");
  dump.addThread(7, 0x20000, std::string(64, 'a'), DumpBuilder::registers(0x140001000, 0x20008));
  CONTEXT const fault = DumpBuilder::registers(0x140001234, 0x30010);
  dump.addThread(8, 0x30000, std::string(64, 'b'), fault);
  dump.setException(8, STATUS_ACCESS_VIOLATION, fault, {1, 0x10});
  return dump;
}

} // namespace kivtest

#include "diagnostics/crash/times.hpp"

#include "diagnostics/crash/report.hpp"
#include "handles/handle.hpp"

namespace kivara::crash {
namespace {

constexpr std::uint64_t kTicksPerMillisecond = 10000; // a tick is 100 ns

void writeTime(char const * label, SYSTEMTIME const & time) {
  write("%s%02d.%02d.%04d, %02d:%02d.%02d\r\n", label, time.wDay, time.wMonth, time.wYear, time.wHour, time.wMinute,
        time.wSecond);
}

void writeTime(char const * label, FILETIME const & time) {
  SYSTEMTIME parts{};
  FileTimeToSystemTime(&time, &parts);
  writeTime(label, parts);
}

std::uint64_t ticks(FILETIME const & time) {
  return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

/// Time that was worked. Its hours go on beyond a day.
void writeWork(char const * label, FILETIME const & time) {
  TimeParts const parts = partsOf(ticks(time) / kTicksPerMillisecond);
  write("%s%02d:%02d.%02d.%03d\r\n", label, static_cast<int>(parts.days * 24 + parts.hours),
        static_cast<int>(parts.minutes), static_cast<int>(parts.seconds), static_cast<int>(parts.milliseconds));
}

void writeUpTime(char const * label, std::uint64_t milliseconds) {
  TimeParts const parts = partsOf(milliseconds);
  write("%s%dd %02dh %02dm %02ds %03dms\r\n", label, static_cast<int>(parts.days), static_cast<int>(parts.hours),
        static_cast<int>(parts.minutes), static_cast<int>(parts.seconds), static_cast<int>(parts.milliseconds));
}

bool isNTFamily() {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
  return GetVersionExA(&version) && version.dwPlatformId == VER_PLATFORM_WIN32_NT;
}

using GetTimes = BOOL WINAPI(HANDLE, FILETIME *, FILETIME *, FILETIME *, FILETIME *);

void writeTimesBy(GetTimes * getTimes) {
  FILETIME creation{}, exit{}, kernel{}, user{}, now{};
  if (!getTimes(GetCurrentProcess(), &creation, &exit, &kernel, &user)) {
    write("# GetProcessTimes failed with EC %d\r\n", static_cast<int>(GetLastError()));
    return;
  }
  GetSystemTimeAsFileTime(&now);
  write("  Process times:\r\n");
  writeTime("    Creation time....: ", creation);
  writeWork("    Kernel time......: ", kernel);
  writeWork("    User time........: ", user);
  writeUpTime("    Up time..........: ", (ticks(now) - ticks(creation)) / kTicksPerMillisecond);
}

} // namespace

void writeCrashTimes() {
  SYSTEMTIME time{};
  GetSystemTime(&time);
  writeTime("  System crash time: ", time);
  GetLocalTime(&time);
  writeTime("  Local crash time.: ", time);
}

void writeExecutable() {
  char path[kPathSize] = "";
  GetModuleFileNameA(nullptr, path, kPathSize);
  path[kPathSize - 1] = '\0';
  write("  Module name......: '%s'\r\n", path);
  handles::File const file(CreateFileA(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  BY_HANDLE_FILE_INFORMATION facts{};
  if (!file || !GetFileInformationByHandle(file.get(), &facts)) {
    write("# File size and time could not be determined (EC %d)\r\n", static_cast<int>(GetLastError()));
    return;
  }
  write("  Module file size.: %08X%08Xh %ld (high: %ld)\r\n", static_cast<unsigned>(facts.nFileSizeHigh),
        static_cast<unsigned>(facts.nFileSizeLow), static_cast<long>(facts.nFileSizeLow),
        static_cast<long>(facts.nFileSizeHigh));
  write("  Executable times:\r\n");
  writeTime("    Creation time....: ", facts.ftCreationTime);
  writeTime("    Last access time.: ", facts.ftLastAccessTime);
  writeTime("    Last write time..: ", facts.ftLastWriteTime);
}

void writeProcessTimes() {
  if (!isNTFamily()) {
    write("# GetProcessTimes is not supported\r\n");
    return;
  }
  handles::Module const kernel(LoadLibraryA("kernel32.dll"));
  if (!kernel) {
    write("# Failed to load kernel32.dll\r\n");
    return;
  }
  FARPROC const function = GetProcAddress(kernel.get(), "GetProcessTimes");
  if (function == nullptr)
    write("# Failed to find GetProcessTimes in kernel32.dll\r\n");
  else
    writeTimesBy(reinterpret_cast<GetTimes *>(reinterpret_cast<void (*)()>(function)));
}

void writeSystemUpTime() { writeUpTime("  System up time.....: ", GetTickCount()); }

} // namespace kivara::crash

#include "common/wholefile.hpp"

#include "common/text.hpp"
#include "handles/handle.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <stdexcept>
#include <system_error>

namespace kivcrash {
namespace {

/// The last error of the system.
[[noreturn]] void failed(std::filesystem::path const & path) {
  auto const code = static_cast<int>(GetLastError());
  throw std::runtime_error(toUtf8(path) + ": cannot be read: " + std::system_category().message(code));
}

} // namespace

std::string readWhole(std::filesystem::path const & path) {
  // A report may still be open in the program that writes it.
  handles::File const file(CreateFileW(path.c_str(), GENERIC_READ,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                       FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  LARGE_INTEGER size{};
  if (!file || !GetFileSizeEx(file.get(), &size))
    failed(path);
  std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
  constexpr std::size_t kAtOnce = std::size_t{1} << 30;
  for (std::size_t done = 0; done < bytes.size();) {
    DWORD count = 0;
    auto const wanted = static_cast<DWORD>(std::min(kAtOnce, bytes.size() - done));
    if (!ReadFile(file.get(), bytes.data() + done, wanted, &count, nullptr))
      failed(path);
    done += count;
    if (count == 0)
      bytes.resize(done);
  }
  return bytes;
}

std::filesystem::path fullPath(std::filesystem::path const & path) {
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0'); // with room for the zero
  full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full.empty() ? path : std::filesystem::path(full);
}

bool isFile(std::filesystem::path const & path) {
  DWORD const attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

} // namespace kivcrash

#include "fileaccess.hpp"

#include "tools/winapi.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace kivml {
namespace {

[[noreturn]] void failed(char const * what, std::string const & name, std::string const & reason) {
  throw std::runtime_error(name + ": cannot be " + what + ": " + reason);
}

std::string systemReason() { return "system error " + std::to_string(GetLastError()); }

} // namespace

std::string readFile(std::string const & name) {
  FILE * const file = std::fopen(name.c_str(), "rb");
  if (file == nullptr)
    failed("read", name, std::strerror(errno));
  std::string bytes;
  char block[1 << 16];
  while (std::size_t const count = std::fread(block, 1, sizeof block, file))
    bytes.append(block, count);
  bool const isWhole = std::ferror(file) == 0;
  std::fclose(file);
  if (!isWhole)
    failed("read", name, "an error on the way");
  return bytes;
}

void writeFile(std::string const & name, std::string const & bytes) {
  std::string const temporary = name + ".new";
  FILE * const file = std::fopen(temporary.c_str(), "wb");
  if (file == nullptr)
    failed("written", name, std::strerror(errno));
  bool const isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  bool const isClosed = std::fclose(file) == 0;
  if (!isWritten || !isClosed) {
    std::remove(temporary.c_str());
    failed("written", name, "an error on the way");
  }
  if (!MoveFileExA(temporary.c_str(), name.c_str(), MOVEFILE_REPLACE_EXISTING)) {
    std::string const reason = systemReason();
    std::remove(temporary.c_str());
    failed("written", name, reason);
  }
}

} // namespace kivml

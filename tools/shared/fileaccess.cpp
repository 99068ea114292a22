#include "shared/fileaccess.hpp"

#include "handles/handle.hpp"
#include "tools/winapi.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <system_error>

namespace kivtools {
namespace {

[[noreturn]] void failed(char const * what, std::string const & name, std::string const & reason) {
  throw std::runtime_error(name + ": cannot be " + what + ": " + reason);
}

/// The number of the system's last error, with the system's text for it.
std::string systemReason() {
  auto const code = static_cast<int>(GetLastError());
  return "system error " + std::to_string(code) + " (" + std::system_category().message(code) + ')';
}

} // namespace

std::string readFile(std::string const & name) {
  handles::Stream const file(std::fopen(name.c_str(), "rb"));
  if (!file)
    failed("read", name, std::strerror(errno));
  std::string bytes;
  char block[1 << 16];
  while (std::size_t const count = std::fread(block, 1, sizeof block, file.get()))
    bytes.append(block, count);
  if (std::ferror(file.get()) != 0)
    failed("read", name, "an error on the way");
  return bytes;
}

void writeFile(std::string const & name, std::string const & bytes) {
  std::string const temporary = name + ".new";
  handles::Stream file(std::fopen(temporary.c_str(), "wb"));
  if (!file)
    failed("written", name, std::strerror(errno));
  bool const isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  bool const isClosed = std::fclose(file.release()) == 0;
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

} // namespace kivtools

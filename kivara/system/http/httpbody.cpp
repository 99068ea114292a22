#include "system/http/httpbody.hpp"

#include "tools/winapi.hpp"

#include <cstring>
#include <utility>

using SV::WString;

namespace kivara {
namespace {

constexpr std::size_t kFirstCapacity = 10'240;

// The text of so many bytes is a WString in any case, and their number with the NUL an int.
constexpr std::size_t kMostBytes = SV::STRING_MAXLEN;

std::optional<WString> convert(UINT codePage, DWORD flags, char const * bytes, int size) {
  int const count = MultiByteToWideChar(codePage, flags, bytes, size, nullptr, 0);
  if (count < 1)
    return std::nullopt;
  WString text = WString::ofLength(count - 1);
  if (count > 1) {
    MultiByteToWideChar(codePage, flags, bytes, size, text.writable(), count);
    text.writable()[count - 1] = L'\0'; // some code pages take the NUL for the second byte of a cut character
  }
  return text;
}

} // namespace

bool HttpBody::allocate() {
  bytes_.reset(static_cast<char *>(std::calloc(kFirstCapacity + 1, 1)));
  capacity_ = bytes_ ? kFirstCapacity : 0;
  size_ = 0;
  return bytes_ != nullptr;
}

bool HttpBody::append(void const * part, std::size_t size) {
  if (size > kMostBytes - size_ || !grow(size_ + size))
    return false;
  std::memcpy(bytes_.get() + size_, part, size);
  size_ += size;
  bytes_.get()[size_] = '\0';
  return true;
}

bool HttpBody::grow(std::size_t least) {
  std::size_t capacity = capacity_;
  while (capacity < least)
    capacity *= 2;
  if (capacity == capacity_)
    return true;
  Block larger(static_cast<char *>(std::malloc(capacity + 1)));
  if (!larger)
    return false;
  std::memcpy(larger.get(), bytes_.get(), size_);
  bytes_ = std::move(larger);
  capacity_ = capacity;
  return true;
}

std::optional<WString> textOfBody(char const * bytes, unsigned int size, WString const & charset) {
  int const sizeWithNul = static_cast<int>(size) + 1;
  std::optional<WString> text;
  if (_wcsnicmp(charset.c_str(), L"utf-8", 5) == 0)
    text = convert(CP_UTF8, 0, bytes, sizeWithNul);
  return text ? text : convert(CP_ACP, MB_PRECOMPOSED, bytes, sizeWithNul);
}

} // namespace kivara

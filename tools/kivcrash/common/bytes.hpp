#pragma once
/// \file
/// Views of bytes that have not been checked: every access is tested against the end.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace kivcrash {

/// \code
///   auto const header = Bytes(file).read<MINIDUMP_HEADER>(0);
///   if (!header)
///     return; // the file is shorter
/// \endcode
class Bytes {
public:
  Bytes() = default;
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

  std::uint64_t size() const { return bytes_.size(); }
  std::string_view text() const { return bytes_; }

  /// The part of that length; nothing when any of it lies beyond the end.
  std::optional<Bytes> part(std::uint64_t offset, std::uint64_t length) const {
    if (offset > bytes_.size() || length > bytes_.size() - offset)
      return std::nullopt;
    return Bytes(bytes_.substr(offset, length));
  }

  /// As much of the part as there is.
  Bytes partUpToEnd(std::uint64_t offset, std::uint64_t length) const {
    return offset < bytes_.size() ? Bytes(bytes_.substr(offset, length)) : Bytes();
  }

  template <class T> std::optional<T> read(std::uint64_t offset) const {
    static_assert(std::is_trivially_copyable_v<T>);
    std::optional<Bytes> const found = part(offset, sizeof(T));
    if (!found)
      return std::nullopt;
    T value;
    std::memcpy(&value, found->bytes_.data(), sizeof value);
    return value;
  }

  /// The characters up to the zero that ends them; nothing when there is none.
  std::optional<std::string> zeroEnded(std::uint64_t offset) const {
    if (offset >= bytes_.size())
      return std::nullopt;
    std::string_view const rest = bytes_.substr(offset);
    std::size_t const end = rest.find('\0');
    return end == std::string_view::npos ? std::nullopt : std::optional<std::string>(rest.substr(0, end));
  }

private:
  std::string_view bytes_;
};

} // namespace kivcrash

#pragma once
/// \file
/// Buffers and results of KivCryptoUtils.

#include <climits>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace kivara::crypto {

inline constexpr int kBadArgument = -2;
inline constexpr int kFailed = -1;

/// \p length uninitialised elements and one more for a NUL; null if there is no memory or the length exceeds an int.
template <class T> std::unique_ptr<T[]> newBuffer(std::size_t length) {
  return std::unique_ptr<T[]>(length <= INT_MAX ? new (std::nothrow) T[length + 1] : nullptr);
}

/// Passes ownership of the buffer to the caller.
template <class T> std::pair<T *, int> result(std::unique_ptr<T[]> & buffer, std::size_t length) {
  return {buffer.release(), static_cast<int>(length)};
}

} // namespace kivara::crypto

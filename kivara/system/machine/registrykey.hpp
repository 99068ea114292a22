#pragma once
/// \file
/// Reading the registry of the machine. Internal.

#include "handles/handle.hpp"

#include <optional>

namespace kivara {

/// An open key below HKEY_LOCAL_MACHINE; closed with this object.
class MachineKey {
public:
  /// \param access  KEY_READ, with KEY_WOW64_64KEY for the view of 64-bit programs whatever this one is
  explicit MachineKey(char const * path, REGSAM access = KEY_READ) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, access, &key) == ERROR_SUCCESS)
      key_.reset(key);
  }

  bool isOpen() const { return static_cast<bool>(key_); }

  /// Reads a value of any type, whose bytes need not end in a NUL.
  /// \return the bytes that were read; nothing when the key is not open, the value is missing or has more than \p size
  std::optional<DWORD> read(char const * value, void * data, DWORD size) const {
    if (!isOpen() ||
        RegQueryValueExA(key_.get(), value, nullptr, nullptr, static_cast<BYTE *>(data), &size) != ERROR_SUCCESS)
      return std::nullopt;
    return size;
  }

private:
  handles::RegistryKey key_;
};

} // namespace kivara

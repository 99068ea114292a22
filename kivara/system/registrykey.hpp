#pragma once
/// \file
/// Reading the registry of the machine. Internal.

#include "tools/winapi.hpp"

#include <optional>

namespace kivara {

/// An open key below HKEY_LOCAL_MACHINE; closed with this object.
class MachineKey {
public:
  /// \param access  KEY_READ, with KEY_WOW64_64KEY for the view of 64-bit programs whatever this one is
  explicit MachineKey(char const * path, REGSAM access = KEY_READ) {
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, access, &key_) != ERROR_SUCCESS)
      key_ = nullptr;
  }
  ~MachineKey() {
    if (key_ != nullptr)
      RegCloseKey(key_);
  }
  MachineKey(MachineKey const &) = delete;
  MachineKey & operator=(MachineKey const &) = delete;

  bool isOpen() const { return key_ != nullptr; }

  /// Reads a value of any type, whose bytes need not end in a NUL.
  /// \return the bytes that were read; nothing when the key is not open, the value is missing or has more than \p size
  std::optional<DWORD> read(char const * value, void * data, DWORD size) const {
    if (!isOpen() || RegQueryValueExA(key_, value, nullptr, nullptr, static_cast<BYTE *>(data), &size) != ERROR_SUCCESS)
      return std::nullopt;
    return size;
  }

private:
  HKEY key_ = nullptr;
};

} // namespace kivara

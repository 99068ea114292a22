#pragma once
/// \file
/// The one owner of everything that the system hands out and wants back. Internal.
///
/// \code
///   handles::File const file(CreateFileA(name, GENERIC_READ, ...));
///   if (!file)
///     return false; // nothing to close
///   GetFileSizeEx(file.get(), &size);
/// \endcode

#include "tools/winapi.hpp"

#include <cstdio>
#include <utility>

namespace handles {

/// Owns a handle of \p Kind and closes it once, without a change to the thread's last error.
/// \tparam Kind  names the type of the handle (Value), the handle that means "none", and how one is closed
template <class Kind> class Handle {
public:
  using Value = typename Kind::Value;

  Handle() = default;
  explicit Handle(Value value) : value_(value) {}
  Handle(Handle && other) noexcept : value_(other.release()) {}
  Handle & operator=(Handle && other) noexcept {
    reset(other.release());
    return *this;
  }
  ~Handle() { reset(); }

  explicit operator bool() const { return value_ != Kind::none(); }
  Value get() const { return value_; }

  /// Gives the handle away without closing it.
  Value release() { return std::exchange(value_, Kind::none()); }

  /// Closes the handle, if there is one, and takes \p value in its place.
  void reset(Value value = Kind::none()) {
    Value const former = std::exchange(value_, value);
    if (former == Kind::none())
      return;
    DWORD const error = GetLastError();
    Kind::close(former);
    SetLastError(error);
  }

private:
  Value value_ = Kind::none();
};

/// A kind of handle whose "none" is null.
template <class T> struct NullKind {
  using Value = T;
  static Value none() { return nullptr; }
};

/// A kind of handle whose "none" is INVALID_HANDLE_VALUE.
struct InvalidKind {
  using Value = HANDLE;
  static Value none() { return INVALID_HANDLE_VALUE; }
};

// clang-format off
struct FileKind         : InvalidKind              { static void close(HANDLE file) { CloseHandle(file); } };
struct FolderSearchKind : InvalidKind              { static void close(HANDLE search) { FindClose(search); } };
struct KernelObjectKind : NullKind<HANDLE>         { static void close(HANDLE object) { CloseHandle(object); } };
struct FileViewKind     : NullKind<void const *>   { static void close(void const * view) { UnmapViewOfFile(view); } };
struct ModuleKind       : NullKind<HMODULE>        { static void close(HMODULE module) { FreeLibrary(module); } };
struct RegistryKeyKind  : NullKind<HKEY>           { static void close(HKEY key) { RegCloseKey(key); } };
struct MemoryDeviceKind : NullKind<HDC>            { static void close(HDC device) { DeleteDC(device); } };
struct ScreenDeviceKind : NullKind<HDC>            { static void close(HDC device) { ReleaseDC(nullptr, device); } };
struct BitmapKind       : NullKind<HBITMAP>        { static void close(HBITMAP bitmap) { DeleteObject(bitmap); } };
struct FontKind         : NullKind<HFONT>          { static void close(HFONT font) { DeleteObject(font); } };
struct RegionKind       : NullKind<HRGN>           { static void close(HRGN region) { DeleteObject(region); } };
struct StreamKind       : NullKind<std::FILE *>    { static void close(std::FILE * stream) { std::fclose(stream); } };
// clang-format on

using File = Handle<FileKind>;                 ///< a file, from CreateFile
using FolderSearch = Handle<FolderSearchKind>; ///< from FindFirstFile
using KernelObject = Handle<KernelObjectKind>; ///< a process, a thread, an event, a file mapping, ...
using FileView = Handle<FileViewKind>;         ///< from MapViewOfFile
using Module = Handle<ModuleKind>;             ///< from LoadLibrary
using RegistryKey = Handle<RegistryKeyKind>;
using MemoryDevice = Handle<MemoryDeviceKind>; ///< from CreateCompatibleDC
using ScreenDevice = Handle<ScreenDeviceKind>; ///< from GetDC(nullptr)
using BitmapObject = Handle<BitmapKind>;       ///< from CreateBitmap and its like; selected into no device when it goes
using FontObject = Handle<FontKind>;           ///< from CreateFont and its like; selected into no device when it goes
using RegionObject = Handle<RegionKind>;       ///< from CreateRectRgn and its like
using Stream = Handle<StreamKind>; ///< from fopen; who wants to know whether all was written closes it by hand

} // namespace handles

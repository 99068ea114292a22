#pragma once
/// \file
/// Owner of a handle for visual styles. Internal.

#include "atheme_manager.hpp"

namespace kivara {

/// Closes the handle that it was given.
class ThemeHandle {
public:
  explicit ThemeHandle(void * handle) : handle_(handle) {}
  ThemeHandle(ThemeHandle const &) = delete;
  ThemeHandle & operator=(ThemeHandle const &) = delete;
  ~ThemeHandle() { KivThemeManager::Instance().CloseTheme(handle_); }

  explicit operator bool() const { return handle_ != nullptr; }
  void * get() const { return handle_; }

private:
  void * handle_;
};

} // namespace kivara

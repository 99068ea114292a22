#include "support/windows/visual_styles.hpp"

#include "tools/winapi.hpp"

#include <stdexcept>
#include <string>

namespace support {
namespace {

constexpr char kSettings[] = "Software\\Microsoft\\Windows\\CurrentVersion\\ThemeManager";

/// A key of this process's own in place of the user's, which says that there are no styles, while it lives.
class UserWithoutStyles {
public:
  UserWithoutStyles()
      : name_("Software\\kivara-test-" + std::to_string(GetCurrentProcessId())), user_(make(HKEY_CURRENT_USER, name_)) {
    HKEY const settings = make(user_, kSettings);
    RegSetValueExA(settings, "ThemeActive", 0, REG_SZ, reinterpret_cast<BYTE const *>("0"), 2);
    RegCloseKey(settings);
    RegOverridePredefKey(HKEY_CURRENT_USER, user_);
  }
  UserWithoutStyles(UserWithoutStyles const &) = delete;
  UserWithoutStyles & operator=(UserWithoutStyles const &) = delete;
  ~UserWithoutStyles() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(user_);
    RegDeleteTreeA(HKEY_CURRENT_USER, name_.c_str());
  }

private:
  static HKEY make(HKEY parent, std::string const & name) {
    HKEY key = nullptr;
    if (RegCreateKeyExA(parent, name.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key,
                        nullptr) != ERROR_SUCCESS)
      throw std::runtime_error("no key for the settings");
    return key;
  }

  std::string name_;
  HKEY user_;
};

} // namespace

VisualStylesOff::VisualStylesOff(bool off) {
  if (!off)
    return;
  if (GetModuleHandleA("uxtheme.dll") != nullptr)
    throw std::runtime_error("the library for visual styles is there already");
  UserWithoutStyles const user;
  // Wine reads the setting when the library is loaded; Windows asks this of the process.
  HMODULE const library = LoadLibraryA("uxtheme.dll");
  using SetProperties = void(WINAPI *)(DWORD);
  if (auto const set =
          reinterpret_cast<SetProperties>(reinterpret_cast<void *>(GetProcAddress(library, "SetThemeAppProperties"))))
    set(0);
}

} // namespace support

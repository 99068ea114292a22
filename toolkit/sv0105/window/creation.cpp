#include "window/windowaccess.hpp"

#include "application/toolkit.hpp"

#include <cstddef>
#include <iterator>

namespace SV::detail {
namespace {

/// A dialog without controls, of a class of its own, as the system reads it from memory.
struct DialogTemplate {
  alignas(DWORD) DLGTEMPLATE header = {};
  WORD menu = 0;
  wchar_t className[32] = {};
  // After the name comes an empty title: a zero, of which the array has enough.
};

} // namespace

HWND createSystemWindow(WindowSpec const & spec, HWND parent) {
  // The system takes the default place and size of a child for 0.
  auto const id = reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(spec.id));
  return CreateWindowExA(spec.exStyle, spec.className, "", spec.style, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                         CW_USEDEFAULT, parent, id, toolkit().instance, spec.data);
}

HWND createDialogWindow(WindowSpec const & spec, HWND parent) {
  DialogTemplate dialog;
  static_assert(offsetof(DialogTemplate, className) == sizeof(DLGTEMPLATE) + sizeof(WORD));
  static_assert(std::size(kDialogClass) < std::size(dialog.className) / 2);
  dialog.header.style = spec.style;
  dialog.header.dwExtendedStyle = spec.exStyle;
  for (std::size_t i = 0; spec.className[i] != '\0'; ++i)
    dialog.className[i] = static_cast<wchar_t>(spec.className[i]);
  // By the system's own way for dialogs: it sets up what its procedure and the keys need.
  return CreateDialogIndirectParamA(toolkit().instance, &dialog.header, parent, nullptr, 0);
}

} // namespace SV::detail

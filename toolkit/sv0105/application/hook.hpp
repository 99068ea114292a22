#pragma once
/// \file
/// The message hook, which is called before every window procedure of the toolkit.

#include "tools/winapi.hpp"

namespace SV::detail {

/// True if the hook has handled the message; \p result is then the message's result.
bool askHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT & result);

} // namespace SV::detail

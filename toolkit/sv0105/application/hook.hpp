#pragma once
/// \file
/// The message hook, asked ahead of every window procedure of the toolkit.

#include "tools/winapi.hpp"

namespace SV::detail {

/// True when the hook has dealt with the message; \p result is then the answer.
bool askHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT & result);

} // namespace SV::detail

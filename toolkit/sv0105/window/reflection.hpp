#pragma once
/// \file
/// What a control has to say reaches its parent as a message, and is given back to it here.

namespace SV::detail {

/// Hands a message of the system that is about a control of the toolkit to that control. True: it has dealt with it, and
/// \p result is the answer.
bool isForControl(unsigned message, unsigned long long wParam, long long lParam, long long & result);

} // namespace SV::detail

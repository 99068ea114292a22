#pragma once
/// \file
/// What became of a request, in words.

#include "background/webrequest.hpp"
#include "tools/string.hpp"

namespace modeler {

/// Lines in the current language, each but the last with "\n": status, sizes and the first lines of the body, or what went
/// wrong.
SV::String answerText(WebAnswer const & answer);

} // namespace modeler

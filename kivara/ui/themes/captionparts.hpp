#pragma once
/// \file
/// What the numbers of window parts mean. Internal.

#include "atheme.hpp"

namespace kivara {

inline bool isCaption(KivThemeClass part) { return part >= CaptionActive && part <= PlainCaptionInactive; }

inline bool isFrame(KivThemeClass part) { return part >= FrameLeftActive && part <= FrameBottomInactive; }

inline bool isActive(KivThemeClass part) { return part % 2 == 0; }

} // namespace kivara

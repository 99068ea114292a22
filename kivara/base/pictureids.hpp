#pragma once
/// \file
/// Bitmaps in the language packs. Internal.

namespace kivara::pictures {

inline constexpr unsigned long kCloseCross = 0x2002BBB; ///< on a gray of 0xC0C0C0, which is left out
inline constexpr unsigned long kTreeGlyphClosed = 0x2006272;
inline constexpr unsigned long kTreeGlyphOpen = 0x2006273;

} // namespace kivara::pictures

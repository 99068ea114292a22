#pragma once
/// \file
/// Internal: what a pattern needs, before the engine sees it.

namespace re {

/// The limits of a pattern.
inline constexpr long kMostPositions = 100'000;
inline constexpr int kMostGroups = 2'500; ///< with the places, such as ^, that match without a character
/// The product of groups and positions, which is what a match takes memory for.
inline constexpr long long kMostGroupPositions = 6'250'000;

/// Goes over a pattern as the engine will, without compiling it. The engine writes out repetitions in braces one by one, and reads or
/// writes past the end of some patterns: those never reach it.
/// \return 0, or the code for a pattern that is beyond a limit or that the engine cannot take. Other faults are found by the engine
int checkPattern(char const * pattern, int flags);

} // namespace re

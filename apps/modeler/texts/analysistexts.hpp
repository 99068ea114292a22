#pragma once
/// \file
/// The texts about the times of a process, by their numbers in the language packs.

#include "texts/texts.hpp"

namespace modeler {

inline constexpr Text kTimes = static_cast<Text>(0x4601);
inline constexpr Text kTimesTitle = static_cast<Text>(0x4602);
inline constexpr Text kProcess = static_cast<Text>(0x4603);
inline constexpr Text kCalendar = static_cast<Text>(0x4604);
inline constexpr Text kCalendarOf = static_cast<Text>(0x4605);
inline constexpr Text kShortest = static_cast<Text>(0x4606);
inline constexpr Text kLongest = static_cast<Text>(0x4607);
inline constexpr Text kPathOf = static_cast<Text>(0x4608);
inline constexpr Text kNoTimes = static_cast<Text>(0x4609);
inline constexpr Text kActivitiesWithoutTime = static_cast<Text>(0x460A);
inline constexpr Text kNotAllPaths = static_cast<Text>(0x460B);
inline constexpr Text kTimeTooLong = static_cast<Text>(0x460C);

} // namespace modeler

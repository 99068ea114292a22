#pragma once
/// \file
/// The texts about the tray and the trial run, by their numbers in the language packs.

#include "texts/texts.hpp"

namespace modeler {

inline constexpr Text kMinimise = static_cast<Text>(0x4301);
inline constexpr Text kRestore = static_cast<Text>(0x4302);
inline constexpr Text kNoTray = static_cast<Text>(0x4303);
inline constexpr Text kTrialRun = static_cast<Text>(0x4304);
inline constexpr Text kRunning = static_cast<Text>(0x4305);
inline constexpr Text kRunEnded = static_cast<Text>(0x4306);
inline constexpr Text kNoPath = static_cast<Text>(0x4307);

} // namespace modeler

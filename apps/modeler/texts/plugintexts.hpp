#pragma once
/// \file
/// The texts about plug-ins, by their numbers in the language packs.

#include "texts/texts.hpp"

namespace modeler {

inline constexpr Text kMenuCommands = static_cast<Text>(0x4101);
inline constexpr Text kCommandFailed = static_cast<Text>(0x4102);
inline constexpr Text kPluginOfName = static_cast<Text>(0x4103);
inline constexpr Text kPlugins = static_cast<Text>(0x4104);
inline constexpr Text kNoPlugins = static_cast<Text>(0x4105);

} // namespace modeler

#pragma once
/// \file
/// The texts about looking for something in a model, by their numbers in the language packs.

#include "texts/viewtexts.hpp"

namespace modeler {

inline constexpr Text kFind = static_cast<Text>(0x4621);
inline constexpr Text kFindNext = static_cast<Text>(0x4622);
inline constexpr Text kFindWhat = static_cast<Text>(0x4623);
inline constexpr Text kFindKind = static_cast<Text>(0x4624);
inline constexpr Text kFindPlain = static_cast<Text>(0x4625);
inline constexpr Text kFindWildcards = static_cast<Text>(0x4626);
inline constexpr Text kFindExpression = static_cast<Text>(0x4627);
inline constexpr Text kFindCase = static_cast<Text>(0x4628);
inline constexpr Text kFindButton = static_cast<Text>(0x4629);
inline constexpr Text kNotFound = static_cast<Text>(0x462A);

} // namespace modeler

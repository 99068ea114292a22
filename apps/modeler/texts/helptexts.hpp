#pragma once
/// \file
/// The texts about keys, by their numbers in the language packs.

#include "texts/texts.hpp"

namespace modeler {

inline constexpr Text kKeys = static_cast<Text>(0x4661);
inline constexpr Text kKeysTitle = static_cast<Text>(0x4662);
/// Keys that are in no menu: each is a key, a tab, and what it does.
inline constexpr Text kFirstKey = static_cast<Text>(0x4663);
inline constexpr int kOtherKeys = 8;

} // namespace modeler

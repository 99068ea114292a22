#pragma once
/// \file
/// The texts about activities that are copied and dragged, by their numbers in the language packs.

#include "texts/texts.hpp"

namespace modeler {

inline constexpr Text kMenuEdit = static_cast<Text>(0x4401);
inline constexpr Text kCopyActivity = static_cast<Text>(0x4402);
inline constexpr Text kPasteActivity = static_cast<Text>(0x4403);
inline constexpr Text kNothingCopied = static_cast<Text>(0x4404);
inline constexpr Text kNoActivity = static_cast<Text>(0x4405);
inline constexpr Text kActivityTaken = static_cast<Text>(0x4406);

} // namespace modeler

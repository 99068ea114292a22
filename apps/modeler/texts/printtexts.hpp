#pragma once
/// \file
/// The texts about printing, by their numbers in the language packs.

#include "texts/texts.hpp"

namespace modeler {

inline constexpr Text kPrintText = static_cast<Text>(0x4201);
inline constexpr Text kPrintDrawing = static_cast<Text>(0x4202);
inline constexpr Text kPagesToPrint = static_cast<Text>(0x4203);
inline constexpr Text kNotPrinted = static_cast<Text>(0x4204);
inline constexpr Text kFlowsTo = static_cast<Text>(0x4205);

} // namespace modeler

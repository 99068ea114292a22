#pragma once
/// \file
/// The texts about exports, by their numbers in the language packs.

#include "texts/texts.hpp"

namespace modeler {

inline constexpr Text kExportXml = static_cast<Text>(0x4641);
inline constexpr Text kXmlFiles = static_cast<Text>(0x4642);
inline constexpr Text kExportPicture = static_cast<Text>(0x4643);
inline constexpr Text kPictureFiles = static_cast<Text>(0x4644);

} // namespace modeler

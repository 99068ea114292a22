#pragma once
/// \file
/// The texts about the parts of the main window and how they look, by their numbers in the language packs.

#include "texts/texts.hpp"

namespace modeler {

inline constexpr Text kMenuView = static_cast<Text>(0x4501);
inline constexpr Text kToolBar = static_cast<Text>(0x4502);
inline constexpr Text kOutline = static_cast<Text>(0x4503);
inline constexpr Text kNotes = static_cast<Text>(0x4504);
inline constexpr Text kStatusBar = static_cast<Text>(0x4505);
inline constexpr Text kVisualStyles = static_cast<Text>(0x4506);
inline constexpr Text kClassic = static_cast<Text>(0x4507);
inline constexpr Text kModern = static_cast<Text>(0x4508);
inline constexpr Text kNextPart = static_cast<Text>(0x4509);
inline constexpr Text kNoModel = static_cast<Text>(0x450A);
inline constexpr Text kModelOfNodes = static_cast<Text>(0x450B);
inline constexpr Text kNoNotes = static_cast<Text>(0x450C);

/// A text without its mnemonic, and without what follows a tab or points to a dialog: for what is no menu.
inline SV::String plain(SV::String const & label) {
  SV::String result;
  for (char const * c = label.c_str(); *c != '\0' && *c != '\t'; ++c)
    if (*c != '~' && *c != '.')
      result += *c;
  return result;
}

} // namespace modeler

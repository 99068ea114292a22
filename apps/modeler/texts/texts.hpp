#pragma once
/// \file
/// The program's texts, by their numbers in the language packs of apps/modeler/resources.

#include "kivara.hpp"
#include "sv/resource.hpp"

#include <cstdio>
#include <functional>

namespace modeler {

enum class Text : unsigned short {
  MenuFile = 0x4001,
  MenuRaise,
  MenuWindow,
  MenuLanguage,
  MenuHelp,
  Open,
  OpenSample,
  Exit,
  RaiseUser,
  RaiseUserGroup,
  Start,
  Events,
  Cascade,
  Tile,
  About,
  TitleStart,
  TitleEvents,
  TitleAbout,
  Version,
  ModelFault,
  ModelFiles,
  Minutes,
  InLine,
  NotReadable,
  NoStatement,
  NoIdentifier,
  NoText,
  NoDuration,
  Twice,
  Unknown,
  Yes,
  No,
  Program,
  Argument,
  VersionName,
  ProgramFolder,
  StartFolder,
  Font,
  System,
  ScreenScale,
  DialogsSuppressed,
  Tracing,
  OrLater,
  OlderThan,
  FontSize,
  TextOpen,
  TooLong,
  NulByte,
  LineTooLong,
  LineLost,
  SaveAs,
  Overwrite,
  NotWritten,
  NothingToSave,
  NoCalendar,
  LateCalendar,
  NoTime,
  TooManyYears,
  NoDate,
  DateFormat,
  MorePaths
};

/// In the current language. The pack of the program comes after that of the library, which stays the active one: a text is
/// asked of it alone, since a look-up that goes on to it would leave the library without its own texts.
inline SV::String text(Text which) {
  unsigned long const id = SV::RSC_STRING << 16 | static_cast<unsigned short>(which);
  return SV::Resource::LoadString(SV::ResId(id, KivInternational::getNextResMgr()));
}

/// The same, to be asked for whenever it is shown.
inline std::function<SV::String()> named(Text which) {
  return [which] { return text(which); };
}

/// The text with its "%s" filled in, in their order.
inline SV::String filled(Text which, SV::String const & first, SV::String const & second = SV::String()) {
  char buffer[1024];
  std::snprintf(buffer, sizeof buffer, text(which).c_str(), first.c_str(), second.c_str());
  return buffer;
}

} // namespace modeler

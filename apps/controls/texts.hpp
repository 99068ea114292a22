#pragma once
/// \file
/// The program's texts and the places of its controls, by their numbers in its language packs.

#include "kivara.hpp"
#include "sv/resource.hpp"

namespace controls {

enum class Text : unsigned long {
  Title = 1,
  Introduction,
  Phase,
  Draft,
  Review,
  Released,
  Department,
  Purchasing,
  Production,
  Sales,
  Length,
  Days,
  Pad,
  PadMouse,
  PadKey,
  OpenFor,
  Information,
  Question,
  Warning,
  Error,
  InformationText,
  QuestionText,
  WarningText,
  ErrorText,
  HelpText,
  Reset,
  Longer,
  Shorter,
  YearStart,
  Yes,
  No,
  Note,
  Urgent
};

enum class Record : unsigned long { YearStart = 50 };

inline SV::String text(Text id) {
  return SV::Resource::LoadString(
      SV::ResId(0x2000000 | static_cast<unsigned long>(id), KivInternational::getNextResMgr()));
}

inline SV::ResId resource(Record id) { return {static_cast<unsigned long>(id), KivInternational::getNextResMgr()}; }

/// A text in which \p value takes the place of "%s".
inline SV::String text(Text id, SV::String const & value) {
  SV::String const whole = text(id);
  char const * const place = SV::h_strstr(whole.c_str(), "%s");
  if (place == nullptr)
    return whole;
  auto const start = static_cast<int>(place - whole.c_str());
  return whole.substr(0, start) + value + whole.substr(start + 2);
}

} // namespace controls

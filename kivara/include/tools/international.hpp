#pragma once
/// \file
/// International: how a country and language write dates and times, and the labels of the standard buttons.

#include "tools/date.hpp"
#include "tools/export.hpp"
#include "tools/string.hpp"
#include "tools/time.hpp"

namespace SV {

/// 0 is the system's; other values are telephone country codes and Windows language identifiers.
using CountryType = unsigned short;
using LanguageType = unsigned short;
inline constexpr CountryType COUNTRY_SYSTEM = 0;
inline constexpr LanguageType LANGUAGE_SYSTEM = 0;

/// A record of formats, filled from the system's locale tables at construction.
class International {
public:
  /// The user's country and language.
  TL_API International();
  TL_API International(CountryType country, LanguageType language);

  /// The label of a standard button; each change gives the old one.
  String const & GetOKButtonText() const { return okText_; }
  String const & GetCancelButtonText() const { return cancelText_; }
  String const & GetHelpButtonText() const { return helpText_; }
  TL_API String ChangeOKButtonText(String const & text);
  TL_API String ChangeCancelButtonText(String const & text);
  TL_API String ChangeHelpButtonText(String const & text);

  /// The year with four digits (true) or two, in the short and in the long form; each change gives the old setting.
  TL_API bool ChangeDateCentury(bool withCentury);
  TL_API bool ChangeLongDateCentury(bool withCentury);

  /// The short form of the locale, such as "24.12.2026".
  TL_API String GetDate(Date const & date) const;

  /// The long form of the locale, with the names of day and month.
  TL_API String GetLongDate(Date const & date) const;

  /// The time of day by the locale's rules.
  /// \param withSeconds      whether seconds are shown
  /// \param withHundredths   whether hundredths follow, behind the locale's decimal sign; they need seconds
  TL_API String GetTime(Time const & time, bool withSeconds = true, bool withHundredths = false) const;

private:
  unsigned long locale_; ///< the system's identifier of the locale
  bool century_;
  bool longCentury_;
  String okText_;
  String cancelText_;
  String helpText_;
};

} // namespace SV

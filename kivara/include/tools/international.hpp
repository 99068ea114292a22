#pragma once
/// \file
/// International: the date and time formats of a country and language, and the labels of the standard buttons.

#include "tools/date.hpp"
#include "tools/export.hpp"
#include "tools/string.hpp"
#include "tools/time.hpp"

namespace SV {

/// 0 stands for that of the system; other values are telephone country codes and Windows language identifiers.
using CountryType = unsigned short;
using LanguageType = unsigned short;
inline constexpr CountryType COUNTRY_SYSTEM = 0;
inline constexpr LanguageType LANGUAGE_SYSTEM = 0;

/// A set of formats, taken from the system's locale tables at construction.
class International {
public:
  /// The user's country and language.
  TL_API International();
  TL_API International(CountryType country, LanguageType language);

  /// The labels of the standard buttons. Each change returns the old label.
  String const & GetOKButtonText() const { return okText_; }
  String const & GetCancelButtonText() const { return cancelText_; }
  String const & GetHelpButtonText() const { return helpText_; }
  TL_API String ChangeOKButtonText(String const & text);
  TL_API String ChangeCancelButtonText(String const & text);
  TL_API String ChangeHelpButtonText(String const & text);

  /// Whether the year has four digits (true) or two, in the short and in the long form. Each change returns the old setting.
  TL_API bool ChangeDateCentury(bool withCentury);
  TL_API bool ChangeLongDateCentury(bool withCentury);

  /// The date in the locale's short format, such as "24.12.2026".
  TL_API String GetDate(Date const & date) const;

  /// The date in the locale's long format, with the names of day and month.
  TL_API String GetLongDate(Date const & date) const;

  /// The time of day in the locale's format.
  /// \param withSeconds      true: with seconds
  /// \param withHundredths   true: with hundredths after the locale's decimal separator, if there are seconds
  TL_API String GetTime(Time const & time, bool withSeconds = true, bool withHundredths = false) const;

private:
  unsigned long locale_; ///< the system's identifier for the locale
  bool century_;
  bool longCentury_;
  String okText_;
  String cancelText_;
  String helpText_;
};

} // namespace SV

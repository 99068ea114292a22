#pragma once
/// \file
/// The numbers of the library's texts in its language packs (`resources/*/kivara.rc`). Internal.
///
/// The numbers do not change: existing programs and packs contain them.

namespace kivara::texts {

/// The argument of the toolkit's LoadString: the type of strings in the high part, the number in the low part.
using Id = unsigned long;
inline constexpr Id kStringType = 0x2000000;

// clang-format off
inline constexpr Id kDeadNetwork    = kStringType | 0x0D18; ///< internal error: the database is gone
inline constexpr Id kCharacterSet   = kStringType | 0x290B; ///< the system's number of the character set, as a string
inline constexpr Id kRuntimeName    = kStringType | 0x2913; ///< the name of a program, by its kind
inline constexpr Id kToolkitName    = kStringType | 0x2914;
inline constexpr Id kOKButton       = kStringType | 0x2922; ///< labels of the standard buttons
inline constexpr Id kCancelButton   = kStringType | 0x2923;
inline constexpr Id kHelpButton     = kStringType | 0x2924;
inline constexpr Id kProgramName    = kStringType | 0x2927; ///< of every other kind
inline constexpr Id kBaseLanguage   = kStringType | 0x2950; ///< the number of the language that the product was written in
inline constexpr Id kJanuary       = kStringType | 25100;  ///< names of the months; the others follow
inline constexpr Id kMonday        = kStringType | 25112;  ///< names of the weekdays; the others follow
inline constexpr Id kInternalError  = kStringType | 0x2B7E; ///< internal error; %s is its code
inline constexpr Id kYesButton      = kStringType | 0x330E; ///< buttons of KivErrorBox
inline constexpr Id kNoButton       = kStringType | 0x330F;
inline constexpr Id kRetryButton    = kStringType | 0x3310;
inline constexpr Id kDialogTitle    = kStringType | 0x3311; ///< of a box without a parent
inline constexpr Id kBadExpression  = kStringType | 950;    ///< headings of a regular expression that failed
inline constexpr Id kNoMemoryForIt  = kStringType | 951;
inline constexpr Id kEngineText     = kStringType | 960;    ///< %s is the text of the engine
inline constexpr Id kFirstFault     = kStringType | 961;    ///< of the code 3; the others follow in their order
inline constexpr Id kLastFault      = kStringType | 969;    ///< of the code 11
inline constexpr Id kNothingToRepeat = kStringType | 971;   ///< of the code 13
inline constexpr Id kCharacterMap   = kStringType | 11764;  ///< the replacements of the bytes 128 to 255 in texts for SGML
// clang-format on

/// \name Numbers for KivStringAcceleratorTable, which adds the type
/// @{
inline constexpr long kAdminUser = 3415;    ///< the administrator's name in the database
inline constexpr long kUserGroup = 28553;   ///< the group of all users
inline constexpr long kFirstError = 4801;   ///< of KivErrorCode 1; the others follow in their order
inline constexpr long kLastError = 4918;    ///< of KivErrorCode 118
inline constexpr long kUnknownError = 4999; ///< of KIV_ERROR_UNKNOWN
/// @}

/// For the test that compares the numbers with the packs. It adds those that are ranges: months, weekdays, faults and errors.
inline constexpr unsigned long kAll[] = {kDeadNetwork,   kCharacterSet, kRuntimeName, kToolkitName,  kOKButton,
                                         kCancelButton,  kHelpButton,   kProgramName, kBaseLanguage, kInternalError,
                                         kYesButton,     kNoButton,     kRetryButton, kDialogTitle,  kBadExpression,
                                         kNoMemoryForIt, kEngineText,   kFirstFault,  kLastFault,    kNothingToRepeat,
                                         kCharacterMap,  kAdminUser,    kUserGroup,   kUnknownError};

} // namespace kivara::texts

#pragma once
/// \file
/// The limits of the tray icon, and what happens where a caller violates one. Internal.

namespace kivara::tray {

/// A limit: the text of its report, and the line that the report bears, which is of no other limit.
struct Limit {
  wchar_t const * text;
  unsigned line;
};

inline constexpr Limit kSystem{L"FALSE", 101};
inline constexpr Limit kCreationMessage{L"uCallbackMessage >= WM_APP", 102};
inline constexpr Limit kCreationTip{L"_tcslen(szToolTip) <= m_nMaxTooltipLength", 103};
inline constexpr Limit kCreationBalloonText{L"lstrlen(szBalloonTip) < 256", 104};
inline constexpr Limit kCreationBalloonTitle{L"lstrlen(szBalloonTitle) < 64", 105};
inline constexpr Limit kCreationBalloonIcon{L"dwBalloonIcon == NIIF_NONE || dwBalloonIcon == NIIF_INFO || "
                                            L"dwBalloonIcon == NIIF_WARNING || dwBalloonIcon == NIIF_ERROR",
                                            106};
inline constexpr Limit kCreationBalloonTimeout{L"uBalloonTimeout >= 10 && uBalloonTimeout <= 30", 107};
inline constexpr Limit kTip{L"_tcslen(pszTip) < m_nMaxTooltipLength", 108};
inline constexpr Limit kBalloonText{L"lstrlen(szText) < 256", 109};
inline constexpr Limit kBalloonTitle{L"lstrlen(szTitle) < 64", 110};
inline constexpr Limit kBalloonIcon{
    L"dwIcon == NIIF_NONE || dwIcon == NIIF_INFO || dwIcon == NIIF_WARNING || dwIcon == NIIF_ERROR", 111};
inline constexpr Limit kBalloonTimeout{L"uTimeout >= 10 && uTimeout <= 30", 112};
inline constexpr Limit kPendingAdd{L"m_bHidden == FALSE", 113};
inline constexpr Limit kNotificationWindow{L"FALSE", 114};
inline constexpr Limit kCallbackMessage{L"uCallbackMessage >= WM_APP", 115};
inline constexpr Limit kTimer{L"FALSE", 116};

/// Reports the limit through the runtime unless it holds, in every build; under dialog suppression to the debug output. If
/// the runtime lets the process go on, so does the caller.
void require(bool holds, Limit const & limit);

} // namespace kivara::tray

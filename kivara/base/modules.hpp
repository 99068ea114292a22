#pragma once
/// \file
/// The names that the codes of internal errors begin with, one for each module. Internal.
///
/// They do not change, since support looks codes up by them: some name a module that the code is no longer in.

namespace kivara::modules {

inline constexpr char kAapp[] = "aapp.cpp";
inline constexpr char kAacceler[] = "aacceler.cpp";
inline constexpr char kAcmdline[] = "acmdline.cpp";
inline constexpr char kAdattime[] = "adattime.cpp"; ///< of the control for a day and a month
inline constexpr char kAebox[] = "aebox.cpp";
inline constexpr char kAevent[] = "aevent.cpp";
inline constexpr char kAfileman[] = "afileman.cpp";
inline constexpr char kAinter[] = "ainter.cpp";
inline constexpr char kAlog[] = "alog.cpp";
inline constexpr char kAtools[] = "atools.cpp"; ///< also of the facts of the platform and the window stack

} // namespace kivara::modules

#pragma once
/// \file
/// What a version of Windows is called in crash reports. Internal.

#include "base/boundedtext.hpp"

namespace kivara::crash {

/// "Windows 7 or Windows Server 2008 R2", or "unknown (10.0)".
/// \param platform  2 for Windows NT and its successors
class WindowsName {
public:
  WindowsName(unsigned long platform, unsigned long major, unsigned long minor) : text_("%s", "") {
    if (char const * const name = known(platform, major, minor))
      text_.set("%s", name);
    else
      text_.set("unknown (%d.%d)", static_cast<int>(major), static_cast<int>(minor));
  }

  char const * c_str() const { return text_.c_str(); }

private:
  static constexpr char const * known(unsigned long platform, unsigned long major, unsigned long minor) {
    switch (major * 1000 + minor) {
    case 3051: return "Windows NT 3.51";
    case 4000: return platform == 2 ? "Windows NT 4" : "Windows 95";
    case 4010: return "Windows 98";
    case 4090: return "Windows ME";
    case 5000: return "Windows 2000";
    case 5001: return "Windows XP";
    case 5002: return "Windows Server 2003";
    case 6000: return "Windows Vista or Windows Server 2008";
    case 6001: return "Windows 7 or Windows Server 2008 R2";
    case 6002: return "Windows 8 or Windows Server 2012";
    default: return nullptr;
    }
  }

  BoundedText<64> text_;
};

} // namespace kivara::crash

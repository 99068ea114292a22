#pragma once
/// \file
/// The toolkit's state for the process.

#include "drawing/picturepool.hpp"
#include "sv/application.hpp"
#include "sv/printer.hpp"
#include "sv/resource.hpp"
#include "sv/sysdepen.hpp"
#include "sv/timer.hpp"
#include "tools/winapi.hpp"

#include <unordered_map>
#include <vector>

namespace SV::detail {

/// See Application::InsertAccel.
struct InsertedAccelerator {
  Accelerator * accelerator;
  unsigned short scope;
  int modalDepth; ///< the number of modal dialogs that ran when it was inserted
};

struct Toolkit {
  Application * application = nullptr;

  HINSTANCE instance = nullptr;
  unsigned long threadId = 0;
  int showCommand = SW_SHOWDEFAULT;
  bool isUp = false; ///< between InitSV and DeInitSV
  HWND listener = nullptr;
  MessageHook hook = nullptr;

  unsigned short wait = 0;
  bool helpPointer = false;
  Help * help = nullptr;
  unsigned short helpModes = 0;
  bool extendedHelp = false; ///< the next click asks for help
  Font font;
  International * international = nullptr; ///< created on first use, since it reads the system's tables
  bool dialogSuppression = false;
  bool windowSuppression = false;
  String dialogLog;
  PicturePool pictures;
  HDC sourceDevice = nullptr; ///< see SourceDevice
  Size dialogCharacter;       ///< of the application font; 0 by 0 until it has been measured
  ResMgr * resManager = nullptr;

  PrinterSwitches printers;
  std::vector<Printer const *> livingPrinters; ///< oldest first

  int modalDepth = 0;                            ///< the number of nested modal dialogs
  std::vector<InsertedAccelerator> accelerators; ///< the last one inserted is at the end
  std::unordered_map<unsigned long long, Timer *> timers;

  Window * appWindow = nullptr;
  bool appWindowShown = false;
  std::vector<Window *> windows;              ///< oldest first, including those whose system window has been closed
  std::unordered_map<HWND, Window *> objects; ///< those that have a system window
  HWND mdiClient = nullptr;                   ///< of the newest frame
};

/// It is never destroyed: static objects of the program may still use it after those of the DLL have been destroyed.
Toolkit & toolkit();

/// Application::Exception of the application object, if there is one.
void raiseException(long code, unsigned long arg);

} // namespace SV::detail

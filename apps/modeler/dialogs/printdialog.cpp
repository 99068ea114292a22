#include "dialogs/printdialog.hpp"

#include "tools/winapi.hpp"

#include <commdlg.h>

#include <cstring>
#include <stdexcept>

namespace modeler {
namespace {

/// Memory that the dialog shares with its caller.
class Shared {
public:
  explicit Shared(HGLOBAL memory) : memory_(memory) {}
  Shared(Shared const &) = delete;
  Shared & operator=(Shared const &) = delete;
  ~Shared() {
    if (data_ != nullptr)
      GlobalUnlock(memory_);
    if (memory_ != nullptr)
      GlobalFree(memory_);
  }

  /// Null when there is none.
  template <class T> T * as() {
    if (data_ == nullptr && memory_ != nullptr)
      data_ = GlobalLock(memory_);
    return static_cast<T *>(data_);
  }

private:
  HGLOBAL memory_;
  void * data_ = nullptr;
};

/// The names of a printer as the dialog takes them: the device's alone.
HGLOBAL namesOf(SV::String const & printer) {
  std::size_t const length = sizeof(DEVNAMES) + static_cast<std::size_t>(printer.Len()) + 2;
  HGLOBAL const memory = GlobalAlloc(GHND, length);
  if (auto * const names = static_cast<DEVNAMES *>(memory != nullptr ? GlobalLock(memory) : nullptr)) {
    names->wDriverOffset = names->wOutputOffset = static_cast<WORD>(sizeof(DEVNAMES) + printer.Len() + 1);
    names->wDeviceOffset = sizeof(DEVNAMES);
    std::memcpy(reinterpret_cast<char *>(names) + sizeof(DEVNAMES), printer.c_str(),
                static_cast<std::size_t>(printer.Len()));
    GlobalUnlock(memory);
  }
  return memory;
}

void usePrinter(char const * name, DEVMODEA const * settings) {
  try {
    auto printer = std::make_unique<KivPrinter>(SV::String(name));
    bool const isLandscape = settings != nullptr && (settings->dmFields & DM_ORIENTATION) != 0 &&
                             settings->dmOrientation == DMORIENT_LANDSCAPE;
    printer->SetOrientation(isLandscape ? SV::ORIENTATION_LANDSCAPE : SV::ORIENTATION_PORTRAIT);
    Kiv_ReplacePrinter(printer.release());
  } catch (std::runtime_error const &) {
    Kiv_DeletePrinter(); // it went between the dialog's end and now
  }
}

} // namespace

bool choosePrinter(SV::Window & owner) {
  if (SV::Application::IsModalDialogSuppression())
    return true;
  PRINTDLGA dialog = {};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner.GethWnd();
  dialog.Flags = PD_NOPAGENUMS | PD_NOSELECTION | PD_HIDEPRINTTOFILE | PD_USEDEVMODECOPIESANDCOLLATE;
  if (KivPrinter const * const printer = Kiv_GetPrinter(true))
    dialog.hDevNames = namesOf(printer->GetName());
  bool const isChosen = PrintDlgA(&dialog) != FALSE;
  Shared names(dialog.hDevNames);
  Shared settings(dialog.hDevMode);
  auto const * const found = names.as<DEVNAMES const>();
  if (isChosen && found != nullptr)
    usePrinter(reinterpret_cast<char const *>(found) + found->wDeviceOffset, settings.as<DEVMODEA const>());
  return isChosen;
}

} // namespace modeler

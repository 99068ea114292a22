#include "aprint.hpp"

#include "acmdline.hpp"

#include <exception>

namespace {

KivPrinter * currentPrinter = nullptr;
bool creationFailed = false;

void createPrinter() {
  SV::String const name = KivCmdline::Instance().getPrinterName();
  try {
    currentPrinter = name.Len() == 0 ? new KivPrinter : new KivPrinter(name);
  } catch (std::exception const &) {
    creationFailed = true;
  }
}

void deleteUnusable() {
  if (currentPrinter != nullptr && !currentPrinter->IsUsable())
    Kiv_DeletePrinter();
}

/// Of the page after the paper was turned and turned back.
SV::Size sizeAfterTurning(SV::Printer & printer, SV::Orientation turned) {
  SV::Orientation const former = printer.GetOrientation();
  printer.SetOrientation(turned);
  printer.SetOrientation(former);
  return printer.GetOutputSizePixel();
}

} // namespace

KivPrinter::KivPrinter() = default;

KivPrinter::KivPrinter(SV::String const & printerName) : Printer(printerName) {}

KivPrinter::~KivPrinter() = default;

// Layouts that were made with these sizes rely on their being read after the paper was turned back.
SV::Size KivPrinter::GetPortraitOutputSizePixel() {
  if (portraitSize.width == 0 && GetOrientation() != SV::ORIENTATION_PORTRAIT)
    portraitSize = sizeAfterTurning(*this, SV::ORIENTATION_PORTRAIT);
  return portraitSize;
}

SV::Size KivPrinter::GetLandscapeOutputSizePixel() {
  if (landscapeSize.width == 0 && GetOrientation() == SV::ORIENTATION_LANDSCAPE)
    landscapeSize = sizeAfterTurning(*this, SV::ORIENTATION_LANDSCAPE);
  return landscapeSize;
}

KivPrinter * Kiv_GetPrinter(bool create) {
  if (!create)
    return currentPrinter;
  deleteUnusable();
  if (currentPrinter == nullptr && !creationFailed)
    createPrinter();
  deleteUnusable();
  return currentPrinter;
}

void Kiv_ReplacePrinter(KivPrinter * printer) {
  if (printer == currentPrinter)
    return;
  Kiv_DeletePrinter();
  currentPrinter = printer;
}

void Kiv_DeletePrinter() {
  delete currentPrinter;
  currentPrinter = nullptr;
}

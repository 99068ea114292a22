#include "sv/printer.hpp"

#include "application/toolkit.hpp"
#include "printing/printerlist.hpp"
#include "printing/spooler.hpp"

#include <stdexcept>

namespace SV {

using detail::toolkit;

struct Printer::Data {
  String name;
  String driver;
  detail::PrinterSettings settings;
  handles::MemoryDevice device;
  bool inJob = false;
  bool inPage = false;
};

namespace {

String nameToOpen(String const & name) {
  std::optional<String> const found = detail::findPrinter(name);
  if (!found)
    throw std::runtime_error("there is no printer of that name");
  return *found;
}

String defaultToOpen() {
  String const name = detail::defaultPrinterName();
  if (name.Len() == 0)
    throw std::runtime_error("there is no default printer");
  return name;
}

/// The system's default of a screen is too small for paper, and may have the colours of windows.
Font fontOfText(OutputDevice const & device) {
  constexpr long kTenPoints = 35; // tenths of a millimetre
  Font font(String(), device.LogicToPixel(Size{0, kTenPoints}, MAP_10TH_MM));
  font.ChangeColor(COL_BLACK);
  font.ChangeFillColor(COL_WHITE);
  return font;
}

} // namespace

void SetPrinterSwitches(PrinterSwitches const & switches) { toolkit().printers = switches; }

Printer::Printer() : data_(new Data{defaultToOpen(), {}, {}, {}}) {
  if (!openDevice())
    throw std::runtime_error("the default printer cannot be drawn on");
}

Printer::Printer(String const & name) : data_(new Data{nameToOpen(name), {}, {}, {}}) {
  if (!openDevice())
    throw std::runtime_error("the printer cannot be drawn on");
}

Printer::~Printer() {
  if (data_->inJob)
    AbortDoc(data_->device.get());
  closeContext();
  std::erase(toolkit().livingPrinters, this);
}

bool Printer::openDevice() {
  detail::Spooler const spooler = detail::openPrinter(data_->name);
  if (!spooler)
    return false;
  data_->driver = detail::driverNameOf(spooler);
  data_->settings = detail::PrinterSettings(spooler, data_->name);
  if (!makeContext() || GetDeviceCaps(data_->device.get(), HORZRES) <= 0) {
    closeContext();
    return false;
  }
  ChangeFont(fontOfText(*this));
  toolkit().livingPrinters.push_back(this);
  return true;
}

bool Printer::makeContext() {
  closeContext();
  data_->device.reset();
  data_->device.reset(CreateDCA("WINSPOOL", data_->name.c_str(), nullptr, data_->settings.get()));
  if (data_->device)
    openContext(data_->device.get());
  return static_cast<bool>(data_->device);
}

ISequence<String> Printer::GetNames() { return detail::printerNames(); }

String Printer::GetDefaultName() { return detail::defaultPrinterName(); }

String const & Printer::GetName() const { return data_->name; }

String const & Printer::GetDriverName() const { return data_->driver; }

bool Printer::IsUsable() const {
  return GetDeviceCaps(data_->device.get(), HORZRES) > 0 && detail::isKnown(detail::openPrinter(data_->name));
}

Orientation Printer::GetOrientation() const {
  return data_->settings.isLandscape() ? ORIENTATION_LANDSCAPE : ORIENTATION_PORTRAIT;
}

bool Printer::SetOrientation(Orientation orientation) {
  if (!data_->device || data_->inPage || data_->settings.get() == nullptr)
    return false;
  detail::PrinterSettings changed = data_->settings;
  changed.setLandscape(orientation == ORIENTATION_LANDSCAPE);
  // The system forgets what was selected into the context.
  closeContext();
  bool const done = ResetDCA(data_->device.get(), changed.get()) != nullptr;
  openContext(data_->device.get());
  if (done)
    data_->settings = changed;
  return done;
}

Size Printer::GetOutputSizePixel() const {
  return {GetDeviceCaps(data_->device.get(), HORZRES), GetDeviceCaps(data_->device.get(), VERTRES)};
}

bool Printer::StartJob(String const & name) {
  if (data_->inJob)
    return false;
  DOCINFOA document = {};
  document.cbSize = sizeof document;
  document.lpszDocName = name.c_str();
  return data_->inJob = StartDocA(data_->device.get(), &document) > 0;
}

bool Printer::StartPage() {
  if (!data_->inJob || data_->inPage)
    return false;
  return data_->inPage = ::StartPage(data_->device.get()) > 0;
}

bool Printer::EndPage() {
  if (!data_->inPage)
    return false;
  data_->inPage = false;
  return ::EndPage(data_->device.get()) > 0;
}

bool Printer::EndJob() {
  if (!data_->inJob)
    return false;
  EndPage();
  data_->inJob = false;
  return EndDoc(data_->device.get()) > 0;
}

bool Printer::AbortJob() {
  if (!data_->inJob)
    return false;
  data_->inJob = data_->inPage = false;
  // Not every driver can. The job of a context that goes is cancelled too.
  return AbortDoc(data_->device.get()) > 0 || makeContext();
}

} // namespace SV

#pragma once
/// \file
/// Printer: drawing on paper; and how the library looks for printers.

#include "sv/outputdevice.hpp"
#include "tools/containers.hpp"

#include <memory>

namespace SV {

/// How the paper is used.
enum Orientation : unsigned short { ORIENTATION_PORTRAIT = 0, ORIENTATION_LANDSCAPE = 1 };

/// Where printers are looked for, and how their names are compared. The entry routine of a program sets it from the command line.
struct PrinterSwitches {
  /// True: printers and the default one are read from the registry, those of this machine and the user's connections to
  /// others; whether they can be reached is not checked.
  bool registryPrinters = false;
  /// True: a printer is only found by its name in the same case.
  bool caseSensitivePrinters = false;
  /// Counts only without registryPrinters. True: the system's spooler is asked; false: the section [devices] of WIN.INI,
  /// which programs of 16 bits read.
  bool currentPrinting = true;
};

/// In effect for every look-up that follows; printers that exist stay as they are.
SV_API void SetPrinterSwitches(PrinterSwitches const & switches);

/// A printer, and the page that is being printed. Main thread.
///
/// It counts and draws as every device does; (0, 0) is the upper left corner of what the printer can print on. A job has pages,
/// and what is drawn belongs to the page that was started last. Pen, font and all else stay from page to page. The font it begins
/// with is black and has 10 points.
///
/// \code
///   SV::Printer printer; // throws std::runtime_error where there is none
///   if (printer.StartJob("Report") && printer.StartPage()) {
///     printer.DrawText({0, 0}, "42");
///     printer.EndPage();
///     bool const printed = printer.EndJob();
///   }
/// \endcode
class SV_API Printer : public OutputDevice {
public:
  /// The user's default printer.
  /// \throws std::runtime_error when there is none, or it cannot be drawn on
  Printer();
  /// \param name  one of GetNames; its case does not count unless PrinterSwitches say so
  /// \throws std::runtime_error when there is no such printer, or it cannot be drawn on
  explicit Printer(String const & name);
  /// A job that has not ended is cancelled.
  ~Printer() override;

  /// The names of all printers, in the system's order.
  static ISequence<String> GetNames();
  /// The name of the user's default printer; empty when there is none.
  static String GetDefaultName();

  String const & GetName() const; ///< as the system spells it
  String const & GetDriverName() const;

  /// Whether the system still has the printer and it can be drawn on. A printer that was taken away is not usable, and its
  /// operations fail.
  bool IsUsable() const;

  Orientation GetOrientation() const;
  /// Takes effect from the next page on. Pen, font and all else stay.
  /// \return false, and nothing changes, while a page is being printed and when the printer refuses
  bool SetOrientation(Orientation orientation);

  /// Of what the printer can print on; (0, 0) once it cannot be drawn on any more.
  Size GetOutputSizePixel() const override;

  /// Begins a job.
  /// \param name  what the printer's queue shows
  /// \return false, and nothing has begun, when a job has begun already and when the printer refuses
  bool StartJob(String const & name);
  /// Begins a page. False when no job has begun, when a page has begun already, and when the printer refuses.
  bool StartPage();
  /// Ends the page. False when none has begun, or when the printer refuses; there is no open page afterwards.
  bool EndPage();
  /// Hands the job to the system, after the end of a page that has begun.
  /// \return false when no job has begun, or when the printer refuses, such as one that was taken away meanwhile; then nothing
  ///         is printed. There is no job afterwards
  bool EndJob();
  /// Ends the job so that nothing is printed. False when none has begun, or when the printer refuses; there is none afterwards.
  bool AbortJob();

private:
  struct Data;

  bool openDevice();
  bool makeContext();

  std::unique_ptr<Data> data_;
};

} // namespace SV

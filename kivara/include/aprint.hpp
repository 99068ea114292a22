#pragma once
/// \file
/// Printing: the printer of the process, and TextPrinter, which prints lines of text on it.
///
/// \code
///   TextPrinter report("Report");
///   if (!report.Start())
///     return false; // there is no printer, or it refuses
///   report.PrintHeader("Report");
///   report.PrintLine("All is well.");
///   report.End();
/// \endcode
///
/// All of it is for the main thread.

#include "export.hpp"
#include "sv/printer.hpp"
#include "tools/string.hpp"

/// A printer that remembers two sizes of its page.
class KIV_API KivPrinter : public SV::Printer {
public:
  /// The user's default printer.
  /// \throws std::runtime_error when there is none, or it cannot be drawn on
  KivPrinter();
  /// \param printerName  the printer's name; SV::PrinterSwitches says how it is compared
  /// \throws std::runtime_error when there is no such printer, or it cannot be drawn on
  explicit KivPrinter(SV::String const & printerName);
  ~KivPrinter() override;

  /// (0, 0) while the paper is in portrait. Otherwise the size of the page in pixels at the first call, which is then one in
  /// landscape; later calls return the same size, in portrait too.
  SV::Size GetPortraitOutputSizePixel();
  /// (0, 0) unless the paper is in landscape. Otherwise the size of the page in pixels at the first call; later calls return
  /// the same size, in portrait too.
  SV::Size GetLandscapeOutputSizePixel();

private:
  SV::Size portraitSize;
  SV::Size landscapeSize;
};

/// The printer of the process, which the library owns. With \p create, a printer that has been removed from the system is
/// deleted, and where there is none, one is made: that of KivCmdline::getPrinterName, or the default printer if the name is
/// empty. If it cannot be made, no later call tries again.
/// \param create  false: the printer as it is; whether it can still be used is not checked
/// \return null when there is none
KIV_API KivPrinter * Kiv_GetPrinter(bool create);

/// Deletes the printer of the process and uses this one, which the library then owns; null for none. If it is the printer of the
/// process already, nothing happens. A job on the former printer is cancelled.
KIV_API void Kiv_ReplacePrinter(KivPrinter * printer);

/// Deletes the printer of the process. The next Kiv_GetPrinter(true) makes one again.
KIV_API void Kiv_DeletePrinter();

/// Prints lines of text on the printer of the process, in Courier New of 4 mm, each indented by four spaces. Lines that are too long
/// are wrapped at spaces, words that are too long at the edge of the page. A page ends two lines before it would be full.
///
/// Where there is no printer, all operations do nothing. One object prints at a time.
class KIV_API TextPrinter {
public:
  /// \param jobName  what the printer's queue shows
  explicit TextPrinter(SV::String const & jobName);
  TextPrinter(TextPrinter const &) = delete;
  TextPrinter & operator=(TextPrinter const &) = delete;
  /// Ends a job that is running.
  ~TextPrinter();

  /// Begins the job and its first page, on Kiv_GetPrinter(true). If the job is running, nothing happens.
  /// \return false, and nothing has begun, when there is no printer or it refuses
  bool Start();
  /// Prints what has been collected, as NewLine does, and hands the job to the printer.
  void End();

  /// Adds to the line that is being collected, without the carriage returns.
  void Print(SV::String const & text);
  /// The same, and then NewLine.
  void PrintLine(SV::String const & text);
  /// Adds GetHeader(title).
  void PrintHeader(SV::String const & title);
  /// Prints the line that has been collected, or several if there are line feeds in it. With nothing collected, it prints an
  /// empty line.
  void NewLine();

  /// The title, the user's name, the date with four digits for the year and the time with seconds, in the formats of the
  /// application, with spaces between them and two line feeds at the end.
  static SV::String GetHeader(SV::String const & title);

  /// The name that headers show; empty at first.
  static void SetUserName(SV::String const & name);
  static SV::String const & GetUserName();

private:
  bool beginJob(KivPrinter & printer);
  void layOut(KivPrinter & printer);
  void printPiece(KivPrinter & printer, char const * piece, std::int32_t length);
  void drawLine(KivPrinter & printer, SV::String const & line);
  void countLine(KivPrinter & printer);

  SV::String jobName;
  bool started = false;
  unsigned int currentLine = 0;
  SV::String pending;
  int lineHeight = 0;
  int linesPerPage = 0;
};

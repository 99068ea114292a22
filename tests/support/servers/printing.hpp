#pragma once
/// \file
/// Queues of a print server that keeps what is printed, and what was printed, as texts, places and pictures.
///
///     class Letters : public support::PrintTest {};
///     TEST_F(Letters, BeginAtTheTop) {
///       support::PrintQueue const queue;
///       print("Hello", queue.name());
///       EXPECT_EQ(queue.job(1).pages.front(), "Hello");
///     }
///
/// ./dev starts the server; without one these tests are skipped. Wine reads the server's list of printers when a process loads
/// winspool.drv while no other one has it. So a test makes its queues before it uses printers, each test has a process of its own, and
/// such tests run with RESOURCE_LOCK printers and RUN_SERIAL: the sample product, for one, loads winspool.drv at its start. What cannot be
/// done throws std::runtime_error, which fails the test.

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace support {

/// A word and where its upper left corner lies on the paper, in points of 1/72 inch.
struct PrintedWord {
  std::string text;
  double x = 0;
  double y = 0;
};

struct PrintedPaper {
  double width = 0; ///< in points
  double height = 0;
  std::vector<PrintedWord> words;
};

/// One job. Texts are UTF-8.
struct PrintedJob {
  std::vector<std::string> pages; ///< the lines of each page, with a line feed after each, as they lie on the paper
  std::vector<PrintedPaper> papers;

  /// The lines of a page that are not empty, without the spaces at both ends.
  std::vector<std::string> lines(std::size_t page = 0) const;
  /// The first page as a picture with a pixel a point: 0 is black, 255 white. Outside of the paper it is white.
  int grayAt(int x, int y) const;

  std::string title; ///< what the queue showed
  std::string pixels;
  int pictureWidth = 0;
};

/// A queue with a name of its own, which goes away with this object. It waits until no other program uses printers.
class PrintQueue {
public:
  PrintQueue() : PrintQueue("") {}
  explicit PrintQueue(std::string const & ending); ///< what its name ends in
  PrintQueue(PrintQueue const &) = delete;
  PrintQueue & operator=(PrintQueue const &) = delete;
  ~PrintQueue();

  std::string const & name() const { return name_; }

  /// Takes it away from the server. The system knows the printer still, and does not notice until a job ends.
  void remove();

  /// The job of that number, from 1 on in the order of printing; waits until it has been printed.
  PrintedJob job(std::size_t number = 1) const;
  /// How many jobs have been printed by now.
  std::size_t jobCount() const;

private:
  std::vector<std::string> printedFiles() const;

  std::string name_;
  bool removed_ = false;
};

/// Takes a printer away from the system, as a user does who removes it.
void removePrinter(std::string const & name);

/// The value of CUPS_SERVER with which a child process finds no printers at all.
inline constexpr char kNoPrintServer[] = "/nowhere/socket";

/// Skips its tests where there is no print server.
class PrintTest : public testing::Test {
protected:
  void SetUp() override;
};

} // namespace support

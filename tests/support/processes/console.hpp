#pragma once
/// \file
/// The console of another process, read from inside.
///
///     support::ConsoleView console(child.processId());
///     EXPECT_EQ(console.title(), "A title");
///     EXPECT_EQ(console.lines(), std::vector<std::string>{"first line"});
///
/// The test process gives up a console of its own and joins the other one, which then lives on when its process ends.
/// One view at a time. Ctrl+C and Ctrl+Break on that console do not end the test.

#include <string>
#include <string_view>
#include <vector>

namespace support {

class ConsoleView {
public:
  /// Throws std::runtime_error when the process has no console.
  explicit ConsoleView(unsigned long processId);
  ConsoleView(ConsoleView const &) = delete;
  ConsoleView & operator=(ConsoleView const &) = delete;
  ~ConsoleView();

  std::string title() const;
  /// The lines from the top to the last one with a text, without blanks at their ends.
  std::vector<std::string> lines() const;
  /// Types the text; "\r" is the Enter key.
  void type(std::string_view text) const;

private:
  void * output_;
  void * input_;
};

} // namespace support

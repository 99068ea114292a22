#include "ui/boxtext.hpp"

#include <algorithm>
#include <string>
#include <vector>

namespace kivara {
namespace {

std::string prepared(SV::String const & text) {
  std::string result(text.c_str());
  result.erase(result.find_last_not_of('\n') + 1);
  std::replace(result.begin(), result.end(), '\t', ' ');
  return result;
}

class Wrapping {
public:
  Wrapping(SV::String const & text, long maxWidth, TextMeasure & measure)
      : original_(prepared(text)), wrapped_(original_), maxWidth_(maxWidth), measure_(measure) {}

  WrappedText run() {
    if (!original_.empty())
      lines_ = 1 + static_cast<long>(std::count(original_.begin(), original_.end(), '\n'));
    // Lines behind the end of the text are those that were counted twice: they are empty.
    for (long line = 0; line < lines_ && start_ <= wrapped_.size(); ++line)
      takeLine();
    return {SV::String(wrapped_.c_str()), lines_, width_};
  }

private:
  /// Measures the line at start_, breaks it if it is too wide, and moves start_ to the next one.
  void takeLine() {
    std::size_t const end = std::min(wrapped_.find('\n', start_), wrapped_.size());
    std::string_view const line = std::string_view(wrapped_).substr(start_, end - start_);
    std::size_t const beginning = tooWideBeginning(line);
    std::size_t const space = beginning == 0 ? std::string_view::npos : lastFittingSpace(line.substr(0, beginning));
    if (space == std::string_view::npos) {
      count(line);
      start_ = end + 1;
    } else {
      count(line.substr(0, space + 1));
      breakAt(original_.find(line) + space, end);
    }
  }

  void breakAt(std::size_t place, std::size_t end) {
    ++lines_;
    bool const isNew = wrapped_[place] != '\n';
    wrapped_[place] = '\n';
    if (place >= start_)
      start_ = place + 1;
    else if (!isNew)
      start_ = end + 1;
    // Otherwise a line before this one has become two, and the next one is this one again.
  }

  void count(std::string_view line) { width_ = std::max(width_, measure_.widthOf(line)); }

  bool isTooWide(std::string_view text) { return measure_.widthOf(text) > maxWidth_; }

  /// The length of a beginning of the line that is too wide; 0 when the whole line fits. What comes after it is never
  /// measured: in a text of one long line that would be done again for each line that is made of it.
  std::size_t tooWideBeginning(std::string_view line) {
    constexpr std::size_t first = 512;
    for (std::size_t length = first; length < line.size(); length *= 2)
      if (isTooWide(line.substr(0, length)))
        return length;
    return isTooWide(line) ? line.size() : 0;
  }

  /// The last space up to which the line fits. Widths only grow, so half of the spaces are left out by each measure.
  std::size_t lastFittingSpace(std::string_view line) {
    std::vector<std::size_t> spaces;
    for (std::size_t at = line.find(' '); at != std::string_view::npos; at = line.find(' ', at + 1))
      spaces.push_back(at);
    auto const firstTooWide = std::partition_point(
        spaces.begin(), spaces.end(), [&](std::size_t space) { return !isTooWide(line.substr(0, space + 1)); });
    return firstTooWide == spaces.begin() ? std::string_view::npos : *(firstTooWide - 1);
  }

  std::string const original_;
  std::string wrapped_;
  long maxWidth_;
  TextMeasure & measure_;
  std::size_t start_ = 0;
  long lines_ = 0;
  long width_ = 0;
};

} // namespace

WrappedText wrapText(SV::String const & text, long maxWidth, TextMeasure & measure) {
  return Wrapping(text, maxWidth, measure).run();
}

} // namespace kivara

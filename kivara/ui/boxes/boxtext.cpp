#include "ui/boxes/boxtext.hpp"

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
    if (original_.empty())
      return {};
    lines_ = 1 + static_cast<long>(std::count(original_.begin(), original_.end(), '\n'));
    while (start_ <= wrapped_.size())
      takeLine();
    return {SV::String(wrapped_.c_str()), lines_, width_};
  }

private:
  /// Measures the line at start_, breaks it if it is too wide, and moves start_ to the next one.
  void takeLine() {
    std::size_t const end = std::min(wrapped_.find('\n', start_), wrapped_.size());
    std::string_view const line = std::string_view(wrapped_).substr(start_, end - start_);
    Beginning const beginning = measuredBeginning(line);
    Beginning const fitting = beginning.width > maxWidth_ ? lastFitting(line, beginning) : Beginning();
    if (fitting.length == 0) {
      count(beginning.length == line.size() ? beginning.width : measure_.widthOf(line));
      start_ = end + 1;
    } else {
      count(fitting.width);
      breakAt(original_.find(line) + fitting.length - 1, end);
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

  void count(long width) { width_ = std::max(width_, width); }

  /// So many characters of a line, and how wide they are.
  struct Beginning {
    std::size_t length = 0;
    long width = 0;
  };

  Beginning measured(std::string_view line, std::size_t length) {
    return {length, measure_.widthOf(line.substr(0, length))};
  }

  /// The whole line, or a part that is too wide already. What comes after it is not measured: in a text of one long line
  /// that would be done again for each line that is made of it.
  Beginning measuredBeginning(std::string_view line) {
    constexpr std::size_t first = 512;
    for (std::size_t length = first; length < line.size(); length *= 2)
      if (Beginning const part = measured(line, length); part.width > maxWidth_)
        return part;
    return measured(line, line.size());
  }

  /// The longest part that fits and ends in a space; of length 0 when there is none. Widths only grow, so each measure leaves
  /// out all spaces on one side. The first ones go where the break would be if all characters had the same width.
  Beginning lastFitting(std::string_view line, Beginning tooWide) {
    std::vector<std::size_t> ends; // of the parts that end in a space
    for (std::size_t at = line.find(' '); at < tooWide.length; at = line.find(' ', at + 1))
      ends.push_back(at + 1);
    Beginning best;
    auto low = ends.begin();
    auto high = ends.end();
    for (int tries = 0; low != high; ++tries) {
      auto const guess = tries < 4 ? std::upper_bound(low, high, proportional(best, tooWide)) : low + (high - low) / 2;
      auto const next = guess == low ? low : guess - 1;
      Beginning const part = measured(line, *next);
      if (part.width > maxWidth_) {
        tooWide = part;
        high = next;
      } else {
        best = part;
        low = next + 1;
      }
    }
    return best;
  }

  std::size_t proportional(Beginning const & fitting, Beginning const & tooWide) const {
    double const share =
        static_cast<double>(maxWidth_ - fitting.width) / static_cast<double>(tooWide.width - fitting.width);
    return fitting.length + static_cast<std::size_t>(share * static_cast<double>(tooWide.length - fitting.length));
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

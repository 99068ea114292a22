#pragma once
/// \file
/// Model of a text file reader, over the whole text in memory, byte by byte.

#include <cstdint>
#include <optional>
#include <string>

class LineModel {
public:
  static constexpr std::int64_t kBlock = 8192;

  explicit LineModel(std::string bytes) : bytes_(std::move(bytes)) {}

  void moveTo(std::int64_t offset) {
    start_ = position_ = offset;
    lost_ = false;
  }

  /// The next line with its line feed; nothing at the end. The model does not cover lines of 8192 bytes and more.
  std::optional<std::string> next() {
    if (lost_ || position_ >= size())
      return std::nullopt;
    std::string line;
    while (position_ < size() && bytes_[at(position_)] != '\r' && bytes_[at(position_)] != '\n')
      line += bytes_[at(position_++)];
    bool const carriageReturn = take('\r');
    bool const lineFeed = !lost_ && take('\n');
    if (lost_)
      return std::nullopt;
    pair_ = carriageReturn && lineFeed;
    return line + '\n';
  }

  std::int64_t size() const { return static_cast<std::int64_t>(bytes_.size()); }
  std::int64_t offset() const { return position_; }
  bool pair() const { return pair_; }
  /// Whether the last line was lost to the line break of an old block; the offset then has no meaning.
  bool lost() const { return lost_; }

private:
  static std::size_t at(std::int64_t position) { return static_cast<std::size_t>(position); }

  /// After the end, the reader finds what the last block began with; a terminator there loses the line.
  bool take(char terminator) {
    bool const behindEnd = position_ >= size();
    std::int64_t const lastBlock = start_ + (size() - 1 - start_) / kBlock * kBlock;
    if (bytes_[at(behindEnd ? lastBlock : position_)] != terminator)
      return false;
    lost_ = behindEnd;
    ++position_;
    return true;
  }

  std::string bytes_;
  std::int64_t start_ = 0;
  std::int64_t position_ = 0;
  bool pair_ = false;
  bool lost_ = false;
};

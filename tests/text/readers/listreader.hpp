#pragma once
/// \file
/// A reader that is not a file reader, and records the calls of its operations.

#include "areader.hpp"

#include <string>
#include <vector>

class ListReader : public KivLineReader {
public:
  struct Record {
    int inits = 0;
    int lines = 0;
    std::vector<std::string> end; ///< "done", "deleted"
  };

  ListReader(std::vector<std::string> lines, Record & record, bool opens = true)
      : lines_(std::move(lines)), record_(record), opens_(opens) {}
  ~ListReader() override { record_.end.emplace_back("deleted"); }

  bool Init() override {
    ++record_.inits;
    return opens_;
  }
  bool Done() override {
    record_.end.emplace_back("done");
    return true;
  }
  bool GetLine(SV::String & line) override {
    ++record_.lines;
    if (next_ == lines_.size())
      return false;
    line.Assign(lines_[next_].data(), static_cast<std::int32_t>(lines_[next_].size()));
    ++next_;
    return true;
  }
  std::int64_t GetCurrentOffset() const override { return static_cast<std::int64_t>(next_) * 1000; }
  bool Is2CharsForNewline() const override { return false; }

private:
  std::vector<std::string> lines_;
  Record & record_;
  bool opens_;
  std::size_t next_ = 0;
};

// Tokens beside Boost.Tokenizer with the same classes, and the cost of a token and of raw text in short and in long lines.

#include "aparser.hpp"
#include "support/ratio.hpp"
#include "text/sampletext.hpp"

#include <boost/tokenizer.hpp>

namespace {

using Separator = boost::char_separator<char>;

constexpr std::size_t kCharacters = 400'000;

/// Lines that are in memory already, so that tokens are measured and not files.
class MemoryReader : public KivLineReader {
public:
  explicit MemoryReader(std::vector<SV::String> const & lines) : lines_(lines) {}
  bool Init() override { return true; }
  bool Done() override { return true; }
  bool GetLine(SV::String & line) override {
    if (next_ == lines_.size())
      return false;
    line = lines_[next_++];
    return true;
  }
  std::int64_t GetCurrentOffset() const override { return static_cast<std::int64_t>(next_); }
  bool Is2CharsForNewline() const override { return false; }

private:
  std::vector<SV::String> const & lines_;
  std::size_t next_ = 0;
};

std::vector<SV::String> stringsOf(std::vector<std::string> const & lines) {
  std::vector<SV::String> strings;
  for (auto const & line : lines)
    strings.emplace_back(line.c_str());
  return strings;
}

Separator peerClasses() { return Separator(" \t\n\v\f\r", "!\"#$%&'()*,/:;<=>?@[\\]^`{|}~"); }

std::vector<std::string> tokensOfOurs(std::vector<std::string> const & lines) {
  auto const strings = stringsOf(lines);
  KivTextParser text(new MemoryReader(strings), 1);
  std::vector<std::string> tokens;
  for (SV::String token; text.GetNextToken(token);)
    tokens.emplace_back(token.c_str());
  return tokens;
}

std::vector<std::string> tokensOfPeer(std::vector<std::string> const & lines) {
  Separator const classes = peerClasses();
  std::vector<std::string> tokens;
  for (auto const & line : lines)
    for (auto const & token : boost::tokenizer<Separator>(line, classes))
      tokens.push_back(token);
  return tokens;
}

/// Whether both sides do the same work; otherwise the comparison is void.
bool sameTokens(std::vector<std::string> const & lines, benchmark::State & state) {
  if (tokensOfOurs(lines) == tokensOfPeer(lines))
    return true;
  state.SkipWithError("the peer finds other tokens");
  return false;
}

bench::Body parser(std::size_t lineLength) {
  return [lineLength](benchmark::State & state) {
    auto const lines = stringsOf(bench::sampleLines(lineLength, kCharacters));
    for (auto _ : state) {
      KivTextParser text(new MemoryReader(lines), 1);
      for (SV::String token; text.GetNextToken(token);)
        benchmark::DoNotOptimize(token);
    }
  };
}

bench::Body tokenizer(std::size_t lineLength) {
  return [lineLength](benchmark::State & state) {
    auto const lines = bench::sampleLines(lineLength, kCharacters);
    if (!sameTokens(lines, state))
      return;
    Separator const classes = peerClasses();
    for (auto _ : state)
      for (auto const & line : lines)
        for (auto const & token : boost::tokenizer<Separator>(line, classes))
          benchmark::DoNotOptimize(token);
  };
}

/// Skips the text before each quotation mark and reads the text up to the next one.
bench::Body rawText(std::size_t lineLength) {
  return [lineLength](benchmark::State & state) {
    auto const lines = stringsOf(bench::sampleLines(lineLength, kCharacters));
    for (auto _ : state) {
      KivTextParser text(new MemoryReader(lines), 1);
      for (SV::String quoted; text.IsOkay();) {
        text.SkipUntil('"', true);
        text.GetUntil('"', quoted, true, '\\');
        benchmark::DoNotOptimize(quoted);
      }
    }
  };
}

bench::Pair const pairs[] = {
    {"KivTextParser: tokens in lines of 80 characters", bench::timesAsFast(1.5), parser(80), "Boost.Tokenizer",
     tokenizer(80)},
    {"KivTextParser: tokens in lines of 8,000 characters", bench::timesAsFast(1.5), parser(8000), "Boost.Tokenizer",
     tokenizer(8000)},
    {"KivTextParser: a token in a line of 8,000 characters", bench::atMost(1.1), parser(8000), "in one of 80",
     parser(80)},
    {"KivTextParser: raw text in a line of 8,000 characters", bench::atMost(1.1), rawText(8000), "in one of 80",
     rawText(80)},
};

} // namespace

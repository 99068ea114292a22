#include "frame/arguments.hpp"

#include "tools/winapi.hpp"

#include <cstdlib>
#include <cstring>

namespace kivara {
namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

/// Counts words and characters; if there is a block, also copies them to it.
class Output {
public:
  Output() = default;
  Output(char ** words, char * characters) : words_(words), characters_(characters) {}

  void beginWord() {
    if (words_ != nullptr)
      words_[wordCount_] = characters_ + characterCount_;
    ++wordCount_;
  }
  void endWord() { put('\0'); }

  void put(char c, std::size_t times = 1) {
    if (words_ != nullptr)
      std::memset(characters_ + characterCount_, c, times);
    characterCount_ += times;
  }

  std::size_t wordCount() const { return wordCount_; }
  std::size_t characterCount() const { return characterCount_; }

private:
  char ** words_ = nullptr;
  char * characters_ = nullptr;
  std::size_t wordCount_ = 0;
  std::size_t characterCount_ = 0;
};

/// Goes through the line once, word by word.
class Splitter {
public:
  Splitter(char const * line, unsigned codePage, Output & out) : at_(line), codePage_(codePage), out_(out) {}

  void run() {
    programWord();
    for (skipBlanks(); *at_ != '\0'; skipBlanks())
      argumentWord();
  }

private:
  void skipBlanks() {
    while (isBlank(*at_))
      ++at_;
  }

  void copyCharacter() {
    if (at_[1] != '\0' && IsDBCSLeadByteEx(codePage_, static_cast<BYTE>(*at_)))
      out_.put(*at_++);
    out_.put(*at_++);
  }

  void programWord() {
    out_.beginWord();
    bool const quoted = *at_ == '"';
    at_ += quoted;
    while (*at_ != '\0' && (quoted ? *at_ != '"' : !isBlank(*at_)))
      copyCharacter();
    if (*at_ == '"')
      ++at_;
    out_.endWord();
  }

  void argumentWord() {
    out_.beginWord();
    bool quoted = false;
    while (*at_ != '\0' && (quoted || !isBlank(*at_))) {
      if (*at_ == '\\')
        backslashes();
      else if (*at_ == '"')
        quote(quoted);
      else
        copyCharacter();
    }
    out_.endWord();
  }

  void backslashes() {
    std::size_t const count = std::strspn(at_, "\\");
    at_ += count;
    if (*at_ != '"') {
      out_.put('\\', count);
      return;
    }
    out_.put('\\', count / 2);
    if (count % 2 != 0)
      out_.put(*at_++);
  }

  void quote(bool & quoted) {
    ++at_;
    if (quoted && *at_ == '"')
      out_.put(*at_++);
    quoted = !quoted;
  }

  char const * at_;
  unsigned codePage_;
  Output & out_;
};

} // namespace

ArgumentBlock splitCommandLine(char const * line, unsigned codePage) {
  char const * const text = line != nullptr ? line : "";
  Output counted;
  Splitter(text, codePage, counted).run();

  std::size_t const arrayBytes = (counted.wordCount() + 1) * sizeof(char *);
  char * const block = static_cast<char *>(std::malloc(arrayBytes + counted.characterCount()));
  if (block == nullptr)
    return {};
  char ** const words = reinterpret_cast<char **>(block);
  Output copied(words, block + arrayBytes);
  Splitter(text, codePage, copied).run();
  words[copied.wordCount()] = nullptr;
  return {static_cast<int>(copied.wordCount()), words};
}

SV::PrinterSwitches readPrinterSwitches(int argc, char const * const * argv) {
  SV::PrinterSwitches switches;
  for (int i = 1; i < argc; ++i) {
    if (*argv[i] != '-' && *argv[i] != '/')
      continue;
    char const * const word = argv[i] + 1;
    if (std::strcmp(word, "registry-printers") == 0) {
      switches.registryPrinters = true;
      switches.currentPrinting = false;
    } else if (std::strcmp(word, "case-sensitive-printers") == 0) {
      switches.caseSensitivePrinters = true;
    } else if (std::strcmp(word, "legacy-printing") == 0) {
      switches.currentPrinting = false;
    }
  }
  return switches;
}

} // namespace kivara

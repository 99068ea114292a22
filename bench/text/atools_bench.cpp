// The helpers for strings beside the loops that one would write with the standard library.

#include "atools.hpp"
#include "support/ratio.hpp"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

using SV::String;

// Splitting.

/// Fields of \p fieldLength characters on average, each followed by a separator.
std::string fields(std::size_t size, std::size_t fieldLength, std::string const & separator) {
  std::mt19937 random(1);
  std::string text;
  while (text.size() < size)
    text += std::string(fieldLength / 2 + random() % (fieldLength + 1), 'x') + separator;
  return text;
}

template <class Separator> bench::Body split(std::string const & characters, Separator separator) {
  return [=](benchmark::State & state) {
    String const text(characters.c_str());
    ISequence<String> tokens;
    for (auto _ : state) {
      Kiv_SplitIntoTokens(text, separator, tokens);
      benchmark::DoNotOptimize(tokens.data());
    }
  };
}

bench::Body findLoop(std::string const & characters, std::string const & separator) {
  return [=](benchmark::State & state) {
    std::vector<std::string> tokens;
    for (auto _ : state) {
      tokens.clear();
      std::size_t start = 0;
      for (std::size_t end; (end = characters.find(separator, start)) != std::string::npos;) {
        tokens.push_back(characters.substr(start, end - start));
        start = end + separator.size();
      }
      tokens.push_back(characters.substr(start));
      benchmark::DoNotOptimize(tokens.data());
    }
  };
}

// Masks.

/// Every tenth character is a quotation mark or a backslash.
std::string quoted(std::size_t size) {
  std::string text(size, 'x');
  for (std::size_t i = 3; i < size; i += 10)
    text[i] = i % 20 == 3 ? '"' : '\\';
  return text;
}

std::string masked(std::string const & text) {
  std::string result;
  for (char const c : text) {
    if (c == '"' || c == '\\')
      result += '\\';
    result += c;
  }
  return result;
}

std::string unmasked(std::string const & text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\')
      ++i;
    result += text[i];
  }
  return result;
}

std::string maskedCSV(std::string const & text) {
  bool const quotes = text.find_first_of("\";") != std::string::npos;
  std::string result(quotes ? "\"" : "");
  for (char const c : text) {
    if (c == '"')
      result += '"';
    result += c;
  }
  return quotes ? result + '"' : result;
}

template <class Text, class Operation> bench::Body onText(std::string const & characters, Operation operation) {
  return [=](benchmark::State & state) {
    Text const text(characters.c_str());
    for (auto _ : state) {
      auto result = operation(text);
      benchmark::DoNotOptimize(result);
    }
  };
}

bench::Pair maskPair(char const * name, std::size_t size) {
  return {name, bench::atMost(1.2),
          onText<String>(quoted(size), [](String const & text) { return Kiv_Mask(text.c_str(), '"', '\\'); }),
          "a loop over std::string", onText<std::string>(quoted(size), masked)};
}

bench::Pair unmaskPair(char const * name, std::size_t size) {
  return {name, bench::atMost(1.2),
          onText<String>(masked(quoted(size)), [](String const & text) { return Kiv_Unmask(text.c_str(), '\\'); }),
          "a loop over std::string", onText<std::string>(masked(quoted(size)), unmasked)};
}

bench::Pair csvPair(char const * name, std::size_t size) {
  return {name, bench::atMost(1.2), onText<String>(quoted(size), Kiv_MaskCSV), "a loop over std::string",
          onText<std::string>(quoted(size), maskedCSV)};
}

// Numbers.

double atofInCLocale(std::string text) {
  std::replace(text.begin(), text.end(), ',', '.');
  std::setlocale(LC_ALL, "C");
  return std::atof(text.c_str());
}

std::string withoutZeros(std::string text) {
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
      text.pop_back();
  }
  return text;
}

std::string ftoaInCLocale(double value, int precision) {
  std::string const former = std::setlocale(LC_ALL, nullptr);
  std::setlocale(LC_ALL, "C");
  char text[512];
  _snprintf(text, sizeof text, "%.*f", precision, value);
  std::setlocale(LC_ALL, former.c_str());
  return withoutZeros(text);
}

int ltoaInCLocale(long value, char * text) {
  std::setlocale(LC_ALL, "C");
  return __ms_sprintf(text, "%ld", value);
}

template <class Operation> bench::Body onNumbers(Operation operation) {
  return [=](benchmark::State & state) {
    std::setlocale(LC_ALL, "C");
    double number = 0.125;
    for (auto _ : state) {
      auto result = operation(number);
      benchmark::DoNotOptimize(result);
      number += 1;
    }
  };
}

char numberText[64];

// std::string stores up to 15 characters without a block of the heap, so only longer fields compare the splitting.
std::string const someFields = fields(400, 40, ";");
std::string const someShortFields = fields(200, 20, ";");
std::string const megabyteOfFields = fields(1 << 20, 40, ";");
std::string const megabyteOfLines = fields(1 << 20, 80, "\r\n");
std::string const megabyteOfShortFields = fields(1 << 20, 8, ";");

bench::Pair const pairs[] = {
    {"Kiv_SplitIntoTokens: 10 fields of 40 characters", bench::atMost(1.2), split(someFields, ';'), "std::string::find",
     findLoop(someFields, ";")},
    {"Kiv_SplitIntoTokens: 10 fields of 20 characters", bench::atMost(1.2), split(someShortFields, ';'),
     "std::string::find", findLoop(someShortFields, ";")},
    {"Kiv_SplitIntoTokens: 1 MB in fields of 40 characters", bench::atMost(1.2), split(megabyteOfFields, ';'),
     "std::string::find", findLoop(megabyteOfFields, ";")},
    {"Kiv_SplitIntoTokens: 1 MB in lines of 80 characters", bench::atMost(1.2), split(megabyteOfLines, "\r\n"),
     "std::string::find", findLoop(megabyteOfLines, "\r\n")},
    {"Kiv_SplitIntoTokens: 1 MB in fields of 8 characters", bench::atMost(1.2), split(megabyteOfShortFields, ';'),
     "std::string::find", findLoop(megabyteOfShortFields, ";")},
    maskPair("Kiv_Mask: 50 characters", 50),
    maskPair("Kiv_Mask: 10,000 characters", 10'000),
    unmaskPair("Kiv_Unmask: 50 characters", 50),
    unmaskPair("Kiv_Unmask: 10,000 characters", 10'000),
    csvPair("Kiv_MaskCSV: 50 characters", 50),
    csvPair("Kiv_MaskCSV: 10,000 characters", 10'000),
    {"kiv_atof", bench::atMost(1.2), onNumbers([](double) { return kiv_atof("12345,678"); }), "atof in locale C",
     onNumbers([](double) { return atofInCLocale("12345,678"); })},
    {"kiv_ltoa", bench::atMost(1.2),
     onNumbers([](double number) { return kiv_ltoa(static_cast<long>(number), numberText, "%ld"); }),
     "sprintf in locale C",
     onNumbers([](double number) { return ltoaInCLocale(static_cast<long>(number), numberText); })},
    {"kiv_ftoa_no_locale", bench::atMost(1.2), onNumbers([](double number) { return kiv_ftoa_no_locale(number, 6); }),
     "snprintf in locale C", onNumbers([](double number) { return ftoaInCLocale(number, 6); })},
};

} // namespace

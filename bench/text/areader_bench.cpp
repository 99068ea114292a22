// Lines of a file beside std::getline on an std::ifstream.

#include "areader.hpp"
#include "support/ratio.hpp"
#include "text/sampletext.hpp"

#include <cstdio>
#include <fstream>
#include <memory>

namespace {

constexpr char kFile[] = "lines.txt";

/// Four million characters, in lines of about this length.
void writeLines(std::size_t lineLength) {
  std::ofstream file(kFile, std::ios::binary);
  for (auto const & line : bench::sampleLines(lineLength, 4'000'000))
    file << line;
}

bench::Body reader(std::size_t lineLength) {
  return [lineLength](benchmark::State & state) {
    writeLines(lineLength);
    for (auto _ : state) {
      std::unique_ptr<KivLineReader> const file(new KivTextFileReader(kFile));
      SV::String line;
      file->Init();
      while (file->GetLine(line))
        benchmark::DoNotOptimize(line);
    }
    std::remove(kFile);
  };
}

bench::Body getline(std::size_t lineLength, std::ios::openmode mode) {
  return [lineLength, mode](benchmark::State & state) {
    writeLines(lineLength);
    for (auto _ : state) {
      std::ifstream file(kFile, mode);
      std::string line;
      while (std::getline(file, line))
        benchmark::DoNotOptimize(line);
    }
    std::remove(kFile);
  };
}

constexpr std::ios::openmode kText = std::ios::in;
constexpr std::ios::openmode kBinary = std::ios::in | std::ios::binary;

// The peer of the goal opens the file in text mode, which is the default: there the runtime looks for the pair of carriage
// return and line feed, as our reader does. Binary mode, which leaves the carriage return in the line, is shown as well.
bench::Pair const pairs[] = {
    {"KivTextFileReader: lines of 60 characters", bench::timesAsFast(2), reader(60), "std::getline on std::ifstream",
     getline(60, kText)},
    {"KivTextFileReader: lines of 60, beside binary mode", bench::shown(), reader(60),
     "std::getline on std::ifstream, binary", getline(60, kBinary)},
    {"KivTextFileReader: lines of 1,000 characters", bench::timesAsFast(2), reader(1000),
     "std::getline on std::ifstream", getline(1000, kText)},
    {"KivTextFileReader: lines of 1,000, beside binary mode", bench::shown(), reader(1000),
     "std::getline on std::ifstream, binary", getline(1000, kBinary)},
};

} // namespace

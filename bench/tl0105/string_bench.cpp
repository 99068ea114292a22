// String beside std::string.

#include "support/ratio.hpp"
#include "tools/string.hpp"

#include <string>

namespace {

using SV::String;

std::string const sixtyFour(64, 'x');
std::string const thousand(1000, 'x');

template <class Text> Text textOf(std::string const & characters) { return Text(characters.c_str()); }

template <class Text> bench::Body copyOf(std::string const & characters) {
  return [&characters](benchmark::State & state) {
    Text const text = textOf<Text>(characters);
    for (auto _ : state) {
      Text copy(text);
      benchmark::DoNotOptimize(copy);
    }
  };
}

template <class Text> bench::Body construct(std::string const & characters) {
  return [&characters](benchmark::State & state) {
    for (auto _ : state) {
      Text text(characters.c_str());
      benchmark::DoNotOptimize(text);
    }
  };
}

template <class Text> bench::Body append(std::string const & characters) {
  return [&characters](benchmark::State & state) {
    Text const part = textOf<Text>(characters);
    for (auto _ : state) {
      Text text(sixtyFour.c_str());
      text += part;
      benchmark::DoNotOptimize(text);
    }
  };
}

template <class Text> bench::Body compare(std::string const & characters) {
  return [&characters](benchmark::State & state) {
    Text const a = textOf<Text>(characters);
    Text const b = textOf<Text>(characters);
    for (auto _ : state) {
      bool const equal = a == b;
      bool const less = a < b;
      benchmark::DoNotOptimize(equal);
      benchmark::DoNotOptimize(less);
    }
  };
}

template <class Text> bench::Body substring() {
  return [](benchmark::State & state) {
    Text const text = textOf<Text>(thousand);
    for (auto _ : state) {
      auto part = text.substr(100, 64);
      benchmark::DoNotOptimize(part);
    }
  };
}

bench::Pair const pairs[] = {
    {"String: copy of 64 characters", bench::atMost(1.0 / 3), copyOf<String>(sixtyFour), "std::string",
     copyOf<std::string>(sixtyFour)},
    {"String: construction of 64 characters", bench::atMost(1.2), construct<String>(sixtyFour), "std::string",
     construct<std::string>(sixtyFour)},
    {"String: construction of 1,000 characters", bench::atMost(1.2), construct<String>(thousand), "std::string",
     construct<std::string>(thousand)},
    {"String: appending 64 characters", bench::atMost(1.2), append<String>(sixtyFour), "std::string",
     append<std::string>(sixtyFour)},
    {"String: appending 1,000 characters", bench::atMost(1.2), append<String>(thousand), "std::string",
     append<std::string>(thousand)},
    {"String: comparison of 64 characters", bench::atMost(1.2), compare<String>(sixtyFour), "std::string",
     compare<std::string>(sixtyFour)},
    {"String: substring of 64 characters", bench::atMost(1.2), substring<String>(), "std::string",
     substring<std::string>()},
};

} // namespace

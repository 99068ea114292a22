#pragma once
/// \file
/// The command line of fetch.

#include "tools/wstring.hpp"

#include <optional>

struct Options {
  SV::WString url;
  SV::WString file;
  SV::WString proxy;
  bool acceptAnyCertificate = false;
  bool noRedirects = false;
  unsigned seconds = 30;
  unsigned tries = 1;
};

/// Nothing when the words make no sense.
std::optional<Options> readOptions(int count, wchar_t ** words);

#pragma once
/// \file
/// Text files in the test's own working folder, and readers over them.

#include "areader.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Writes a file of exactly these bytes, replacing an existing one. By calls of the system, since some tests write very many.
inline std::string writeText(std::string_view bytes, char const * name = "text.txt") {
  HANDLE const file = CreateFileA(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD written = 0;
  if (file == INVALID_HANDLE_VALUE ||
      !WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) || written != bytes.size())
    ADD_FAILURE() << "cannot write " << name;
  CloseHandle(file);
  return name;
}

/// A text file reader and its owner.
template <class Reader = KivTextFileReader> class Owned {
public:
  explicit Owned(std::string const & name) : reader_(new Reader(name.c_str())), owner_(reader_) {}
  Reader * operator->() const { return reader_; }
  Reader * get() const { return reader_; }

private:
  Reader * reader_;
  std::unique_ptr<KivLineReader> owner_;
};

inline std::string bytesOf(SV::String const & text) { return {text.c_str(), static_cast<std::size_t>(text.Len())}; }

/// All lines up to the first GetLine that fails.
inline std::vector<std::string> linesOf(KivLineReader & reader) {
  std::vector<std::string> lines;
  for (SV::String line; reader.GetLine(line);)
    lines.push_back(bytesOf(line));
  return lines;
}

/// All lines of a file of these bytes.
inline std::vector<std::string> linesOfText(std::string_view bytes) {
  Owned<> const reader(writeText(bytes));
  EXPECT_TRUE(reader->Init());
  return linesOf(*reader.get());
}

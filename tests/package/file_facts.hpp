#pragma once
/// \file
/// What a program or DLL says of itself in its resources.
///
///     kivtest::FileFacts const pack(packagePath("installed/bin/language/1031/kivara72.dll"));
///     EXPECT_EQ(pack.languages(), std::set<int>{1031});

#include "tools/winapi.hpp"

#include <set>
#include <string>
#include <vector>

namespace kivtest {

/// Keeps the file open; what is not there is empty.
class FileFacts {
public:
  explicit FileFacts(std::string const & path);
  FileFacts(FileFacts const &) = delete;
  FileFacts & operator=(FileFacts const &) = delete;
  ~FileFacts();

  /// The languages of all resources.
  std::set<int> languages() const;
  /// Those of the block that holds the string.
  std::vector<int> languagesOfStrings(int number) const;
  /// A string resource, in whichever language it is.
  std::wstring string(int number) const;

  /// The manifest of a program.
  std::string manifest() const;

  /// The four numbers of the file's version.
  std::string version() const;
  /// Those of its product.
  std::string productVersion() const;
  /// A text of the version's one translation, such as "FileDescription".
  std::wstring versionText(std::wstring const & name) const;
  /// The language of that translation; -1 for none.
  int versionLanguage() const;

private:
  HMODULE module_;
  std::vector<char> version_;
};

} // namespace kivtest

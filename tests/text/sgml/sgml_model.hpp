#pragma once
/// \file
/// Character maps and conversions by the rules, with the standard library alone, and access to what KivSGMLString keeps to itself.

#include "asgml.hpp"

#include "sv0105/application/testapplication.hpp"

#include <array>
#include <string>
#include <vector>

/// Operations and members of KivSGMLString that its users do not see.
struct SgmlInternals {
  static int length(SV::String const & text);
  static char * newString(SV::String const & text);
  static char * newOrSame(SV::String const & text, bool & changed);
  static SV::String (&entities())[256];
  static int startOffset();
};

/// A map as a stream holds it, read by the rules.
struct MapModel {
  explicit MapModel(std::string const & file, bool strict = true);

  bool isGood;
  std::string language; ///< of a bad one "DEFAULT"
  int start;
  std::array<std::string, 256> entities; ///< of a bad one empty
};

/// The built-in entries as the language pack has them, in the table from \p start on.
std::array<std::string, 256> builtInEntities(int start);

/// A text converted by a table.
std::string convertedByModel(std::string const & text, std::array<std::string, 256> const & entities);

/// With the language pack that holds the built-in map.
class SgmlTest : public ToolkitTest {
protected:
  SgmlTest() { SV::Resource::SetResManager(&pack_); }
  ~SgmlTest() override { SV::Resource::SetResManager(nullptr); }

  static bool setMap(std::string const & file);

  /// The whole table as it is now.
  static std::array<std::string, 256> table();

private:
  SV::ResMgr pack_{"language\\2057\\kivara72.dll"};
};

/// A map of so many entries "e0", "e1", ... with these lines before them.
std::string numberedMap(std::string const & head, int entries);

inline SV::String stringOf(std::string const & text) {
  return SV::String(text.data(), static_cast<std::int32_t>(text.size()));
}

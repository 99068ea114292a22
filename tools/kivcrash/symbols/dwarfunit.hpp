#pragma once
/// \file
/// The debug symbols of one source file.

#include "symbols/dwarfranges.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace kivcrash {

/// A place in the source.
struct Place {
  std::string file;  ///< as the compiler knew it; empty: not known
  unsigned line = 0; ///< 0: not known
};

/// A function, or a place where one was inlined.
struct Scope {
  std::vector<AddressRange> ranges;
  int parent = -1; ///< the one around it; -1: none
  int depth = 0;
  bool isInlined = false;
  Place call; ///< from where it was inlined
  Dwarf_Off die = 0;
};

/// The name with which linkers know the function, or else its plain one; empty where it has none.
std::string functionName(Dwarf_Debug debug, Dwarf_Off die);

class DwarfUnit {
public:
  /// Reads lines and functions.
  DwarfUnit(Dwarf_Debug debug, Dwarf_Die unit);

  std::vector<Scope> const & scopes() const { return scopes_; }
  /// The innermost scope with the address; null where there is none.
  Scope const * innermost(std::uint64_t address) const;
  Place lineAt(std::uint64_t address) const;

private:
  struct Row {
    std::uint64_t address;
    std::uint64_t file;
    unsigned line;
  };
  struct Sequence {
    AddressRange range;
    std::vector<Row> rows; ///< by address
  };

  void readFiles(Dwarf_Line_Context lines, Dwarf_Unsigned version);
  void readRows(Dwarf_Line_Context lines);
  void readLines(Dwarf_Die unit);
  void readScopes(Dwarf_Die first, int parent, int depth);
  int readScope(Dwarf_Die die, int parent, int depth, bool isInlined);
  std::string fileAt(std::uint64_t index) const { return index < files_.size() ? files_[index] : ""; }

  Dwarf_Debug debug_;
  std::vector<std::string> files_;
  std::vector<Sequence> sequences_;
  std::vector<Scope> scopes_;
  std::size_t entries_ = 0; ///< looked at so far
};

} // namespace kivcrash

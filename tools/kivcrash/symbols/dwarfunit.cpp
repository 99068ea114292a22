#include "symbols/dwarfunit.hpp"

#include "common/text.hpp"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace kivcrash {
namespace {

constexpr int kDeepest = 200;                // scopes within scopes
constexpr int kMostOrigins = 16;             // declarations that a function refers to, one after the other
constexpr std::size_t kMostScopes = 500'000; // in one unit
/// The attribute by which a definition refers to its declaration, by its number in DWARF 4, 7.5.4.
constexpr Dwarf_Half kDeclaration = 0x47;
/// Entries looked at in one unit. In a damaged one, an entry may be its own neighbour.
constexpr std::size_t kMostEntries = 2'000'000;

std::optional<std::uint64_t> numberOf(Dwarf_Debug debug, Dwarf_Die die, Dwarf_Half kind) {
  Attribute const attribute = attributeOf(debug, die, kind);
  DwarfError error(debug);
  Dwarf_Unsigned number = 0;
  Dwarf_Signed sign = 0;
  if (attribute && dwarf_formudata(attribute.get(), &number, &error) == DW_DLV_OK)
    return number;
  if (attribute && dwarf_formsdata(attribute.get(), &sign, &error) == DW_DLV_OK && sign >= 0)
    return static_cast<std::uint64_t>(sign);
  return std::nullopt;
}

std::string stringOf(Dwarf_Debug debug, Dwarf_Die die, Dwarf_Half kind) {
  Attribute const attribute = attributeOf(debug, die, kind);
  DwarfError error(debug);
  char * text = nullptr;
  return attribute && dwarf_formstring(attribute.get(), &text, &error) == DW_DLV_OK ? text : "";
}

Die dieAt(Dwarf_Debug debug, Dwarf_Off offset) {
  DwarfError error(debug);
  Dwarf_Die die = nullptr;
  return Die(dwarf_offdie_b(debug, offset, TRUE, &die, &error) == DW_DLV_OK ? die : nullptr);
}

/// The declaration or definition that it refers to; null where there is none.
Die originOf(Dwarf_Debug debug, Dwarf_Die die) {
  for (Dwarf_Half const kind : {Dwarf_Half{DW_AT_abstract_origin}, kDeclaration}) {
    Attribute const attribute = attributeOf(debug, die, kind);
    DwarfError error(debug);
    Dwarf_Off offset = 0;
    if (attribute && dwarf_global_formref(attribute.get(), &offset, &error) == DW_DLV_OK)
      return dieAt(debug, offset);
  }
  return nullptr;
}

bool isAbsolute(std::string const & path) {
  return path.starts_with('/') || path.starts_with('\\') || (path.size() > 1 && path[1] == ':');
}

std::string joined(std::string const & folder, std::string const & name) {
  return folder.empty() || isAbsolute(name) ? name : folder + '/' + name;
}

/// Without "..", which builds in folders of their own have in all names.
std::string normal(std::string const & path) {
  return toUtf8(std::wstring_view(std::filesystem::path(toWide(path)).lexically_normal().generic_wstring()));
}

} // namespace

std::string functionName(Dwarf_Debug debug, Dwarf_Off offset) {
  std::string plain;
  Die die = dieAt(debug, offset);
  for (int i = 0; die && i < kMostOrigins; ++i) {
    for (Dwarf_Half const kind : {DW_AT_linkage_name, DW_AT_MIPS_linkage_name})
      if (std::string const name = stringOf(debug, die.get(), kind); !name.empty())
        return name;
    if (plain.empty())
      plain = stringOf(debug, die.get(), DW_AT_name);
    die = originOf(debug, die.get());
  }
  return plain;
}

DwarfUnit::DwarfUnit(Dwarf_Debug debug, Dwarf_Die unit) : debug_(debug) {
  readLines(unit);
  DwarfError error(debug);
  Dwarf_Die child = nullptr;
  if (dwarf_child(unit, &child, &error) == DW_DLV_OK)
    readScopes(child, -1, 0);
}

void DwarfUnit::readLines(Dwarf_Die unit) {
  DwarfError error(debug_);
  Dwarf_Unsigned version = 0;
  Dwarf_Small tables = 0;
  Dwarf_Line_Context lines = nullptr;
  if (dwarf_srclines_b(unit, &version, &tables, &lines, &error) != DW_DLV_OK)
    return;
  readFiles(lines, version);
  readRows(lines);
  dwarf_srclines_dealloc_b(lines);
}

/// In DWARF 5 files and folders count from 0, before from 1, with 0 for the folder of the compilation.
void DwarfUnit::readFiles(Dwarf_Line_Context lines, Dwarf_Unsigned version) {
  DwarfError error(debug_);
  Dwarf_Signed first = 0;
  Dwarf_Signed count = 0;
  Dwarf_Signed end = 0;
  char const * home = nullptr;
  dwarf_srclines_comp_dir(lines, &home, &error);
  if (dwarf_srclines_files_indexes(lines, &first, &count, &end, &error) != DW_DLV_OK || first < 0 || first > 1)
    return;
  files_.resize(static_cast<std::size_t>(first));
  for (Dwarf_Signed i = first; i < end; ++i) {
    char const * name = nullptr;
    char const * folder = nullptr;
    Dwarf_Unsigned folderIndex = 0;
    Dwarf_Unsigned time = 0;
    Dwarf_Unsigned length = 0;
    Dwarf_Form_Data16 * digest = nullptr;
    if (dwarf_srclines_files_data_b(lines, i, &name, &folderIndex, &time, &length, &digest, &error) != DW_DLV_OK ||
        !name)
      name = "";
    if ((version >= 5 || folderIndex != 0) &&
        dwarf_srclines_include_dir_data(lines, static_cast<Dwarf_Signed>(folderIndex), &folder, &error) != DW_DLV_OK)
      folder = nullptr;
    std::string const path = joined(folder ? folder : "", name);
    files_.push_back(path.empty() ? path : normal(joined(home ? home : "", path)));
  }
}

void DwarfUnit::readRows(Dwarf_Line_Context lines) {
  DwarfError error(debug_);
  Dwarf_Line * list = nullptr;
  Dwarf_Signed count = 0;
  if (dwarf_srclines_from_linecontext(lines, &list, &count, &error) != DW_DLV_OK)
    return;
  Sequence sequence;
  for (Dwarf_Signed i = 0; i < count; ++i) {
    Dwarf_Addr address = 0;
    Dwarf_Unsigned file = 0;
    Dwarf_Unsigned line = 0;
    Dwarf_Bool isEnd = 0;
    if (dwarf_lineaddr(list[i], &address, &error) != DW_DLV_OK ||
        dwarf_line_srcfileno(list[i], &file, &error) != DW_DLV_OK ||
        dwarf_lineno(list[i], &line, &error) != DW_DLV_OK ||
        dwarf_lineendsequence(list[i], &isEnd, &error) != DW_DLV_OK)
      return;
    if (!isEnd) {
      sequence.rows.push_back({address, file, static_cast<unsigned>(line)});
      continue;
    }
    if (!sequence.rows.empty()) {
      std::ranges::stable_sort(sequence.rows, {}, &Row::address);
      sequence.range = {sequence.rows.front().address, address};
      sequences_.push_back(std::move(sequence));
    }
    sequence = {};
  }
}

void DwarfUnit::readScopes(Dwarf_Die first, int parent, int depth) {
  DwarfError error(debug_);
  for (Die die(first); die && scopes_.size() < kMostScopes && entries_ < kMostEntries; ++entries_) {
    Dwarf_Half tag = 0;
    dwarf_tag(die.get(), &tag, &error);
    bool const isInlined = tag == DW_TAG_inlined_subroutine;
    bool const isScope = isInlined || tag == DW_TAG_subprogram;
    int const self = isScope ? readScope(die.get(), parent, depth, isInlined) : parent;
    Dwarf_Die next = nullptr;
    if (depth < kDeepest && dwarf_child(die.get(), &next, &error) == DW_DLV_OK)
      readScopes(next, self, depth + 1);
    next = nullptr;
    if (dwarf_siblingof_b(debug_, die.get(), TRUE, &next, &error) != DW_DLV_OK)
      next = nullptr;
    die.reset(next);
  }
}

/// Its number; that of the one around it where it has no code, as a declaration has none.
int DwarfUnit::readScope(Dwarf_Die die, int parent, int depth, bool isInlined) {
  Scope scope;
  scope.ranges = rangesOf(debug_, die);
  if (scope.ranges.empty())
    return parent;
  DwarfError error(debug_);
  scope.parent = parent;
  scope.depth = depth;
  scope.isInlined = isInlined;
  dwarf_dieoffset(die, &scope.die, &error);
  if (isInlined)
    scope.call = {fileAt(numberOf(debug_, die, DW_AT_call_file).value_or(files_.size())),
                  static_cast<unsigned>(numberOf(debug_, die, DW_AT_call_line).value_or(0))};
  scopes_.push_back(std::move(scope));
  return static_cast<int>(scopes_.size()) - 1;
}

Scope const * DwarfUnit::innermost(std::uint64_t address) const {
  Scope const * found = nullptr;
  for (Scope const & scope : scopes_)
    if ((!found || scope.depth > found->depth) &&
        std::ranges::any_of(scope.ranges, [&](AddressRange const & range) { return range.has(address); }))
      found = &scope;
  return found;
}

Place DwarfUnit::lineAt(std::uint64_t address) const {
  for (Sequence const & sequence : sequences_) {
    if (!sequence.range.has(address))
      continue;
    auto const after = std::ranges::upper_bound(sequence.rows, address, {}, &Row::address);
    if (after != sequence.rows.begin())
      return {fileAt(std::prev(after)->file), std::prev(after)->line};
  }
  return {};
}

} // namespace kivcrash

#include "symbols/debugsymbols.hpp"

#include <cxxabi.h>

#include <algorithm>
#include <cstdlib>

namespace kivcrash {
namespace {

constexpr int kMostUnits = 200'000;

std::string demangled(std::string const & name) {
  int status = 0;
  std::unique_ptr<char, decltype(&std::free)> const text(abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status),
                                                         std::free);
  return status == 0 && text && name.starts_with("_Z") ? std::string(text.get()) : name;
}

} // namespace

DebugSymbols::DebugSymbols(Image const & image) : object_(image), base_(image.base()) { readUnits(); }

void DebugSymbols::readUnits() {
  Dwarf_Debug const debug = object_.get();
  DwarfError error(debug);
  for (int i = 0; i < kMostUnits; ++i) {
    Dwarf_Unsigned length = 0;
    Dwarf_Unsigned typeOffset = 0;
    Dwarf_Unsigned next = 0;
    Dwarf_Off abbreviations = 0;
    Dwarf_Half version = 0;
    Dwarf_Half addressSize = 0;
    Dwarf_Half lengthSize = 0;
    Dwarf_Half extensionSize = 0;
    Dwarf_Half kind = 0;
    Dwarf_Sig8 signature{};
    // Its end sets the walk back to the first one.
    if (dwarf_next_cu_header_d(debug, TRUE, &length, &version, &abbreviations, &addressSize, &lengthSize,
                               &extensionSize, &signature, &typeOffset, &next, &kind, &error) != DW_DLV_OK)
      break;
    Dwarf_Die found = nullptr;
    Dwarf_Off offset = 0;
    if (dwarf_siblingof_b(debug, nullptr, TRUE, &found, &error) != DW_DLV_OK)
      continue;
    Die const unit(found);
    if (dwarf_dieoffset(unit.get(), &offset, &error) == DW_DLV_OK)
      for (AddressRange const & range : rangesOf(debug, unit.get()))
        ranges_.push_back({range, offset});
  }
  std::ranges::sort(ranges_, {}, [](UnitRange const & each) { return each.range.begin; });
}

DwarfUnit const * DebugSymbols::unitAt(std::uint64_t address) {
  auto const found = std::ranges::find_if(ranges_, [&](UnitRange const & each) { return each.range.has(address); });
  if (found == ranges_.end())
    return nullptr;
  std::unique_ptr<DwarfUnit> & unit = units_[found->die];
  if (!unit) {
    DwarfError error(object_.get());
    Dwarf_Die die = nullptr;
    if (dwarf_offdie_b(object_.get(), found->die, TRUE, &die, &error) != DW_DLV_OK)
      return nullptr;
    Die const owner(die);
    unit = std::make_unique<DwarfUnit>(object_.get(), die);
  }
  return unit.get();
}

Location DebugSymbols::locationOf(Dwarf_Off function, Place place) {
  return {demangled(functionName(object_.get(), function)), std::move(place)};
}

std::vector<Location> DebugSymbols::at(std::uint64_t offset) {
  std::vector<Location> locations;
  std::uint64_t const address = base_ + offset;
  DwarfUnit const * const unit = unitAt(address);
  if (!unit)
    return locations;
  Scope const * scope = unit->innermost(address);
  Place place = unit->lineAt(address);
  if (!scope && place.line != 0) // code of the compiler's own, such as that of an initialisation
    locations.push_back({"", place});
  while (scope) {
    locations.push_back(locationOf(scope->die, place));
    place = scope->call;
    scope = scope->isInlined && scope->parent >= 0 ? &unit->scopes()[static_cast<std::size_t>(scope->parent)] : nullptr;
  }
  return locations;
}

} // namespace kivcrash

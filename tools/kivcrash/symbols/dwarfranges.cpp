#include "symbols/dwarfranges.hpp"

namespace kivcrash {
namespace {

constexpr Dwarf_Unsigned kMostRanges = 1'000'000;

void add(std::vector<AddressRange> & ranges, std::uint64_t begin, std::uint64_t end) {
  if (begin < end)
    ranges.push_back({begin, end});
}

/// DWARF 5.
std::vector<AddressRange> listedRanges(Dwarf_Debug debug, Attribute const & attribute, Dwarf_Half form,
                                       Dwarf_Unsigned place) {
  std::vector<AddressRange> ranges;
  DwarfError error(debug);
  Dwarf_Rnglists_Head head = nullptr;
  Dwarf_Unsigned count = 0;
  Dwarf_Unsigned offset = 0;
  if (dwarf_rnglists_get_rle_head(attribute.get(), form, place, &head, &count, &offset, &error) != DW_DLV_OK)
    return ranges;
  for (Dwarf_Unsigned i = 0; i < count && i < kMostRanges; ++i) {
    unsigned length = 0;
    unsigned code = 0;
    Dwarf_Unsigned raw1 = 0;
    Dwarf_Unsigned raw2 = 0;
    Dwarf_Bool isUnavailable = 0;
    Dwarf_Unsigned begin = 0;
    Dwarf_Unsigned end = 0;
    if (dwarf_get_rnglists_entry_fields_a(head, i, &length, &code, &raw1, &raw2, &isUnavailable, &begin, &end,
                                          &error) != DW_DLV_OK)
      break;
    bool const isRange = code != DW_RLE_end_of_list && code != DW_RLE_base_address && code != DW_RLE_base_addressx;
    if (isRange && !isUnavailable)
      add(ranges, begin, end);
  }
  dwarf_dealloc_rnglists_head(head);
  return ranges;
}

/// DWARF 4 and before.
std::vector<AddressRange> olderRanges(Dwarf_Debug debug, Dwarf_Die die, Dwarf_Unsigned place, std::uint64_t base) {
  std::vector<AddressRange> ranges;
  DwarfError error(debug);
  Dwarf_Ranges * list = nullptr;
  Dwarf_Signed count = 0;
  Dwarf_Off offset = 0;
  Dwarf_Unsigned size = 0;
  if (dwarf_get_ranges_b(debug, place, die, &offset, &list, &count, &size, &error) != DW_DLV_OK)
    return ranges;
  for (Dwarf_Signed i = 0; i < count && list[i].dwr_type != DW_RANGES_END; ++i)
    if (list[i].dwr_type == DW_RANGES_ADDRESS_SELECTION)
      base = list[i].dwr_addr2;
    else
      add(ranges, base + list[i].dwr_addr1, base + list[i].dwr_addr2);
  dwarf_ranges_dealloc(debug, list, count);
  return ranges;
}

/// Where the unit of the function begins; older lists of ranges count from there.
std::uint64_t baseOf(Dwarf_Debug debug, Dwarf_Die die) {
  DwarfError error(debug);
  Dwarf_Off offset = 0;
  Dwarf_Die found = nullptr;
  if (dwarf_CU_dieoffset_given_die(die, &offset, &error) != DW_DLV_OK ||
      dwarf_offdie_b(debug, offset, TRUE, &found, &error) != DW_DLV_OK)
    return 0;
  Die const unit(found);
  Dwarf_Addr base = 0;
  return dwarf_lowpc(unit.get(), &base, &error) == DW_DLV_OK ? base : 0;
}

} // namespace

std::vector<AddressRange> rangesOf(Dwarf_Debug debug, Dwarf_Die die) {
  DwarfError error(debug);
  std::vector<AddressRange> ranges;
  if (Attribute const attribute = attributeOf(debug, die, DW_AT_ranges)) {
    Dwarf_Half form = 0;
    Dwarf_Unsigned place = 0;
    Dwarf_Off offset = 0;
    Dwarf_Half version = 0;
    Dwarf_Half offsetSize = 0;
    if (dwarf_whatform(attribute.get(), &form, &error) != DW_DLV_OK ||
        dwarf_get_version_of_die(die, &version, &offsetSize) != DW_DLV_OK)
      return ranges;
    if (form == DW_FORM_rnglistx ? dwarf_formudata(attribute.get(), &place, &error) != DW_DLV_OK
                                 : dwarf_global_formref(attribute.get(), &offset, &error) != DW_DLV_OK)
      return ranges;
    place += offset;
    return version >= 5 ? listedRanges(debug, attribute, form, place)
                        : olderRanges(debug, die, place, baseOf(debug, die));
  }
  Dwarf_Addr low = 0;
  Dwarf_Addr high = 0;
  Dwarf_Half form = 0;
  Dwarf_Form_Class kind = DW_FORM_CLASS_UNKNOWN;
  if (dwarf_lowpc(die, &low, &error) == DW_DLV_OK && dwarf_highpc_b(die, &high, &form, &kind, &error) == DW_DLV_OK)
    add(ranges, low, kind == DW_FORM_CLASS_ADDRESS ? high : low + high);
  return ranges;
}

} // namespace kivcrash

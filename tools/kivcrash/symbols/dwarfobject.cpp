#include "symbols/dwarfobject.hpp"

#include <stdexcept>

namespace kivcrash {
namespace {

/// Section 0 is none in files of other systems, and libdwarf counts on that.
Image::Section const * sectionOf(void * object, Dwarf_Half index) {
  auto const & sections = static_cast<Image const *>(object)->sections();
  return index > 0 && index <= sections.size() ? &sections[index - 1U] : nullptr;
}

int sectionInfo(void * object, Dwarf_Half index, Dwarf_Obj_Access_Section * info, int *) {
  *info = {};
  info->name = "";
  if (index == 0)
    return DW_DLV_OK;
  Image::Section const * const section = sectionOf(object, index);
  if (section == nullptr)
    return DW_DLV_NO_ENTRY;
  info->addr = section->address;
  info->size = section->bytes.size();
  info->name = section->name.c_str();
  return DW_DLV_OK;
}

int loadSection(void * object, Dwarf_Half index, Dwarf_Small ** bytes, int *) {
  Image::Section const * const section = sectionOf(object, index);
  if (section == nullptr)
    return DW_DLV_NO_ENTRY;
  // The interface knows no constant bytes, but nothing is written to them.
  *bytes = reinterpret_cast<Dwarf_Small *>(const_cast<char *>(section->bytes.data()));
  return DW_DLV_OK;
}

Dwarf_Unsigned sectionCount(void * object) { return static_cast<Image const *>(object)->sections().size() + 1; }
Dwarf_Endianness byteOrder(void *) { return DW_OBJECT_LSB; }
Dwarf_Small lengthSize(void *) { return 4; }
Dwarf_Small pointerSize(void *) { return 8; }

constexpr Dwarf_Obj_Access_Methods kMethods{sectionInfo,  byteOrder,   lengthSize, pointerSize,
                                            sectionCount, loadSection, nullptr};

} // namespace

DwarfObject::DwarfObject(Image const & image) : access_{const_cast<Image *>(&image), &kMethods} {
  Dwarf_Error error = nullptr;
  if (dwarf_object_init_b(&access_, nullptr, nullptr, DW_GROUPNUMBER_ANY, &debug_, &error) != DW_DLV_OK) {
    std::string const reason = error != nullptr ? dwarf_errmsg(error) : "there are no debug symbols in it";
    if (error != nullptr)
      dwarf_dealloc_error(debug_, error);
    throw std::runtime_error(reason);
  }
  // Before any question about ranges: libdwarf answers none otherwise.
  Dwarf_Unsigned count = 0;
  DwarfError ignored(debug_);
  dwarf_load_rnglists(debug_, &count, &ignored);
}

DwarfObject::~DwarfObject() {
  Dwarf_Error error = nullptr;
  dwarf_object_finish(debug_, &error);
}

Attribute attributeOf(Dwarf_Debug debug, Dwarf_Die die, Dwarf_Half kind) {
  DwarfError error(debug);
  Dwarf_Attribute found = nullptr;
  return Attribute(dwarf_attr(die, kind, &found, &error) == DW_DLV_OK ? found : nullptr);
}

} // namespace kivcrash

#pragma once
/// \file
/// What libdwarf hands out, owned, and how it reads an image.

#include "modules/image.hpp"

#include <libdwarf/dwarf.h>
#include <libdwarf/libdwarf.h>

#include <memory>
#include <string>

namespace kivcrash {

/// An open file of debug symbols. libdwarf gets the sections from memory: their sizes are checked, and names of files
/// beyond ASCII are no matter of its.
class DwarfObject {
public:
  /// \param image  stays where it is for as long as this object
  /// \throws std::runtime_error  where libdwarf refuses it
  explicit DwarfObject(Image const & image);
  DwarfObject(DwarfObject const &) = delete;
  DwarfObject & operator=(DwarfObject const &) = delete;
  ~DwarfObject();

  Dwarf_Debug get() const { return debug_; }

private:
  Dwarf_Obj_Access_Interface access_;
  Dwarf_Debug debug_ = nullptr;
};

/// Takes the error that an operation may give and frees it.
class DwarfError {
public:
  explicit DwarfError(Dwarf_Debug debug) : debug_(debug) {}
  DwarfError(DwarfError const &) = delete;
  DwarfError & operator=(DwarfError const &) = delete;
  ~DwarfError() { clear(); }

  /// For the next operation.
  Dwarf_Error * operator&() { // NOLINT(google-runtime-operator)
    clear();
    return &error_;
  }

private:
  void clear() {
    if (error_ != nullptr)
      dwarf_dealloc_error(debug_, error_);
    error_ = nullptr;
  }

  Dwarf_Debug debug_;
  Dwarf_Error error_ = nullptr;
};

struct DieClosing {
  void operator()(Dwarf_Die die) const { dwarf_dealloc_die(die); }
};
using Die = std::unique_ptr<Dwarf_Die_s, DieClosing>;

struct AttributeClosing {
  void operator()(Dwarf_Attribute attribute) const { dwarf_dealloc_attribute(attribute); }
};
using Attribute = std::unique_ptr<Dwarf_Attribute_s, AttributeClosing>;

/// Null where it has none of that kind.
Attribute attributeOf(Dwarf_Debug debug, Dwarf_Die die, Dwarf_Half kind);

} // namespace kivcrash

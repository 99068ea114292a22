#pragma once
/// \file
/// Resources: texts, bitmaps and images in resource DLLs.
///
/// A resource identifier such as 0x2002B7E consists of the type 0x200 and the number 0x2B7E; an identifier without a high part is
/// a plain number. Strings are in the string tables of the DLL under their number, and so are bitmaps and icons under theirs.
/// An empty string in a string table looks like a missing one, so it counts as missing.

#include "sv/export.hpp"
#include "tools/string.hpp"

namespace SV {

/// The type of string resources.
inline constexpr unsigned long RSC_STRING = 0x200;

/// One resource DLL, loaded as data.
class SV_API ResMgr {
public:
  /// Loads the DLL; a relative name is relative to the program's folder, never to the working directory. A file that is missing,
  /// truncated or not a DLL, or whose resource table points outside of it, is refused: Application::Exception is called with
  /// EXC_RESOURCE_FILE_NOT_LOADED and the address of the name, which is below 4 GiB and valid until the next refusal. If that
  /// returns, the object is constructed and IsLoaded is false.
  explicit ResMgr(String const & fileName);
  ResMgr(ResMgr const &) = delete;
  ResMgr & operator=(ResMgr const &) = delete;
  /// Unloads the DLL. If this manager is active, none is active afterwards.
  ~ResMgr();

  bool IsLoaded() const { return module_ != nullptr; } ///< false: the file was refused

  /// The name as given; ".\" is added before a bare name.
  String const & GetFileName() const { return fileName_; }

  HINSTANCE GetModule() const { return module_; } ///< null if it is not loaded

private:
  String fileName_;
  HINSTANCE module_;
};

/// A resource's identifier and the manager to load it from.
class ResId {
public:
  /// \param manager  null for the one that is active when the resource is loaded
  ResId(unsigned long id, ResMgr * manager = nullptr) : id_(id), manager_(manager) {}

  unsigned long GetId() const { return id_; } ///< all 32 bits
  /// The type in the high part; 0 in a plain number.
  unsigned long GetType() const { return id_ >> 16; }
  unsigned long GetNumber() const { return id_ & 0xFFFF; }
  ResMgr * GetResMgr() const { return manager_; }

private:
  unsigned long id_;
  ResMgr * manager_;
};

/// The active manager, and loading from it.
class SV_API Resource {
public:
  /// Makes a manager the active one; it is not owned, and null means none.
  /// \return the previous one
  static ResMgr * SetResManager(ResMgr * manager);
  static ResMgr * GetResManager();

  /// A string resource, in the system's code page. If it is missing, Application::Exception is called with
  /// EXC_RESOURCE_NOT_LOADED and the identifier. If that returns and the active manager has not been tried yet, it is tried
  /// next, and so on. If no manager is left, the result is the empty string.
  static String LoadString(ResId const & id);
};

} // namespace SV

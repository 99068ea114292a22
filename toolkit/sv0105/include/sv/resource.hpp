#pragma once
/// \file
/// Resources: texts, bitmaps and images in resource DLLs.
///
/// A resource identifier such as 0x2002B7E is type 0x200 with number 0x2B7E; numbers without a high part are plain
/// numbers. Strings lie in the string tables of the DLL under their number; bitmaps and icons beside them under theirs.
/// A string table cannot tell an empty text from one that is missing, so an empty text is missing.

#include "sv/export.hpp"
#include "tools/string.hpp"

namespace SV {

/// The type of string resources.
inline constexpr unsigned long RSC_STRING = 0x200;

/// One resource DLL, loaded as data.
class SV_API ResMgr {
public:
  /// Loads the DLL; a relative name counts from the program's folder, never from the working directory. A file that is
  /// missing, cut off or no DLL, or whose table of resources leads out of it, is refused: Application::Exception is
  /// called with EXC_RESOURCE_FILE_NOT_LOADED and the address of the name, which lies below 4 GiB and is kept until the
  /// next refusal. If that returns, the object is there and IsLoaded is false.
  explicit ResMgr(String const & fileName);
  ResMgr(ResMgr const &) = delete;
  ResMgr & operator=(ResMgr const &) = delete;
  /// Unloads the DLL. An active manager leaves none active.
  ~ResMgr();

  bool IsLoaded() const { return module_ != nullptr; } ///< false: the file was refused

  /// The name as given; a bare one with ".\" in front.
  String const & GetFileName() const { return fileName_; }

  HINSTANCE GetModule() const { return module_; } ///< null when it is not loaded

private:
  String fileName_;
  HINSTANCE module_;
};

/// A resource's identifier and the manager to load it from.
class ResId {
public:
  /// \param manager  null: the one that is active when the resource is loaded
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
  /// Makes a manager the active one, which is not owned; null leaves none. The former one is the result.
  static ResMgr * SetResManager(ResMgr * manager);
  static ResMgr * GetResManager();

  /// The text of a string resource, in the system's code page. One that is missing raises Application::Exception with
  /// EXC_RESOURCE_NOT_LOADED and the identifier; when that returns and a manager is active that was not tried yet, the
  /// load is tried with that one, and so on. When no manager is left to try, the result is the empty text.
  static String LoadString(ResId const & id);
};

} // namespace SV

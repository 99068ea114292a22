#pragma once
/// \file
/// The file name extensions of one kind of file: adding one to a path, removing it, recognising it.
///
/// \code
///   KivExtensionManager models("xml");
///   models.addExtension("kmx");
///   SV::String path("orders");
///   models.setExtension(path); // "orders.xml"
///   path = "orders.KMX";
///   models.setExtension(path); // unchanged
/// \endcode
///
/// The extension of a path is whatever follows its last dot, wherever that is: for `c:\dir.d\name` it is `d\name`. A path
/// without a dot has none. Extensions match if they have the same length and are the same up to their first NUL. The
/// comparison is not case-sensitive and follows the runtime's current locale.

#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/string.hpp"

/// A value: each copy has its own list of extensions. Only one thread at a time may use an object.
class KIV_API KivExtensionManager {
public:
  /// Without any extension.
  KivExtensionManager();
  /// With one extension, given without its dot.
  explicit KivExtensionManager(SV::String const & extension);
  KivExtensionManager(KivExtensionManager const &);
  KivExtensionManager & operator=(KivExtensionManager const &);
  ~KivExtensionManager();

  /// Appends an extension, given without its dot, even if the list already has it.
  void addExtension(SV::String const & extension);

  /// The first extension, which is the default; the empty string if there is none.
  SV::String getExtension() const;

  /// Appends a dot and the default extension, unless the path already ends in one of the extensions, ends in '\\' because it
  /// is a folder, or the list is empty. Any other extension is kept: "a.txt" becomes "a.txt.xml".
  void setExtension(SV::String & path) const;

  /// The path without its extension and the dot before it, if the extension is in the list; otherwise the whole path. Only
  /// one extension is removed.
  SV::String getPath(SV::String path) const;

  /// Splits at the last dot, whatever the extension is. Without a dot, \p base is the whole path and \p extension is empty.
  static void parsePath(SV::String const & path, SV::String & base, SV::String & extension);

private:
  bool isKnown(SV::String const & extension) const;

  ISequence<SV::String> extensions_;
};

#pragma once
/// \file
/// The extensions that files of one kind have: added to a path, taken off it, found on it.
///
/// \code
///   KivExtensionManager models("xml");
///   models.addExtension("kmx");
///   SV::String path("orders");
///   models.setExtension(path); // "orders.xml"
///   path = "orders.KMX";
///   models.setExtension(path); // stays
/// \endcode
///
/// The extension of a path is what stands behind its last dot, wherever that is: of `c:\dir.d\name` it is `d\name`. A
/// path without a dot has none. Extensions are compared without regard to case, by the runtime's current locale.

#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/string.hpp"

/// A value: copies have extensions of their own. One thread at a time may use one.
class KIV_API KivExtensionManager {
public:
  /// Knows no extension.
  KivExtensionManager();
  /// \param extension  without the dot
  explicit KivExtensionManager(SV::String const & extension);
  KivExtensionManager(KivExtensionManager const &);
  KivExtensionManager & operator=(KivExtensionManager const &);
  ~KivExtensionManager();

  /// Appends an extension, without its dot; one that is known already, too.
  void addExtension(SV::String const & extension);

  /// The first extension, which is the default; the empty text when none is known.
  SV::String getExtension() const;

  /// Appends a dot and the default extension. A path with a known extension stays as it is, and so does one that ends
  /// in '\\', since it is a folder; another extension stays in front of the new one. Without known extensions nothing
  /// changes.
  void setExtension(SV::String & path) const;

  /// The path without its extension and the dot, if that is a known one, otherwise the path. Only one is taken off.
  SV::String getPath(SV::String path) const;

  /// Splits at the last dot, whatever the extension. Without a dot \p base is the whole path and \p extension is empty.
  static void parsePath(SV::String const & path, SV::String & base, SV::String & extension);

private:
  bool isKnown(SV::String const & extension) const;

  ISequence<SV::String> extensions_;
};

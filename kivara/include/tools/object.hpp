#pragma once
/// \file
/// Root classes.

#include "tools/export.hpp"

namespace SV {

/// Base of the classes that take part in the toolkit's links: polymorphic, without data.
class TL_API LinkHdl {
public:
  LinkHdl() = default;
  LinkHdl(LinkHdl const &) = default;
  LinkHdl & operator=(LinkHdl const &) = default;
  virtual ~LinkHdl();
};

} // namespace SV

/// Root of the library's classes that take part in links. It has no data.
class KivObject : public SV::LinkHdl {
public:
  KivObject() = default;
  KivObject(KivObject const &) = default;
  KivObject & operator=(KivObject const &) = default;
  ~KivObject() override = default;

protected:
  /// Does nothing. A derived class can define a check of its own state under this name.
  void check() const {}
};

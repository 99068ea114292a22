#pragma once
/// \file
/// Root classes.

#include "tools/export.hpp"

namespace SV {

/// Base of what takes part in the toolkit's links: a polymorphic class and nothing more.
class TL_API LinkHdl {
public:
  LinkHdl() = default;
  LinkHdl(LinkHdl const &) = default;
  LinkHdl & operator=(LinkHdl const &) = default;
  virtual ~LinkHdl();
};

} // namespace SV

/// Root of the library's classes that take part in links. It holds no data.
class KivObject : public SV::LinkHdl {
public:
  KivObject() = default;
  KivObject(KivObject const &) = default;
  KivObject & operator=(KivObject const &) = default;
  ~KivObject() override = default;

protected:
  /// Does nothing: the place for a derived class's test of its own state.
  void check() const {}
};

#pragma once
/// \file
/// A place for checks that a build may carry out on itself. This one has none.

#include "export.hpp"

/// A function object that modules keep and call where a check would be.
///
/// \code
///   KivSelfCheck const check;
///   check();
/// \endcode
///
/// Any thread.
class KIV_API KivSelfCheck {
public:
  KivSelfCheck();
  KivSelfCheck(KivSelfCheck const & other);
  /// Assigns nothing.
  KivSelfCheck & operator=(KivSelfCheck const & other);
  virtual ~KivSelfCheck();

  /// Returns at once and changes nothing, however often it is called.
  void operator()() const;
};

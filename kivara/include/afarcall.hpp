#pragma once
/// \file
/// Far calls: modules of the product call each other without linking to each other.
///
/// A module that offers a service registers a plain function under a name. Any other module of the same process calls it
/// through that name, passes input and gets back a block of memory. The two modules have to agree on the name and on the
/// content of the input and the block; neither needs the other's headers or library.
///
/// \code
///   // in one module
///   KivMemBuf countWords(KivInputData const & text);
///   KivFarCallFactory::Instance().registerReceiver("words.count", countWords);
///
///   // in another
///   KivMemBuf answer;
///   if (KivFarCallFactory::Instance().call("words.count", text, answer))
///     show(answer.data, answer.size);
/// \endcode
///
/// There are no locks: modules register on the main thread while they start, and a call runs on the caller's thread.

#include "amemcach.hpp"
#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/string.hpp"

/// The input of a call. The modules that call each other define this class; the library only passes it on.
class KivInputData;

/// The process-wide registry of names and receivers, destroyed at the end of the process.
class KIV_API KivFarCallFactory {
public:
  /// A service: takes the input and returns a block, which may be empty.
  using Receiver = KivMemBuf (*)(KivInputData const &);

  /// The one registry.
  static KivFarCallFactory & Instance();

  KivFarCallFactory(KivFarCallFactory const &) = delete;
  KivFarCallFactory & operator=(KivFarCallFactory const &) = delete;

  /// Adds a receiver. It is never removed, so its module must stay loaded.
  /// \param name      case-sensitive; it ends at its first NUL
  /// \param receiver  null reserves the name, and calls to it fail
  /// \return false if the name is taken; the first receiver stays
  bool registerReceiver(SV::String const & name, Receiver receiver);

  /// Calls the receiver of that name. An exception from the receiver passes through and leaves \p result unchanged.
  /// \param result  receives the receiver's block, which may be empty. A block that it already holds is not freed, so pass
  ///                an empty one
  /// \return false, with \p result unchanged, if the name is unknown or was registered with null
  bool call(SV::String const & name, KivInputData const & input, KivMemBuf & result);

private:
  KivFarCallFactory();
  ~KivFarCallFactory();

  IKeySortedSet<SV::String, Receiver> receivers_;
};

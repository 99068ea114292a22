#pragma once
/// \file
/// Far calls: two modules of the product call each other without linking to each other.
///
/// A module that offers a service registers a plain function under a text name. Any other module of the same process
/// calls it through that name, hands over input and gets a block of memory back. Both sides agree on the name and on
/// what the input and the block hold; neither needs the other's headers or library.
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
/// Nothing is locked: modules register on the main thread while they start, and a call runs on the caller's thread.

#include "amemcach.hpp"
#include "export.hpp"
#include "tools/containers.hpp"
#include "tools/string.hpp"

/// What a receiver is given. The modules that call each other define it; here it is only passed on.
class KivInputData;

/// The names and their receivers: one registry for the process, destroyed at its end.
class KIV_API KivFarCallFactory {
public:
  /// A service: gets the input and answers with a block, which may be empty.
  using Receiver = KivMemBuf (*)(KivInputData const &);

  /// The registry of the process.
  static KivFarCallFactory & Instance();

  KivFarCallFactory(KivFarCallFactory const &) = delete;
  KivFarCallFactory & operator=(KivFarCallFactory const &) = delete;

  /// Adds a receiver. It stays for good, so its module must stay loaded.
  /// \param name      with regard to case, up to its first NUL
  /// \param receiver  null takes the name, and calls fail
  /// \return false when the name is taken: the first receiver stays
  bool registerReceiver(SV::String const & name, Receiver receiver);

  /// Calls the receiver of that name. What it throws reaches the caller and leaves \p result as it was.
  /// \param result  gets the receiver's block, which may be empty. A block that it held until then is not freed: pass
  ///                an empty one
  /// \return false, with \p result as it was, when nobody has that name or it was registered with null
  bool call(SV::String const & name, KivInputData const & input, KivMemBuf & result);

private:
  KivFarCallFactory();
  ~KivFarCallFactory();

  IKeySortedSet<SV::String, Receiver> receivers_;
};

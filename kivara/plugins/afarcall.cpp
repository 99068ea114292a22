#include "afarcall.hpp"

#include <utility>

KivFarCallFactory & KivFarCallFactory::Instance() {
  static KivFarCallFactory theFactory;
  return theFactory;
}

KivFarCallFactory::KivFarCallFactory() = default;
KivFarCallFactory::~KivFarCallFactory() = default;

bool KivFarCallFactory::registerReceiver(SV::String const & name, Receiver receiver) {
  return receivers_.try_emplace(name, receiver).second;
}

bool KivFarCallFactory::call(SV::String const & name, KivInputData const & input, KivMemBuf & result) {
  auto const found = receivers_.find(name);
  if (found == receivers_.end() || found->second == nullptr)
    return false;
  KivMemBuf answer = found->second(input);
  // A block that the result holds is overwritten and not freed: callers pass an empty result, or one with a block of their own.
  result.data = std::exchange(answer.data, nullptr);
  result.size = std::exchange(answer.size, 0);
  return true;
}

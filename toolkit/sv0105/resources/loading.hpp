#pragma once
/// \file
/// Finding the manager that has a resource.

#include "application/toolkit.hpp"

#include <algorithm>
#include <span>
#include <vector>

namespace SV::detail {

/// The bytes of a resource; empty if it is missing or there is no DLL.
std::span<std::byte const> findResource(ResMgr const & manager, unsigned long number, char const * type);

/// Calls \p load with the manager of \p id, or the active one, until it returns true. Each failure is reported to the application,
/// and the manager that is active after that is tried next, each one once. False if none is left.
template <class Load> bool loadWithRetry(ResId const & id, Load const & load) {
  std::vector<ResMgr const *> tried;
  ResMgr const * manager = id.GetResMgr() ? id.GetResMgr() : Resource::GetResManager();
  for (;;) {
    if (manager && load(*manager))
      return true;
    tried.push_back(manager);
    raiseException(EXC_RESOURCE_NOT_LOADED, id.GetId());
    manager = Resource::GetResManager();
    if (std::find(tried.begin(), tried.end(), manager) != tried.end() || !manager)
      return false;
  }
}

} // namespace SV::detail

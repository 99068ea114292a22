#pragma once
/// \file
/// The way of every resource from its identifier to the manager that has it.

#include "application/toolkit.hpp"

#include <algorithm>
#include <span>
#include <vector>

namespace SV::detail {

/// The bytes of a resource; empty where there is none, or no DLL.
std::span<std::byte const> findResource(ResMgr const & manager, unsigned long number, char const * type);

/// Calls \p load with the manager of \p id, or the active one, until it is true. After each failure the application is
/// told and the manager that is then active is tried, each one once. False when none is left.
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

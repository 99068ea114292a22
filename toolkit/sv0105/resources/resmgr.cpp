#include "sv/resource.hpp"

#include "application/toolkit.hpp"
#include "handles/handle.hpp"
#include "resources/lowmemory.hpp"
#include "resources/resourcefile.hpp"

#include <cstdint>
#include <cstring>

namespace SV {

namespace {

// Callers split the name at its backslashes and rely on there being one.
String withBackslash(String const & name) { return std::strchr(name.c_str(), '\\') ? name : ".\\" + name; }

} // namespace

ResMgr::ResMgr(String const & fileName)
    : fileName_(withBackslash(fileName)), module_(detail::loadResourceFile(fileName)) {
  if (module_)
    return;
  auto const name = reinterpret_cast<std::uintptr_t>(detail::copyBelow4GiB(fileName_));
  detail::raiseException(EXC_RESOURCE_FILE_NOT_LOADED, static_cast<unsigned long>(name));
}

ResMgr::~ResMgr() {
  if (Resource::GetResManager() == this)
    Resource::SetResManager(nullptr);
  handles::Module const module(module_);
}

} // namespace SV

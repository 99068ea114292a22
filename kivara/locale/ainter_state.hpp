#pragma once
/// \file
/// What the application frame reads of the language manager.

#include "export.hpp"

namespace kivara {

/// True exactly while a ResMgr is constructed whose failure its maker reports itself: a resource file that cannot be
/// loaded is then no severe exception.
extern KIV_API bool loadingResourceFile;

} // namespace kivara

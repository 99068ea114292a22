#pragma once
/// \file
/// State of the language manager that the application frame reads.

#include "export.hpp"

namespace kivara {

/// True while a ResMgr is constructed whose failure its creator reports. A resource file that cannot be loaded is then not a
/// severe exception.
extern KIV_API bool loadingResourceFile;

} // namespace kivara

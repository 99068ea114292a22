#pragma once
/// \file
/// All of the library's public headers.

#include "aacceler.hpp"
#include "aapp.hpp"
#include "aappinfo.hpp"
#include "acmdline.hpp"
#include "acrypto.hpp"
#include "ades.hpp"
#include "aentry.hpp"
#include "alocale.hpp"
#include "alog.hpp"
#include "aparser.hpp"
#include "aplatfrm.hpp"
#include "areader.hpp"
#include "atools.hpp"
#include "atools_errors.hpp"
#include "atrace.hpp"
#include "export.hpp"
#include "tools.hpp"

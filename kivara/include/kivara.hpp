#pragma once
/// \file
/// All of the library's public headers.

#include "aapp.hpp"
#include "aappinfo.hpp"
#include "acleanup.hpp"
#include "acmdline.hpp"
#include "acolor.hpp"
#include "acrypto.hpp"
#include "ades.hpp"
#include "aentry.hpp"
#include "aevent.hpp"
#include "aextman.hpp"
#include "afarcall.hpp"
#include "afileman.hpp"
#include "amemcach.hpp"
#include "aparser.hpp"
#include "aplatfrm.hpp"
#include "areader.hpp"
#include "atools.hpp"
#include "atrace.hpp"
#include "export.hpp"
#include "tools.hpp"

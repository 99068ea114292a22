#pragma once
/// \file
/// The tools library: strings, dates, directory entries, international settings, and the shared templates.
///
/// Some operations are defined in the headers below and compiled into every user; the others are imported from TL0105.dll.

#include "tools/assert.hpp"
#include "tools/containers.hpp"
#include "tools/ctext.hpp"
#include "tools/date.hpp"
#include "tools/dir.hpp"
#include "tools/direntry.hpp"
#include "tools/international.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"
#include "tools/time.hpp"
#include "tools/wstring.hpp"

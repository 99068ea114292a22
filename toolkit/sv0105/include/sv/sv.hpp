#pragma once
/// \file
/// The whole window library.

#include "sv/application.hpp"
#include "sv/bitmap.hpp"
#include "sv/color.hpp"
#include "sv/export.hpp"
#include "sv/font.hpp"
#include "sv/geometry.hpp"
#include "sv/help.hpp"
#include "sv/image.hpp"
#include "sv/imagepool.hpp"
#include "sv/mdi.hpp"
#include "sv/menu.hpp"
#include "sv/outputdevice.hpp"
#include "sv/pen.hpp"
#include "sv/resource.hpp"
#include "sv/sysdepen.hpp"
#include "sv/window.hpp"

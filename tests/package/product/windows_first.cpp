#include <windows.h>

#include "kivara.hpp"

#include <sv/outputdevice.hpp>
#include <sv/resource.hpp>

#include "drawing.hpp"

bool drawsWithWindowsFirst() { return drawsTitle(); }

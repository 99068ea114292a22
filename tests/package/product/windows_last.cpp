#include "kivara.hpp"

#include <sv/outputdevice.hpp>
#include <sv/resource.hpp>

#include <windows.h>

#include "drawing.hpp"

bool drawsWithWindowsLast() { return drawsTitle(); }

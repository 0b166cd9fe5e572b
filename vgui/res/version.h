// The library's version. Read by the resource compiler, too.
#pragma once

#define VGUI_VERSION_MAJOR 0
#define VGUI_VERSION_MINOR 1
#define VGUI_VERSION_PATCH 0
#define VGUI_VERSION_TEXT "0.1.0"

// Everything the library offers, for hosts that want one include.
#pragma once

#include "vgui/controls/sketch_control.h"
#include "vgui/controls/splitter_bar.h"
#include "vgui/dialogs/dlg_resizer.h"
#include "vgui/dialogs/gui_dlg.h"
#include "vgui/dialogs/tab_pages.h"
#include "vgui/export.h"
#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/foundation/skin_host.h"
#include "vgui/foundation/subclass_wnd.h"
#include "vgui/foundation/window_helpers.h"
#include "vgui/imaging/gl.h"
#include "vgui/module.h"

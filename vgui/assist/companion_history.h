// Keeps the place of the companion's progress dialog between two calls.
#pragma once

#include "vgui/foundation/window_helpers.h"

// Moves the window to where it was when SaveCompanionPlace was called last, if that is wholly on the main
// screen. It grows to the size it had, but does not become smaller. Without a usable record nothing happens.
void RestoreCompanionPlace(CWnd& window);
// Keeps the window's place and size. Silent when that cannot be written.
void SaveCompanionPlace(CWnd& window);

// Dithering for palette displays. For use inside the library.
#pragma once

#include "vgui/foundation/gdi_scope.h"

#include <afxwin.h>

// A copy of a packed DIB with at most 8 bits, to be shown on a palette display; the wait cursor is shown
// while it is made. An image of at most 8 bits is only duplicated. Others are dithered to 256 colours, 8
// levels of red and green and 4 of blue, or, on a palette screen, to the system palette. Empty for a
// compressed image of more than 8 bits and when memory is short.
VOwnedGlobal DitherDib(HGLOBAL hDib);

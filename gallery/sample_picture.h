// A picture drawn by code.
#pragma once

#include <vgui/vgui.h>

// Replaces the object's image by a landscape of 256 x 192 pixels in 24 bits. False without memory.
bool DrawSamplePicture(CDib& dib);

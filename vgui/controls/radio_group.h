// Groups of radio buttons, the library's and standard ones: the siblings from one with WS_GROUP up to the
// next.
#pragma once

#include "vgui/controls/buttons.h"

// The library's radio button that is attached to a window, null for any other window.
VRadioBtn* LibraryRadio(HWND window);

// Whether a window is a radio button of either kind.
bool IsRadio(HWND window);

// A radio button's place in its group.
struct RadioPlace {
    HWND first; // the group's first radio button
    int index;  // of the button itself
};
RadioPlace PlaceInGroup(HWND radio);

// Exchanges the index of the checked radio button among those from first up to the next group: saving reads
// it, -1 for none; otherwise the button with that index is checked and the others are unchecked.
void ExchangeRadioGroup(bool save, HWND first, int& value);

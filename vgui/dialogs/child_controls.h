// How a skinned dialog's standard child controls become the library's own.
#pragma once

#include <afxtempl.h>
#include <afxwin.h>

// Walks the direct children of a dialog that have no framework object of their own yet. One whose window
// class and button type stand in the table gets a new library object, which subclasses it, takes over its
// check state where the table says so and is appended to owned; the caller unsubclasses, destroys and
// deletes it. All other children stay as they are.
void ReplaceStandardControls(CWnd& dialog, CArray<CWnd*>& owned);

// The check state of a self-drawn check box or radio button of the library. False, and state untouched, for
// any other control.
bool GetReplacedCheck(CWnd& control, int& state);
// Sets it and repaints. False, and nothing done, for any other control.
bool SetReplacedCheck(CWnd& control, int state);

// Whether a control of the library chooses its text colour itself and must not be given the dialog's.
bool ChoosesOwnTextColor(CWnd& control);

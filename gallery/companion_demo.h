// The gallery as the other process that the companion shows the progress of.
#pragma once

#include <afxwin.h>

// Creates the pipe, waits for the companion and reports the export of some imagined drawings, for a few
// seconds or until it is answered that the user has cancelled. False when nobody came.
bool ServeCompanionDemo(const CString& pipeName);

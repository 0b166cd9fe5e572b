// Where the host keeps its files.
#pragma once

#include <afxwin.h>

// The parent of the folder that holds the host's program, without a separator at the end; empty when the
// program lies less deep.
CString VGHostRoot();

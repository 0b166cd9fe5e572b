// The core of the framework: command targets, windows, threads and applications, dialogs, GDI, menus and
// the standard controls.
#pragma once

#include <afx.h>
#include <afxcoll.h>
#include <afxres.h>
#include <atltypes.h>
#include <shellapi.h>

#include <afxstat_.h>

#include <afxmsg_.h>

#include <afxgdi_.h>
#include <afxmenu_.h>

#include <afxcmd_.h>
#include <afxwnd_.h>

#include <afxapp_.h>
#include <afxdlg_.h>
#include <afxfrm_.h>

#include <afxctl_.h>

#include <afxdd_.h>

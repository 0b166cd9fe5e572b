// The common controls and image lists.
//
// Rectangles for Create are in client coordinates of the parent, all others in client coordinates of the
// control, in pixels. Members that answer a pointer to a window or image list object may answer a temporary
// one, which is not for keeping; image lists and tool tips given to a control stay the caller's, but see
// CListCtrl::SetImageList. Left out are the parts that this library and its hosts do not use: list view
// groups, tiles, work areas and insertion marks; the header's filters; the tool bar's customisation and drop
// target.
#pragma once

#include <afxwin.h>
#include <commctrl.h>

#include <afximl_.h>

#include <afxview_.h>

#include <afxbar_.h>

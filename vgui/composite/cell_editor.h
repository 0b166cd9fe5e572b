// What the property list's and the property grid's editors share.
#pragma once

#include <afxwin.h>

// Of an edit field over a value.
inline constexpr DWORD kCellEditStyle = WS_CHILD | WS_BORDER | ES_AUTOHSCROLL | ES_NOHIDESEL;

// Whether an editor is shown, even while the window that it is in is not. Not one that has no window any
// more.
inline bool IsEditorShown(const CWnd& editor)
{
    return ::IsWindow(editor.m_hWnd) && (editor.GetStyle() & WS_VISIBLE) != 0;
}
